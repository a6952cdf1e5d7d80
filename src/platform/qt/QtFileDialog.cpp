#include "platform/qt/QtFileDialog.hpp"

#include <utility>

#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/Paths.hpp"
#include "platform/qt/RecentFiles.hpp"

namespace Tamber {

QtFileDialog::QtFileDialog(std::filesystem::path directory) : directory_(std::move(directory)) {}

bool QtFileDialog::ShowOpen() {
    return Show(HexFileDialog::Purpose::Open);
}

bool QtFileDialog::ShowSave() {
    return Show(HexFileDialog::Purpose::Save);
}

void QtFileDialog::SetFileName(const std::filesystem::path& file) {
    fileName_ = file;
    RememberFile(file);
}

std::filesystem::path QtFileDialog::Folder() const {
    if (!fileName_.empty())
        return fileName_.parent_path();
    const QStringList folders = RecentFolders();
    return folders.isEmpty() ? directory_ : FromQt(folders.first());
}

bool QtFileDialog::Show(HexFileDialog::Purpose purpose) {
    HexFileDialog dialog(purpose, Folder(), OwnerForDialogs());
    if (purpose == HexFileDialog::Purpose::Save && KnownToQt(fileName_.filename()))
        dialog.selectFile(ToQt(fileName_.filename()));
    if (ExecuteModal(dialog) != QDialog::Accepted || dialog.Chosen().empty())
        return false;
    SetFileName(dialog.Chosen());
    return true;
}

}  // namespace Tamber
