#pragma once

#include "platform/FileDialog.hpp"

namespace Tamber {

/// Qt's file dialogs with a single filter, for HEX files. They open in the folder of the last file,
/// at first in `directory`.
class QtFileDialog final : public FileDialog {
  public:
    explicit QtFileDialog(std::filesystem::path directory);

    [[nodiscard]] bool ShowOpen() override;
    [[nodiscard]] bool ShowSave() override;
    void SetFileName(const std::filesystem::path& file) override { fileName_ = file; }
    std::filesystem::path FileName() const override { return fileName_; }

  private:
    enum class Purpose { Open, Save };
    bool Show(Purpose purpose);

    std::filesystem::path directory_;
    std::filesystem::path fileName_;
};

}  // namespace Tamber
