#include "platform/qt/UserMemory.hpp"

namespace Tamber {

QSettings& UserMemory() {
    static QSettings memory(QSettings::IniFormat, QSettings::UserScope, "tamber", "tamber");
    return memory;
}

}  // namespace Tamber
