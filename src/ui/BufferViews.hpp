#pragma once

#include <QObject>
#include <QPointer>

#include "modFunc.hpp"
#include "operations/FunctionDisplay.hpp"

class QAction;
class QMdiArea;
class QMdiSubWindow;

namespace Tamber {

class BufferForm;

/// The three buffer views inside the main window. A view is brought up to date by closing it and
/// opening it again, which puts it at its home position, scrolled to the top. The size of their
/// letters is remembered for the user.
class BufferViews : public QObject {
  public:
    BufferViews(QMdiArea& area, const modFunc& program);

    /// Opens the views, the EEPROM view only if the device has EEPROM. A view that is open is only
    /// brought to the front, with its text unchanged. The program-memory view ends up in front.
    void Show();

    /// Closes and opens one view.
    void ReopenProgramMemory();
    void ReopenEeprom();
    void ReopenConfiguration();

    /// Gives the keyboard to the first open view of these regions.
    void Activate(const Regions& regions);

    /// Shows a word, 0..LastAddress(), in the program-memory view.
    void GoTo(int address);

    /// The address of the last word of the device.
    int LastAddress() const;

    void CloseAll();

    /// The selected device has EEPROM.
    bool HasEeprom() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QMdiSubWindow& ProgramMemoryView();
    QMdiSubWindow& EepromView();
    QMdiSubWindow& ConfigurationView();
    void Open(QPointer<QMdiSubWindow>& view, BufferForm* form);
    void BringToFront(QMdiSubWindow& view);
    QRect Home(const QMdiSubWindow& view) const;

    static int RememberedLetters();
    void MakeActions();
    QAction* MakeAction(const char* name, const char* caption, const QList<QKeySequence>& keys,
                        void (BufferViews::*act)());
    void ChangeLetters(int percent);
    void EnlargeLetters();
    void ReduceLetters();
    void RestoreLetters();
    void GoToAddress();
    void ShowSystemMenu();

    QMdiArea& area_;
    const modFunc& program_;
    QPointer<QMdiSubWindow> programMemory_;
    QPointer<QMdiSubWindow> eeprom_;
    QPointer<QMdiSubWindow> configuration_;
    QList<QAction*> letterActions_;
    QAction* goTo_ = nullptr;
    int letters_;  // per cent of the designed size
};

}  // namespace Tamber
