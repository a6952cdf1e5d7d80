#pragma once

#include <QFileSystemWatcher>
#include <QTimer>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

namespace Tamber {

/// Watches one file for being written anew or replaced. What it has become is told only once
/// nothing has happened to it for 0.2 s and its text is whole. A file whose name Qt does not know
/// is not watched.
class FileWatch {
  public:
    /// `whole` says whether a text is all that its writer has to say; `tell` is told whether the
    /// file differs from what it was at Watch.
    FileWatch(std::function<bool(const std::string&)> whole,
              std::function<void(bool differs)> tell);

    /// Watches this file from now on, and no other.
    void Watch(const std::filesystem::path& file);

    const std::filesystem::path& File() const { return file_; }

  private:
    using Stamp = std::pair<std::uintmax_t, std::filesystem::file_time_type>;

    Stamp StampNow() const;
    void WatchWhatIsThere();
    void SomethingHappened();
    void Judge();

    std::function<bool(const std::string&)> whole_;
    std::function<void(bool)> tell_;
    std::filesystem::path file_;
    std::size_t known_ = 0;  // hash of the text at Watch
    Stamp seen_;
    QFileSystemWatcher watcher_;
    QTimer quiet_;
};

}  // namespace Tamber
