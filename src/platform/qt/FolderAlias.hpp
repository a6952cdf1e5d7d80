#pragma once

#include <QTemporaryDir>
#include <filesystem>
#include <optional>

namespace Tamber {

/// A name under which Qt can open a folder. A folder whose own name is not UTF-8 gets a link, which
/// lasts as long as the alias.
class FolderAlias {
  public:
    explicit FolderAlias(const std::filesystem::path& folder);

    QString Name() const;

    /// The path of something that Qt has found, which may lie behind the link.
    std::filesystem::path Real(const QString& found) const;

  private:
    std::filesystem::path folder_;
    std::optional<QTemporaryDir> linkFolder_;
    std::filesystem::path name_;
};

}  // namespace Tamber
