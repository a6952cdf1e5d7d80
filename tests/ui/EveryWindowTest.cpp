#include "WindowBench.hpp"

namespace Tamber {
namespace {

// Each dialog's menu entry and the order of its controls; of the buttons, the first is the default
// one and the second cancels.
constexpr std::pair<const char*, const char*> Dialogs[] = {
    {"DeviceFunction", "listFunction cmdRun cmdClose chkPM chkEM chkID chkCW"},
    {"OptionsEditAuto", "lstIn lstOut cmdOk cmdCancel cmdMoveRight cmdMoveLeft cmdMoveLeftAll"},
    {"DeviceSelect", "listDevice cmdOk cmdCancel"},
    {"OptionsSettings", "optComm1 cmdOk cmdCancel"},
    {"ViewGoTo", "txtAddress cmdOk cmdCancel"},
};

// What can be reached or watched has a name for a screen reader.
void ExpectNamed(const QWidget& window) {
    EXPECT_NE(window.windowTitle() + window.accessibleName(), "");
    for (QWidget* widget : window.findChildren<QWidget*>(QRegularExpression("^(?!qt_)"))) {
        const bool reached = (widget->focusPolicy() & Qt::TabFocus) && widget->isVisible();
        EXPECT_FALSE((reached || qobject_cast<QProgressBar*>(widget)) &&
                     QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name) == "")
            << (window.objectName() + " " + widget->objectName()).toStdString();
    }
}

class EveryWindow : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(WithASystemFont, EveryWindow, testing::Values(9, 24));  // points

TEST_P(EveryWindow, ShowsEverythingWholeNamesItAndIsUsedByKeys) {
    const UseFont system(GetParam());
    WindowBench bench({"PIC16F877A", 10, 8192, 256, 1});  // the most that views can show
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
        EXPECT_TRUE(!window->isWindow() || window->width() <= window->screen()->size().width());
        ExpectNamed(*window);
    };
    std::ranges::for_each(windows, look);
    bench.InDialog("HelpAbout", [&] { look(bench.dialog); });
    for (const auto& [item, controls] : Dialogs)
        bench.InDialog(item, [&, tabOrder = QString(controls).split(' ')] {
            look(bench.dialog);
            for (const auto* button : bench.dialog->findChildren<QPushButton*>())
                EXPECT_EQ(button->isDefault(), button->objectName() == tabOrder.filter("cmd")[0]);
            bench.dialog->activateWindow();
            Settle();
            for (const QString& name : tabOrder + tabOrder) {
                EXPECT_EQ(bench.dialog->focusWidget()->objectName(), name);
                bench.Press(Qt::Key_Tab);
            }
        });
    EXPECT_EQ(seen, 11);
}

TEST(EveryDialog, ChangesNothingWhenItIsCancelledOrClosed) {
    for (const auto& [item, controls] : Dialogs)
        for (int way = 0; way < 4; ++way) {  // the last: the bench closes the dialog
            SCOPED_TRACE(item + std::to_string(way));
            WindowBench bench;
            bench.program.image.SetByte(0, 0x12);
            const QStringList buttons = QString(controls).split(' ').filter("cmd");
            bench.InDialog(item, [&] {
                for (auto* list : bench.dialog->findChildren<QListWidget*>())
                    list->setCurrentRow(list->count() - 1);
                for (auto* option : bench.dialog->findChildren<QRadioButton*>())
                    option->setChecked(true);
                if (bench.Find("cmdMoveRight"))
                    bench.Click("cmdMoveRight");
                if (way == 0)
                    bench.Click(buttons[1].toStdString());
                if (way == 1)
                    bench.Press(Qt::Key_Escape);
                if (way == 2) {
                    bench.Find(buttons[1].toStdString())->setFocus();
                    QTest::keyClick(bench.dialog->focusWidget(), Qt::Key_Return);
                }
                EXPECT_EQ(bench.dialog->isVisible(), way == 3);
            });
            EXPECT_EQ(bench.program.image.Byte(0), 0x12);
            EXPECT_EQ(bench.program.autoSequence.AutoCount, 2);
            EXPECT_EQ(bench.Contents("auto.cfg"), "2\r\n3\r\n4\r\n");
            bench.Choose("FileExit");
            EXPECT_EQ(bench.Contents("tamber.cfg"), "2\r\n2\r\n1\r\n");
        }
}

}  // namespace
}  // namespace Tamber
