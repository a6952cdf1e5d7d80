#include "platform/qt/FileWatch.hpp"

#include <chrono>
#include <system_error>

#include "core/TextFile.hpp"
#include "platform/qt/Paths.hpp"

namespace Tamber {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t TextMax = 64 << 20;

std::size_t HashOf(const std::string& text) {
    return std::hash<std::string>()(text);
}

}  // namespace

FileWatch::FileWatch(std::function<bool(const std::string&)> whole,
                     std::function<void(bool differs)> tell)
    : whole_(std::move(whole)), tell_(std::move(tell)) {
    quiet_.setSingleShot(true);
    quiet_.setInterval(200ms);
    QObject::connect(&quiet_, &QTimer::timeout, &quiet_, [this] { Judge(); });
    for (const auto signal :
         {&QFileSystemWatcher::fileChanged, &QFileSystemWatcher::directoryChanged})
        QObject::connect(&watcher_, signal, &quiet_, [this] { SomethingHappened(); });
}

void FileWatch::Watch(const std::filesystem::path& file) {
    if (const QStringList before = watcher_.files() + watcher_.directories(); !before.isEmpty())
        watcher_.removePaths(before);
    quiet_.stop();
    file_ = file;
    seen_ = StampNow();
    const auto text = ReadTextFile(file, TextMax);
    known_ = HashOf(text.value_or(""));
    WatchWhatIsThere();
}

FileWatch::Stamp FileWatch::StampNow() const {
    std::error_code ignored;
    return {std::filesystem::file_size(file_, ignored),
            std::filesystem::last_write_time(file_, ignored)};
}

// A file that is replaced is another one to the system, so its folder is watched as well.
void FileWatch::WatchWhatIsThere() {
    if (!KnownToQt(file_))
        return;
    for (const std::filesystem::path& path : {file_, file_.parent_path()})
        if (const QString name = ToQt(path); !name.isEmpty())
            watcher_.addPath(name);
}

// Other files of the folder come and go without delaying anything.
void FileWatch::SomethingHappened() {
    if (const Stamp now = StampNow(); now != seen_ || !quiet_.isActive()) {
        seen_ = now;
        quiet_.start();
    }
}

void FileWatch::Judge() {
    WatchWhatIsThere();
    if (StampNow() != seen_) {
        SomethingHappened();
        return;
    }
    const auto text = ReadTextFile(file_, TextMax);
    if (!text)
        return;
    const bool differs = HashOf(*text) != known_;
    if (!differs || whole_(*text))
        tell_(differs);
}

}  // namespace Tamber
