#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QTest>

#include "WindowBench.hpp"

namespace Tamber {
namespace {

QAccessibleInterface& Spoken(QWidget& widget) {
    return *QAccessible::queryAccessibleInterface(&widget);
}

std::string NameOf(QAccessibleInterface& spoken) {
    return spoken.text(QAccessible::Name).toStdString();
}

struct Control {
    const char* window;
    const char* name;
    QAccessible::Role role;
    const char* says;
};

const Control Controls[] = {
    {"frmFunction", "listFunction", QAccessible::List, "Functions"},
    {"frmFunction", "Frame1", QAccessible::Grouping, "Message:"},
    {"frmFunction", "frameOption", QAccessible::Grouping, "Option"},
    {"frmFunction", "chkPM", QAccessible::CheckBox, "Program Memory"},
    {"frmFunction", "chkEM", QAccessible::CheckBox, "EEPROM"},
    {"frmFunction", "chkID", QAccessible::CheckBox, "ID Locations"},
    {"frmFunction", "chkCW", QAccessible::CheckBox, "Config. Word"},
    {"frmFunction", "shpBG", QAccessible::ProgressBar, "Progress"},
    {"frmFunction", "lblProgress", QAccessible::StaticText, "0%"},
    {"frmFunction", "cmdRun", QAccessible::Button, "Run"},
    {"frmFunction", "cmdClose", QAccessible::Button, "Close"},
    {"frmEditAuto", "lstIn", QAccessible::List, "Functions"},
    {"frmEditAuto", "lstOut", QAccessible::List, "Series"},
    {"frmEditAuto", "cmdMoveRight", QAccessible::Button, ">"},
    {"frmEditAuto", "cmdMoveLeft", QAccessible::Button, "<"},
    {"frmEditAuto", "cmdMoveLeftAll", QAccessible::Button, "<<"},
    {"frmEditAuto", "cmdOk", QAccessible::Button, "OK"},
    {"frmSelectDevice", "listDevice", QAccessible::List, "Devices"},
    {"frmSelectDevice", "cmdOk", QAccessible::Button, "OK"},
    {"frmSettings", "optComm0", QAccessible::RadioButton, "COM1"},
    {"frmSettings", "cmdCancel", QAccessible::Button, "Cancel"},
    {"frmAbout", "", QAccessible::Dialog, "About"},
    {"frmAbout", "lblAbout0", QAccessible::StaticText, "PIC Programmer"},
    {"frmBuffer", "txtBuffer", QAccessible::EditableText, "Program memory"},
    {"frmBuffer", "vsc", QAccessible::ScrollBar, "Rows"},
    {"frmBuffer", "lblAddress", QAccessible::StaticText, "0000"},
    {"frmEEPROM", "txtBuffer", QAccessible::EditableText, "EEPROM"},
    {"frmConfig", "txtIDLOCS", QAccessible::EditableText, "ID Locations"},
    {"frmConfig", "txtConfig", QAccessible::EditableText, "Configuration Word"},
};

void CheckTable(QWidget& window) {
    int checked = 0;
    for (const Control& control : Controls) {
        if (window.objectName() != control.window)
            continue;
        ++checked;
        auto* widget = control.name[0] ? window.findChild<QWidget*>(control.name) : &window;
        ASSERT_NE(widget, nullptr) << control.window << " " << control.name;
        EXPECT_EQ(Spoken(*widget).role(), control.role) << control.name;
        EXPECT_EQ(NameOf(Spoken(*widget)), control.says) << control.name;
    }
    EXPECT_GT(checked, 0) << window.objectName().toStdString();
}

// Whatever can be reached has a name to say, and what shows a text says that.
void CheckAll(QWidget& window) {
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->objectName().startsWith("qt_"))
            continue;
        if ((widget->focusPolicy() & Qt::TabFocus) != 0) {
            EXPECT_NE(NameOf(Spoken(*widget)), "") << widget->objectName().toStdString();
        }
        if (const auto* label = qobject_cast<QLabel*>(widget);
            label && !label->text().isEmpty() && label->accessibleName().isEmpty()) {
            EXPECT_EQ(NameOf(Spoken(*widget)), label->text().toStdString());
        }
        if (auto* list = qobject_cast<QListWidget*>(widget)) {
            for (int row = 0; row < list->count(); ++row)
                EXPECT_EQ(NameOf(*Spoken(*list).child(row)), list->item(row)->text().toStdString());
        }
    }
}

void Check(QWidget* window) {
    ASSERT_NE(window, nullptr);
    CheckTable(*window);
    CheckAll(*window);
}

TEST(Accessibility, AScreenReaderGetsWhatAPersonSees) {
    WindowBench bench(Device);
    bench.Start();
    for (const char* view : {"frmBuffer", "frmEEPROM", "frmConfig"})
        Check(bench.Find<QWidget>(view));
    for (const char* item :
         {"DeviceFunction", "OptionsEditAuto", "DeviceSelect", "OptionsSettings", "HelpAbout"})
        bench.InDialog(item, Check);
    CheckAll(*bench.window);
}

// What a screen reader is told while this exists.
class Told {
  public:
    Told() : before_(QAccessible::installUpdateHandler(Note)) {
        events.clear();
        SetActive(true);
    }
    ~Told() {
        SetActive(false);
        QAccessible::installUpdateHandler(before_);
    }

    static inline std::vector<std::string> events;

  private:
    static void SetActive(bool active) {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(active);
    }
    static void Note(QAccessibleEvent* event);

    QAccessible::UpdateHandler before_;
};

void Told::Note(QAccessibleEvent* event) {
    const std::string who = event->object()->objectName().toStdString();
    if (event->type() == QAccessible::NameChanged)
        events.push_back(who + " " + NameOf(*event->accessibleInterface()));
    else if (event->type() == QAccessible::ValueChanged)
        events.push_back(who + " = " +
                         event->accessibleInterface()
                             ->valueInterface()
                             ->currentValue()
                             .toString()
                             .toStdString());
}

TEST(Accessibility, ARunIsToldWhileItGoesOn) {
    WindowBench bench({"small", 7, 16, 0, 1});
    bench.Start();
    bench.InDialog("DeviceFunction", [&](QWidget* dialog) {
        WindowBench::Find<QListWidget>(dialog, "listFunction")->setCurrentRow(FunctionProgram);
        const Told told;
        QTest::keyClick(dialog, Qt::Key_Return);
        EXPECT_THAT(Told::events, testing::IsSupersetOf(
                                      {"lblMsg0 Programming Program Memory...", "lblProgress 50%",
                                       "shpBG = 50", "lblProgress 100%", "shpBG = 100",
                                       "lblMsg0 Programming Program Memory...   OK!",
                                       "lblMsg1 Programming ID and Config...   OK!"}));
    });
}

}  // namespace
}  // namespace Tamber
