#include "platform/qt/QtFileDialog.hpp"

#include <QFileDialog>
#include <utility>

#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/Paths.hpp"

namespace Tamber {
namespace {

constexpr char Filter[] = "Hex (*.hex)";

}  // namespace

QtFileDialog::QtFileDialog(std::filesystem::path directory) : directory_(std::move(directory)) {}

bool QtFileDialog::ShowOpen() {
    return Show(Purpose::Open);
}

bool QtFileDialog::ShowSave() {
    return Show(Purpose::Save);
}

bool QtFileDialog::Show(Purpose purpose) {
    QFileDialog dialog(OwnerForDialogs());
    dialog.setNameFilter(Filter);
    dialog.setDirectory(ToQt(fileName_.empty() ? directory_ : fileName_.parent_path()));
    if (purpose == Purpose::Open) {
        dialog.setWindowTitle("Load");
        dialog.setFileMode(QFileDialog::ExistingFile);
    } else {
        dialog.setWindowTitle("Save");
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setDefaultSuffix("hex");
        if (!fileName_.empty())
            dialog.selectFile(ToQt(fileName_.filename()));
    }
    if (ExecuteModal(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    fileName_ = FromQt(dialog.selectedFiles().first());
    return true;
}

}  // namespace Tamber
