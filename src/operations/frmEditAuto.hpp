#pragma once

#include <QDialog>

#include "modFunc.hpp"
#include "platform/MessageBoxes.hpp"

class QListWidget;
class QPushButton;

namespace Tamber {

/// The dialog in which the user composes the Auto series. Nothing changes before OK, which replaces
/// the series in memory and on disk together.
class frmEditAuto : public QDialog {
  public:
    /// `program` and `boxes` outlive the dialog.
    frmEditAuto(QWidget& owner, modFunc& program, MessageBoxes& boxes);

    /// Returns when the dialog has been closed.
    void ShowModally();

  private:
    void MakeControls();
    void MakeShortWays();
    void MoveRow(int by);
    QPushButton* AddButton(const char* name, const char* caption, int left, int top, int width,
                           int height, void (frmEditAuto::*click)());
    void Form_Load();
    void EnableMoves();

    void cmdMoveRight_Click();
    void cmdMoveLeft_Click();
    void cmdMoveLeftAll_Click();
    void cmdOk_Click();
    void cmdCancel_Click();

    modFunc& program_;
    MessageBoxes& boxes_;
    QListWidget* lstIn = nullptr;
    QListWidget* lstOut = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdMoveRight = nullptr;
    QPushButton* cmdMoveLeft = nullptr;
    QPushButton* cmdMoveLeftAll = nullptr;

    // Entries of the series being composed. A file written by hand may hold codes that have no row,
    // so this is not the number of rows.
    int count_ = 0;
};

}  // namespace Tamber
