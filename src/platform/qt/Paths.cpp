#include "platform/qt/Paths.hpp"

#include <QFile>
#include <QUrl>

namespace Tamber {

QString ToQt(const std::filesystem::path& path) {
    return QFile::decodeName(path.c_str());
}

std::filesystem::path FromQt(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

bool KnownToQt(const std::filesystem::path& path) {
    return FromQt(ToQt(path)) == path;
}

std::filesystem::path FromUrl(const QUrl& file) {
    return QByteArray::fromPercentEncoding(file.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

}  // namespace Tamber
