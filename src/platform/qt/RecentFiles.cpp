#include "platform/qt/RecentFiles.hpp"

#include <QFileInfo>

#include "platform/qt/Paths.hpp"
#include "platform/qt/UserMemory.hpp"

namespace Tamber {
namespace {

constexpr char Key[] = "files/recent";
constexpr int FilesMax = 10;

}  // namespace

QStringList RecentFiles() {
    QStringList files = UserMemory().value(Key).toStringList();
    files.removeIf([](const QString& file) { return !QFileInfo(file).isFile(); });
    return files;
}

QStringList RecentFolders() {
    QStringList folders;
    for (const QString& file : UserMemory().value(Key).toStringList())
        if (const QFileInfo folder(QFileInfo(file).path()); folder.isDir())
            folders.append(folder.filePath());
    folders.removeDuplicates();
    return folders;
}

void RememberFile(const std::filesystem::path& file) {
    if (!KnownToQt(file))
        return;
    QStringList files = UserMemory().value(Key).toStringList();
    files.removeAll(ToQt(file));
    files.prepend(ToQt(file));
    UserMemory().setValue(Key, files.mid(0, FilesMax));
}

}  // namespace Tamber
