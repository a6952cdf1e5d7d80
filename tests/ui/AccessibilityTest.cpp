#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <QAbstractButton>
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

struct NamedControl {
    const char* window;
    const char* name;
    QAccessible::Role role;
    const char* says;
};

// What has no text of its own.
const NamedControl NamedControls[] = {
    {"frmFunction", "listFunction", QAccessible::List, "Functions"},
    {"frmFunction", "shpBG", QAccessible::ProgressBar, "Progress"},
    {"frmEditAuto", "lstIn", QAccessible::List, "Functions"},
    {"frmEditAuto", "lstOut", QAccessible::List, "Series"},
    {"frmSelectDevice", "listDevice", QAccessible::List, "Devices"},
    {"frmAbout", "", QAccessible::Dialog, "About"},
    {"frmBuffer", "txtBuffer", QAccessible::EditableText, "Program memory"},
    {"frmBuffer", "vsc", QAccessible::ScrollBar, "Rows"},
    {"frmEEPROM", "txtBuffer", QAccessible::EditableText, "EEPROM"},
    {"frmConfig", "txtIDLOCS", QAccessible::EditableText, "ID Locations"},
    {"frmConfig", "txtConfig", QAccessible::EditableText, "Configuration Word"},
};

// Returns how many rows of the table the window has.
std::size_t ExpectNames(QWidget& window) {
    std::size_t rows = 0;
    for (const NamedControl& control : NamedControls) {
        if (window.objectName() != control.window)
            continue;
        auto* widget = control.name[0] ? window.findChild<QWidget*>(control.name) : &window;
        if (!widget)
            continue;
        ++rows;
        EXPECT_EQ(Spoken(*widget).role(), control.role) << control.name;
        EXPECT_EQ(NameOf(Spoken(*widget)), control.says) << control.name;
    }
    return rows;
}

// Whatever can be reached has a name to say, and what shows a text says just that.
void ExpectTexts(QWidget& window) {
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
        if (const auto* button = qobject_cast<QAbstractButton*>(widget);
            button && !button->text().isEmpty()) {
            EXPECT_EQ(NameOf(Spoken(*widget)), button->text().toStdString());
        }
        if (auto* list = qobject_cast<QListWidget*>(widget)) {
            for (int row = 0; row < list->count(); ++row)
                EXPECT_EQ(NameOf(*Spoken(*list).child(row)), list->item(row)->text().toStdString());
        }
    }
}

TEST(Accessibility, AScreenReaderGetsWhatAPersonSees) {
    WindowBench bench(Device);
    bench.Start();
    std::size_t rows = 0;
    bench.InEveryWindow([&](QWidget* window) {
        ASSERT_NE(window, nullptr);
        rows += ExpectNames(*window);
        ExpectTexts(*window);
    });
    EXPECT_EQ(rows, std::size(NamedControls)) << "a row of the table names what is not there";
    ExpectTexts(*bench.window);
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
