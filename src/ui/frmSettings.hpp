#pragma once

#include <QDialog>
#include <array>

#include "modFunc.hpp"

class QPushButton;
class QRadioButton;

namespace Tamber {

/// The dialog that chooses the serial port. The port is opened at the next start; the one that is
/// open now is not touched.
class frmSettings : public QDialog {
  public:
    /// `program` outlives the dialog.
    frmSettings(QWidget& owner, modFunc& program);

    /// Returns when the dialog has been closed.
    void ShowModally();

  private:
    void MakeControls();
    void Form_Load();
    void cmdOk_Click();
    void cmdCancel_Click();

    modFunc& program_;
    std::array<QRadioButton*, 4> optComm{};
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;
};

}  // namespace Tamber
