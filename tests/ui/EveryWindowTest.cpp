#include "WindowBench.hpp"

namespace Tamber {
namespace {

struct Dialog {
    const char* item;
    const char* byDefault;
    const char* cancel;
    const char* tabOrder;
};

constexpr Dialog Dialogs[] = {
    {"DeviceFunction", "cmdRun", "cmdClose",
     "listFunction cmdRun cmdClose chkPM chkEM chkID chkCW"},
    {"OptionsEditAuto", "cmdOk", "cmdCancel",
     "lstIn lstOut cmdOk cmdCancel cmdMoveRight cmdMoveLeft cmdMoveLeftAll"},
    {"DeviceSelect", "cmdOk", "cmdCancel", "listDevice cmdOk cmdCancel"},
    {"OptionsSettings", "cmdOk", "cmdCancel", "optComm0 cmdOk cmdCancel"},
};

// To a screen reader, what shows a text says it; the rest that can be reached or watched has a
// name.
void ExpectSpoken(QWidget& window) {
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->objectName().startsWith("qt_"))
            continue;
        const std::string spoken =
            QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).toStdString();
        const QString text = widget->property("text").toString();
        const bool shows = !text.isEmpty() && (qobject_cast<QLabel*>(widget) ||
                                               qobject_cast<QAbstractButton*>(widget));
        const bool named =
            (widget->focusPolicy() & Qt::TabFocus) || qobject_cast<QProgressBar*>(widget);
        EXPECT_EQ(spoken,
                  shows && widget->accessibleName().isEmpty() ? text.toStdString() : spoken);
        EXPECT_FALSE(named && spoken.empty())
            << (window.objectName() + " " + widget->objectName()).toStdString();
    }
    EXPECT_NE(window.windowTitle() + window.accessibleName(), "");
}

TEST(EveryWindow, ShowsEverythingWholeAndSaysIt) {
    WindowBench bench({"PIC16F877A", 10, 8192, 256, 1});  // the most that views can show
    bench.Start();
    bench.Choose("HelpContents");
    bench.desktop.failViewer();
    Settle();
    QWidgetList windows = QApplication::topLevelWidgets();
    for (const char* view : {"frmBuffer", "frmEEPROM", "frmConfig"})
        windows.append(bench.Find(view));
    int seen = 0;
    const auto look = [&](QWidget* window) {
        if (!window->isVisible())
            return;
        ++seen;
        ExpectNothingCutOff(*window);
        ExpectSpoken(*window);
    };
    std::ranges::for_each(windows, look);
    for (const Dialog& dialog : Dialogs)
        bench.InDialog(dialog.item, [&] { look(bench.dialog); });
    bench.InDialog("HelpAbout", [&] { look(bench.dialog); });
    EXPECT_EQ(seen, 10);
}

TEST(EveryDialog, HasItsDefaultButtonAndTabOrder) {
    WindowBench bench;
    bench.Start();
    for (const Dialog& expected : Dialogs)
        bench.InDialog(expected.item, [&] {
            for (const QPushButton* button : bench.dialog->findChildren<QPushButton*>())
                EXPECT_EQ(button->isDefault() || button->autoDefault(),
                          button->objectName() == expected.byDefault);
            bench.dialog->activateWindow();
            Settle();
            const QStringList tabOrder = QString(expected.tabOrder).split(' ');
            for (const QString& name : tabOrder + tabOrder) {
                EXPECT_EQ(bench.dialog->focusWidget()->objectName(), name);
                bench.Press(Qt::Key_Tab);
            }
        });
}

// Moves every choice of a dialog, as far as it has any.
void ChangeEverything(const WindowBench& bench) {
    for (auto* list : bench.dialog->findChildren<QListWidget*>())
        list->setCurrentRow(list->count() - 1);
    for (auto* option : bench.dialog->findChildren<QRadioButton*>())
        option->setChecked(true);
    if (bench.Find("cmdMoveRight"))
        bench.Click("cmdMoveRight");
}

TEST(EveryDialog, ChangesNothingWhenItIsCancelledOrClosed) {
    for (const Dialog& tested : Dialogs)
        for (int way = 0; way < 3; ++way) {
            SCOPED_TRACE(tested.item + std::to_string(way));
            WindowBench bench;
            bench.Start();
            bench.program.image.SetByte(0, 0x12);
            const std::string panels = bench.Panels();
            bench.InDialog(tested.item, [&] {
                ChangeEverything(bench);
                if (way == 0)
                    bench.Click(tested.cancel);
                else if (way == 1)
                    bench.Press(Qt::Key_Escape);
                else
                    bench.dialog->close();
                EXPECT_FALSE(bench.dialog->isVisible());
            });
            EXPECT_EQ(bench.program.image.Byte(0), 0x12);
            EXPECT_EQ(bench.Panels(), panels);
            EXPECT_EQ(bench.program.autoSequence.AutoCount, 2);
            EXPECT_EQ(bench.Contents("auto.cfg"), "2\r\n3\r\n4\r\n");
            bench.Choose("FileExit");
            EXPECT_EQ(bench.Contents("tamber.cfg"), "1\r\n2\r\n1\r\n");
        }
}

}  // namespace
}  // namespace Tamber
