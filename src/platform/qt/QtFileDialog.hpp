#pragma once

#include "platform/FileDialog.hpp"
#include "platform/qt/HexFileDialog.hpp"

namespace Tamber {

/// File dialogs of Qt. They open in the folder of the last file, which is remembered for the user;
/// without one in `directory`.
class QtFileDialog final : public FileDialog {
  public:
    explicit QtFileDialog(std::filesystem::path directory);

    [[nodiscard]] bool ShowOpen() override;
    [[nodiscard]] bool ShowSave() override;
    void SetFileName(const std::filesystem::path& file) override;
    std::filesystem::path FileName() const override { return fileName_; }

  private:
    bool Show(HexFileDialog::Purpose purpose);
    std::filesystem::path Folder() const;

    std::filesystem::path directory_;
    std::filesystem::path fileName_;
};

}  // namespace Tamber
