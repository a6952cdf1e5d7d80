#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>
#include <QtWidgets>

#include "simulator/BoardEngine.hpp"
#include "simulator/Faults.hpp"
#include "support/FakeDesktop.hpp"
#include "ui/mdiMain.hpp"

namespace Tamber {

/// The fake desktop under real windows: Qt's events are delivered too, without waiting for any.
class WindowDesktop : public FakeDesktop {
  protected:
    void DeliverEvents() override;
};

/// The program's windows over a simulated board, to be used by keys and menu entries as a user
/// does.
class WindowBench {
  public:
    /// Starts the program on COM2. The device is the selected one, in slot 1; slot 2 holds a
    /// smaller one without EEPROM, "A&Ä".
    explicit WindowBench(const DeviceRecord& device = {"PIC16F84A", 7, 1024, 64, 1},
                         Simulator::FaultPlan faults = {},
                         std::optional<std::string> portFailure = {});

    /// The control of this name in the main window, its views or the open dialog, or null.
    template <typename Control = QWidget>
    Control* Find(const std::string& name) const {
        return window->findChild<Control*>(QString::fromStdString(name));
    }
    bool Enabled(const std::string& name) const { return Find(name)->isEnabled(); }

    void Click(const std::string& name) const { Find<QAbstractButton>(name)->click(); }
    void Press(Qt::Key key) const { QTest::keyClick(dialog, key); }  // in the dialog

    /// The text of the program-memory view.
    QTextEdit* Dump() const { return Find("frmBuffer")->findChild<QTextEdit*>("txtBuffer"); }

    /// The captions of the status bar's panels, with " | " between them.
    std::string Panels();

    /// What the notice strip says; empty while it is not there.
    std::string Said() const;

    /// Chooses a menu entry.
    void Choose(const char* item);

    /// Chooses a menu entry that opens a dialog, and uses the dialog; it is closed afterwards.
    void InDialog(const char* item, const std::function<void()>& use);

    /// What is in a file of the working folder.
    std::string Contents(const char* file) const;

    modFunc program;
    WindowDesktop desktop;
    std::vector<std::string> startRecord;  ///< the desktop's record of the start
    Simulator::BoardEngine engine;
    Simulator::FaultyBoard board;
    std::unique_ptr<mdiMain> window;
    QPointer<QWidget> dialog;
};

/// Makes the system's font one of `points` points for a while.
class UseFont {
  public:
    explicit UseFont(int points) { QApplication::setFont(QFont(usual_.family(), points)); }
    ~UseFont() { QApplication::setFont(usual_); }

  private:
    const QFont usual_ = QApplication::font();
};

/// No control of the window reaches past its parent or covers another, and every text fits.
void ExpectNothingCutOff(const QWidget& window);

/// Lets everything that is pending in Qt happen.
void Settle();

}  // namespace Tamber
