#include "WindowBench.hpp"

namespace Tamber {
namespace {

struct Dialog {
    const char* item;
    const char* byDefault;
    const char* cancel;
    QStringList tabOrder;
};

const Dialog Dialogs[] = {
    {"DeviceFunction",
     "cmdRun",
     "cmdClose",
     {"listFunction", "cmdRun", "cmdClose", "chkPM", "chkEM", "chkID", "chkCW"}},
    {"OptionsEditAuto",
     "cmdOk",
     "cmdCancel",
     {"lstIn", "lstOut", "cmdOk", "cmdCancel", "cmdMoveRight", "cmdMoveLeft", "cmdMoveLeftAll"}},
    {"DeviceSelect", "cmdOk", "cmdCancel", {"listDevice", "cmdOk", "cmdCancel"}},
    {"OptionsSettings", "cmdOk", "cmdCancel", {"optComm0", "cmdOk", "cmdCancel"}},
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
        bench.InDialog(dialog.item, look);
    bench.InDialog("HelpAbout", look);
    EXPECT_EQ(seen, 10);
}

TEST(EveryDialog, HasItsDefaultButtonAndTabOrder) {
    WindowBench bench;
    bench.Start();
    for (const Dialog& expected : Dialogs)
        bench.InDialog(expected.item, [&](QWidget* dialog) {
            for (const QPushButton* button : dialog->findChildren<QPushButton*>())
                EXPECT_EQ(button->isDefault() || button->autoDefault(),
                          button->objectName() == expected.byDefault);
            dialog->activateWindow();
            Settle();
            for (qsizetype step = 0; step <= expected.tabOrder.size(); ++step) {
                ASSERT_NE(dialog->focusWidget(), nullptr);
                EXPECT_EQ(dialog->focusWidget()->objectName(),
                          expected.tabOrder[step % expected.tabOrder.size()]);
                QTest::keyClick(dialog, Qt::Key_Tab);
            }
        });
}

// Moves every choice of a dialog, as far as it has any.
void ChangeEverything(QWidget* dialog) {
    for (auto* list : dialog->findChildren<QListWidget*>())
        list->setCurrentRow(list->count() - 1);
    for (auto* option : dialog->findChildren<QRadioButton*>())
        option->setChecked(true);
    if (auto* add = Find<QPushButton>(dialog, "cmdMoveRight"))
        add->click();
}

TEST(EveryDialog, ChangesNothingWhenItIsCancelledOrClosed) {
    for (const Dialog& tested : Dialogs)
        for (int way = 0; way < 3; ++way) {
            SCOPED_TRACE(tested.item + std::to_string(way));
            WindowBench bench;
            bench.Start();
            bench.program.image.SetByte(0, 0x12);
            const std::string panels = bench.Panels();
            bench.InDialog(tested.item, [&](QWidget* dialog) {
                ChangeEverything(dialog);
                if (way == 0)
                    Find<QPushButton>(dialog, tested.cancel)->click();
                else if (way == 1)
                    QTest::keyClick(dialog, Qt::Key_Escape);
                else
                    dialog->close();
                EXPECT_FALSE(dialog->isVisible());
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
