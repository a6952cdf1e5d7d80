#pragma once

#include <QFileDialog>

#include "platform/qt/FolderAlias.hpp"

namespace Tamber {

/// Qt's own file dialog for HEX files. It stays open over a file that cannot be read or replaced,
/// as far as that can be known beforehand, and says so.
class HexFileDialog final : public QFileDialog {
  public:
    enum class Purpose { Open, Save };

    /// Begins in `folder`.
    HexFileDialog(Purpose purpose, const std::filesystem::path& folder, QWidget* parent);

    /// Leaves the side bar, which all programs share, as it found it.
    ~HexFileDialog() override;

    /// The file that was chosen; empty when none was.
    std::filesystem::path Chosen() const;

  protected:
    void accept() override;
    void childEvent(QChildEvent* event) override;

  private:
    void ShowNamesPlainly();
    void AddRecentFiles();
    void FitOnScreen();
    bool Usable(const std::filesystem::path& file);
    bool MayBeReplaced(const std::filesystem::path& file);

    const Purpose purpose_;
    const FolderAlias folder_;
    const QList<QUrl> sidebarBefore_;
};

}  // namespace Tamber
