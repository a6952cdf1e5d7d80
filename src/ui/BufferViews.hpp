#pragma once

#include <QPointer>

#include "modFunc.hpp"

class QMdiArea;
class QMdiSubWindow;
class QWidget;

namespace Tamber {

/// The three buffer views inside the main window. A view is brought up to date by closing it and
/// opening it again, which puts it at its home position, scrolled to the top.
class BufferViews {
  public:
    BufferViews(QMdiArea& area, const modFunc& program);

    /// Opens the views, the EEPROM view only if the device has EEPROM. A view that is open is only
    /// brought to the front, with its text unchanged. The program-memory view ends up in front.
    void Show();

    /// Closes and opens one view.
    void ReopenProgramMemory();
    void ReopenEeprom();
    void ReopenConfiguration();

    void CloseAll();

    /// The selected device has EEPROM.
    bool HasEeprom() const;

  private:
    QMdiSubWindow& ProgramMemoryView();
    QMdiSubWindow& EepromView();
    QMdiSubWindow& ConfigurationView();
    QMdiSubWindow* MakeView(QWidget* form, int clientWidth, int clientHeight);
    void BringToFront(QMdiSubWindow& view);

    QMdiArea& area_;
    const modFunc& program_;
    QPointer<QMdiSubWindow> programMemory_;
    QPointer<QMdiSubWindow> eeprom_;
    QPointer<QMdiSubWindow> configuration_;
};

}  // namespace Tamber
