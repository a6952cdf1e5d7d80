#pragma once

#include <QString>
#include <filesystem>

class QUrl;

namespace Tamber {

/// A path as Qt writes it. Qt knows no names that are not UTF-8; their bytes get lost.
QString ToQt(const std::filesystem::path& path);
std::filesystem::path FromQt(const QString& path);

/// Qt can open what lies at this path.
bool KnownToQt(const std::filesystem::path& path);

/// The path of a local file's URL, byte for byte.
std::filesystem::path FromUrl(const QUrl& file);

}  // namespace Tamber
