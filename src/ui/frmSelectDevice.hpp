#pragma once

#include <QDialog>

#include "modFunc.hpp"

class QListWidget;
class QPushButton;

namespace Tamber {

class mdiMain;

/// The dialog that chooses the current device. After it has closed, SelectionCancelled says whether
/// the user cancelled; closing it by its frame counts as Cancel.
class frmSelectDevice : public QDialog {
  public:
    /// The status bar and the views of `owner` follow the choice; `program` outlives the dialog.
    frmSelectDevice(mdiMain& owner, modFunc& program);

    /// Returns after the dialog has been closed.
    void ShowModally();

    void reject() override;

  private:
    void MakeControls();
    void MakeSocketDrawing();
    void Form_Load();
    void cmdOk_Click();
    void cmdCancel_Click();

    mdiMain& owner_;
    modFunc& program_;
    QListWidget* listDevice = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;
};

}  // namespace Tamber
