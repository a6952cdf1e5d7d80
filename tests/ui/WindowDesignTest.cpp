#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "WindowBench.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/frmAbout.hpp"

namespace Tamber {
namespace {

struct Control {
    const char* window;
    const char* name;
    int left, top, width, height;  // twips, in the control's parent
};

// Every control as it is drawn. Where no size is drawn for a text, -1.
constexpr Control Drawn[] = {
    {"frmFunction", "", 0, 0, 7440, 3330},
    {"frmFunction", "listFunction", 120, 240, 1455, 2400},
    {"frmFunction", "Frame1", 1680, 120, 3735, 2535},
    {"frmFunction", "lblMsg0", 120, 240, 3495, 255},
    {"frmFunction", "lblMsg1", 120, 480, 3495, 255},
    {"frmFunction", "lblMsg2", 120, 720, 3495, 255},
    {"frmFunction", "lblMsg3", 120, 960, 3495, 255},
    {"frmFunction", "lblMsg4", 120, 1200, 3495, 255},
    {"frmFunction", "lblMsg5", 120, 1440, 3495, 255},
    {"frmFunction", "frameOption", 5520, 120, 1815, 1335},
    {"frmFunction", "chkPM", 120, 240, -1, -1},
    {"frmFunction", "chkEM", 120, 480, -1, -1},
    {"frmFunction", "chkID", 120, 720, -1, -1},
    {"frmFunction", "chkCW", 120, 960, -1, -1},
    {"frmFunction", "shpBG", 1680, 2760, 3735, 135},
    {"frmFunction", "shpProgress", 1680, 2760, 0, 135},
    {"frmFunction", "lblProgress", 3000, 3000, 615, 255},
    {"frmFunction", "cmdRun", 360, 2760, 975, 375},
    {"frmFunction", "cmdClose", 6000, 2760, 975, 375},
    {"frmEditAuto", "", 0, 0, 4665, 2175},
    {"frmEditAuto", "lstIn", 120, 120, 1695, 1425},
    {"frmEditAuto", "lstOut", 2760, 120, 1695, 1425},
    {"frmEditAuto", "cmdOk", 3120, 1680, 975, 375},
    {"frmEditAuto", "cmdCancel", 600, 1680, 975, 375},
    {"frmEditAuto", "cmdMoveRight", 2040, 240, 495, 255},
    {"frmEditAuto", "cmdMoveLeft", 2040, 600, 495, 255},
    {"frmEditAuto", "cmdMoveLeftAll", 2040, 960, 495, 255},
    {"frmSelectDevice", "", 0, 0, 3285, 2940},
    {"frmSelectDevice", "listDevice", 240, 120, 1695, 2010},
    {"frmSelectDevice", "cmdOk", 1800, 2400, 1095, 375},
    {"frmSelectDevice", "cmdCancel", 240, 2400, 1095, 375},
    {"frmSelectDevice", "shpSocket", 2160, 120, 615, 1935},
    {"frmSelectDevice", "shp40P", 2280, 120, 375, 1935},
    {"frmSelectDevice", "shp28P", 2280, 720, 375, 1335},
    {"frmSelectDevice", "shp18P", 2280, 1200, 375, 855},
    {"frmSelectDevice", "shp8P", 2280, 1680, 375, 375},
    {"frmSelectDevice", "shpPin1", 2400, 1920, 135, 135},
    {"frmSelectDevice", "linPin1", 2760, 2040, -1, 120},
    {"frmSelectDevice", "lbl40P", 2880, 120, -1, -1},
    {"frmSelectDevice", "lbl28P", 2880, 600, -1, -1},
    {"frmSelectDevice", "lbl18P", 2880, 1080, -1, -1},
    {"frmSelectDevice", "lbl8P", 2880, 1560, -1, -1},
    {"frmSelectDevice", "lblPin1", 2880, 1920, -1, -1},
    {"frmSettings", "", 0, 0, 2745, 2355},
    {"frmSettings", "Frame1", 120, 120, 2295, 1695},
    {"frmSettings", "optComm0", 120, 240, 855, 255},
    {"frmSettings", "optComm1", 120, 600, 855, 255},
    {"frmSettings", "optComm2", 120, 960, 855, 255},
    {"frmSettings", "optComm3", 120, 1320, 855, 255},
    {"frmSettings", "cmdOk", 1440, 1920, 975, 375},
    {"frmSettings", "cmdCancel", 240, 1920, 975, 375},
    {"frmAbout", "", 0, 0, 4905, 3090},
    {"frmAbout", "lblAbout0", 720, 120, 3495, 615},
    {"frmAbout", "lblAbout1", 720, 720, 3495, 375},
    {"frmAbout", "lblAbout2", 240, 1320, 4455, 495},
    {"frmAbout", "lblAbout3", 720, 1800, 3495, 495},
    {"frmAbout", "lblAbout4", 720, 2160, 3495, 495},
    {"frmAbout", "Image1", 120, 120, 480, 480},
    {"frmBuffer", "", 0, 0, 7920, 3930},
    {"frmBuffer", "txtBuffer", 120, 120, 7695, 3615},
    {"frmBuffer", "vsc", 7560, 120, 255, 3615},
    {"frmBuffer", "lblAddressCaption", 120, 4320, 615, 255},
    {"frmBuffer", "lblAddress", 840, 4320, 615, 255},
    {"frmBuffer", "lblCheckSumCaption", 1920, 4320, 855, 255},
    {"frmBuffer", "lblCheckSum", 2880, 4320, 615, 255},
    {"frmEEPROM", "", 0, 0, 9780, 3885},
    {"frmEEPROM", "txtBuffer", 120, 120, 9495, 3615},
    {"frmConfig", "", 0, 0, 2625, 960},
    {"frmConfig", "lblIDLOCS", 120, 120, 1095, 255},
    {"frmConfig", "txtIDLOCS", 1200, 120, 1095, 285},
    {"frmConfig", "lblConfig", 120, 480, 1455, 255},
    {"frmConfig", "txtConfig", 1680, 480, 615, 285},
};

void ExpectAsDrawn(QWidget* window) {
    const std::string windowName = window->objectName().toStdString();
    int checked = 0;
    for (const Control& drawn : Drawn) {
        if (windowName != drawn.window)
            continue;
        ++checked;
        const bool self = drawn.name[0] == '\0';
        const auto* control = self ? window : window->findChild<QWidget*>(drawn.name);
        ASSERT_NE(control, nullptr) << windowName << " " << drawn.name;
        const auto near = [&](int pixels, int twips, const char* what) {
            if (twips >= 0) {
                EXPECT_NEAR(pixels * 15, twips, 15)
                    << windowName << " " << drawn.name << " " << what;
            }
        };
        if (!self) {
            near(control->x(), drawn.left, "left");
            near(control->y(), drawn.top, "top");
        }
        near(control->width(), drawn.width, "width");
        near(control->height(), drawn.height, "height");
    }
    EXPECT_GT(checked, 1) << windowName;
}

// No caption is wider or higher than its control, and no control reaches past its window.
void ExpectNothingCutOff(QWidget* window) {
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        if (label->text().isEmpty())
            continue;
        EXPECT_LE(QFontMetrics(label->font()).horizontalAdvance(label->text()), label->width())
            << label->objectName().toStdString();
        EXPECT_LE(QFontMetrics(label->font()).height(), label->height() + 1)
            << label->objectName().toStdString();
    }
    for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        EXPECT_LE(QFontMetrics(button->font()).horizontalAdvance(button->text()), button->width())
            << button->objectName().toStdString();
        EXPECT_TRUE(button->parentWidget()->rect().contains(button->geometry()))
            << button->objectName().toStdString();
    }
}

