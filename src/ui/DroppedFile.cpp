#include "ui/DroppedFile.hpp"

#include <QMimeData>
#include <QUrl>

#include "core/Utf8.hpp"
#include "platform/qt/Paths.hpp"

namespace Tamber {

tl::expected<std::filesystem::path, std::string> DroppedHexFile(const QMimeData& dropped) {
    const QList<QUrl> files = dropped.urls();
    if (files.size() != 1)
        return tl::unexpected(std::to_string(files.size()) +
                              " files were dropped: drop a single HEX file (*.hex) to load it");
    const QUrl& file = files.first();
    const std::filesystem::path path = FromUrl(file);
    if (!file.isLocalFile() || !file.path().endsWith(".hex", Qt::CaseInsensitive))
        return tl::unexpected(Utf8From(path.filename().string()) +
                              " was not loaded: drop a HEX file (*.hex) that is on this machine");
    return path;
}

}  // namespace Tamber
