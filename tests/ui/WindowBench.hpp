#pragma once

#include <QWidget>
#include <functional>

#include "operations/frmFunction.hpp"
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

/// The device that most tests select.
inline const DeviceRecord Device{"PIC16F84A", 7, 1024, 64, 1};

/// The program's windows over a simulated board, to be used by keys and menu entries as a user
/// does.
class WindowBench {
  public:
    /// The device is the selected one, in slot 1.
    explicit WindowBench(const DeviceRecord& device, Simulator::FaultPlan faults = {});

    /// Loads and shows the main window and lets it be activated.
    void Start();

    /// The control of this name in the window, or null.
    template <typename Control>
    static Control* Find(QWidget* window, const char* name) {
        return window ? window->findChild<Control*>(name) : nullptr;
    }
    template <typename Control>
    Control* Find(const char* name) {
        return Find<Control>(window.get(), name);
    }

    /// The caption of a status bar panel, 1..4.
    QString Panel(int panel);

    /// Chooses a menu entry.
    void Choose(const char* item);

    /// Chooses a menu entry that opens a dialog, and uses the dialog; it is closed afterwards.
    void InDialog(const char* item, const std::function<void(QWidget* dialog)>& use);

    /// Looks at each view, and opens each dialog and looks at that.
    void InEveryWindow(const std::function<void(QWidget* window)>& look);

    modFunc program;
    WindowDesktop desktop;
    Simulator::BoardEngine engine;
    Simulator::FaultyBoard board;
    std::unique_ptr<mdiMain> window;
};

/// Lets everything that is pending in Qt happen.
void Settle();

}  // namespace Tamber
