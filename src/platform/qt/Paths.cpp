#include "platform/qt/Paths.hpp"

#include <QFile>
#include <QUrl>

namespace Tamber {

QString ToQt(const std::filesystem::path& path) {
#ifdef _WIN32
    return QString::fromStdWString(path.wstring());
#else
    return QFile::decodeName(path.c_str());
#endif
}

std::filesystem::path FromQt(const QString& path) {
#ifdef _WIN32
    return path.toStdWString();
#else
    return QFile::encodeName(path).toStdString();
#endif
}

bool KnownToQt(const std::filesystem::path& path) {
    return FromQt(ToQt(path)) == path;
}

std::filesystem::path FromUrl(const QUrl& file) {
#ifdef _WIN32
    return FromQt(file.toLocalFile());
#else
    return QByteArray::fromPercentEncoding(file.path(QUrl::FullyEncoded).toLatin1()).toStdString();
#endif
}

}  // namespace Tamber