void Check(QWidget* window) {
    ASSERT_NE(window, nullptr);
    ExpectAsDrawn(window);
    ExpectNothingCutOff(window);
}

TEST(WindowDesign, EveryControlStandsWhereItIsDrawn) {
    WindowBench bench({"PIC16F877A", 10, 8192, 256, 1});
    bench.Start();
    bench.InEveryWindow(Check);
}

TEST(WindowDesign, EveryDialogHasADefaultAndACancelButton) {
    WindowBench bench({"PIC16F877A", 10, 8192, 256, 1});
    bench.Start();
    struct Case {
        const char* item;
        const char* byDefault;
    };
    for (const auto& [item, byDefault] :
         {Case{"DeviceFunction", "cmdRun"}, Case{"OptionsEditAuto", "cmdOk"},
          Case{"DeviceSelect", "cmdOk"}, Case{"OptionsSettings", "cmdOk"}})
        bench.InDialog(item, [&, name = byDefault](QWidget* dialog) {
            EXPECT_TRUE(WindowBench::Find<QPushButton>(dialog, name)->isDefault());
            for (const QPushButton* button : dialog->findChildren<QPushButton*>())
                EXPECT_FALSE(button->autoDefault() && !button->isDefault())
                    << "Enter would press " << button->objectName().toStdString();
        });
}

TEST(WindowDesign, TabGoesThroughTheControlsInTheirOrder) {
    WindowBench bench({"PIC16F877A", 10, 8192, 256, 1});
    bench.Start();
    struct Case {
        const char* item;
        QStringList order;
    };
    for (const Case& tested :
         {Case{"DeviceFunction",
               {"listFunction", "cmdRun", "cmdClose", "chkPM", "chkEM", "chkID", "chkCW"}},
          Case{"OptionsEditAuto",
               {"lstIn", "lstOut", "cmdOk", "cmdCancel", "cmdMoveRight", "cmdMoveLeft",
                "cmdMoveLeftAll"}},
          Case{"DeviceSelect", {"listDevice", "cmdOk", "cmdCancel"}},
          Case{"OptionsSettings", {"optComm0", "cmdOk", "cmdCancel"}}})
        bench.InDialog(tested.item, [&](QWidget* dialog) {
            dialog->activateWindow();
            Settle();
            QStringList order;
            for (qsizetype step = 0; step < tested.order.size(); ++step) {
                ASSERT_NE(dialog->focusWidget(), nullptr);
                order << dialog->focusWidget()->objectName();
                QTest::keyClick(dialog, Qt::Key_Tab);
            }
            EXPECT_EQ(order, tested.order);
            EXPECT_EQ(dialog->focusWidget()->objectName(), order.first());
        });
}

}  // namespace
}  // namespace Tamber
