#include "platform/qt/FolderAlias.hpp"

#include <algorithm>
#include <system_error>

#include "core/Utf8.hpp"
#include "platform/qt/Paths.hpp"

namespace Tamber {

FolderAlias::FolderAlias(const std::filesystem::path& folder) : folder_(folder), name_(folder) {
    if (KnownToQt(folder))
        return;
    linkFolder_.emplace();
    const std::filesystem::path link =
        FromQt(linkFolder_->path()) / VisibleText(folder.filename().string());
    std::error_code error;
    std::filesystem::create_directory_symlink(folder, link, error);
    if (!error)
        name_ = link;
}

QString FolderAlias::Name() const {
    return ToQt(name_);
}

std::filesystem::path FolderAlias::Real(const QString& found) const {
    std::filesystem::path path = FromQt(found);
    const auto [alias, rest] = std::ranges::mismatch(name_, path);
    if (!linkFolder_ || alias != name_.end())
        return path;
    std::filesystem::path real = folder_;
    for (auto part = rest; part != path.end(); ++part)
        real /= *part;
    return real;
}

}  // namespace Tamber
