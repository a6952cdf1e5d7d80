#pragma once

#include <QDialog>
#include <optional>

class QLabel;
class QLineEdit;

namespace Tamber {

/// A word address in hexadecimal, 0 up to `last`, in either case, with or without 0x before it or H
/// behind it. Nothing if it is none.
std::optional<int> WordAddress(const QString& text, int last);

/// The dialog that asks for a word address. It says what is wrong with one that the device has not,
/// and goes on asking.
class frmGoTo : public QDialog {
  public:
    /// `last` is the address of the device's last word.
    frmGoTo(QWidget& owner, int last);

    /// Returns the address, or nothing if the dialog has been cancelled.
    std::optional<int> Ask();

  private:
    void MakeControls();
    void cmdOk_Click();

    const int last_;
    QLineEdit* txtAddress = nullptr;
    QLabel* lblMsg = nullptr;
};

}  // namespace Tamber
