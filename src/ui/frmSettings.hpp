#pragma once

#include <QDialog>
#include <array>

#include "modFunc.hpp"

class QPushButton;
class QRadioButton;

namespace Tamber {

/// The dialog that chooses the serial port, which is opened at the next start; the port that is
/// open now is not touched.
class frmSettings : public QDialog {
  public:
    /// `program` outlives the dialog.
    frmSettings(QWidget& owner, modFunc& program);

    /// Returns after the dialog has been closed.
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
