#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTest>
#include <filesystem>
#include <fstream>

#include "StartUp.hpp"
#include "WindowBench.hpp"
#include "core/TextFile.hpp"
#include "ui/AboutTexts.hpp"
#include "ui/frmAbout.hpp"

namespace Tamber {
namespace {

class SmallDialogsTest : public testing::Test {
  protected:
    SmallDialogsTest() { bench.Start(); }

    // Two devices: the one with EEPROM is selected, the other has none.
    void AddDeviceWithoutEeprom() {
        std::ofstream(DeviceListFile(bench.program), std::ios::app) << "\"A&B\",3,512,0,1\r\n";
        bench.program.settings.DeviceCount = 2;
        bench.program.catalogue = DeviceCatalogue::Load(DeviceListFile(bench.program), 2).value();
    }
    static QListWidget* Devices(QWidget* dialog) {
        return WindowBench::Find<QListWidget>(dialog, "listDevice");
    }
    static QRadioButton* Option(QWidget* dialog, int index) {
        return WindowBench::Find<QRadioButton>(dialog, ("optComm" + std::to_string(index)).c_str());
    }
    static void Click(QWidget* dialog, const char* button) {
        WindowBench::Find<QPushButton>(dialog, button)->click();
    }

    WindowBench bench{Device};
};

TEST_F(SmallDialogsTest, ChosenDeviceGetsABlankImageAndItsOwnViews) {
    AddDeviceWithoutEeprom();
    bench.program.image.SetByte(0, 0x12);
    bench.InDialog("DeviceSelect", [](QWidget* dialog) {
        EXPECT_EQ(dialog->windowTitle(), "Select Device");
        EXPECT_EQ(Devices(dialog)->count(), 2);
        EXPECT_EQ(Devices(dialog)->currentRow(), 0);
        QTest::keyClick(Devices(dialog), Qt::Key_Down);
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(bench.program.settings.SelectedDevice, 2);
    EXPECT_EQ(bench.Panel(2), "Device: A&B");
    EXPECT_EQ(bench.Panel(3), "Size: 200H");
    EXPECT_EQ(bench.program.image.Byte(0), 0xFF);
    EXPECT_EQ(bench.program.image.Byte(1), 0x0F);
    EXPECT_EQ(bench.Find<QWidget>("frmEEPROM"), nullptr);
    EXPECT_NE(bench.Find<QWidget>("frmBuffer"), nullptr);
    EXPECT_FALSE(bench.program.SelectionCancelled);
}

TEST_F(SmallDialogsTest, EnterAtOnceKeepsTheDeviceAndBlanksTheImage) {
    bench.program.image.SetByte(0, 0x12);
    bench.InDialog("DeviceSelect",
                   [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    EXPECT_EQ(bench.program.settings.SelectedDevice, 1);
    EXPECT_EQ(bench.program.image.Byte(0), 0xFF);
}

TEST_F(SmallDialogsTest, DoubleClickChooses) {
    AddDeviceWithoutEeprom();
    bench.InDialog("DeviceSelect", [](QWidget* dialog) {
        QListWidget* list = Devices(dialog);
        const QPoint second = list->visualItemRect(list->item(1)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_EQ(bench.program.settings.SelectedDevice, 2);
}

TEST_F(SmallDialogsTest, CancelEscapeAndCloseBoxChangeNothing) {
    AddDeviceWithoutEeprom();
    for (int way = 0; way < 3; ++way) {
        bench.program.SelectionCancelled = false;
        bench.program.image.SetByte(0, 0x12);
        bench.InDialog("DeviceSelect", [way](QWidget* dialog) {
            QTest::keyClick(Devices(dialog), Qt::Key_Down);
            if (way == 0)
                Click(dialog, "cmdCancel");
            else if (way == 1)
                QTest::keyClick(dialog, Qt::Key_Escape);
            else
                dialog->close();
        });
        EXPECT_TRUE(bench.program.SelectionCancelled);
        EXPECT_EQ(bench.program.settings.SelectedDevice, 1);
        EXPECT_EQ(bench.program.image.Byte(0), 0x12);
        EXPECT_EQ(bench.Panel(2), "Device: PIC16F84A");
    }
}

TEST_F(SmallDialogsTest, EmptyCatalogueSelectsTheEmptySlot) {
    bench.program.settings.DeviceCount = 0;
    bench.InDialog("DeviceSelect",
                   [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    EXPECT_EQ(bench.program.settings.SelectedDevice, 0);
    EXPECT_EQ(bench.Panel(2), "Device: ");
    EXPECT_EQ(bench.Panel(3), "Size: 0H");
}

TEST_F(SmallDialogsTest, PortIsRememberedForTheNextStart) {
    bench.program.settings.CommPortNumber = 2;
    bench.desktop.record.clear();
    bench.InDialog("OptionsSettings", [](QWidget* dialog) {
        EXPECT_EQ(dialog->windowTitle(), "Settings");
        EXPECT_TRUE(Option(dialog, 1)->isChecked());
        QTest::keyClick(Option(dialog, 1), Qt::Key_Down);
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(bench.program.settings.CommPortNumber, 3);
    EXPECT_EQ(bench.Panel(1), "COM1") << "the open port is not touched";
    EXPECT_THAT(bench.desktop.record, testing::IsEmpty());
    bench.Choose("FileExit");
    EXPECT_EQ(ReadTextFile(SettingsFile(bench.program)).value(), "3\r\n1\r\n1\r\n");
}

TEST_F(SmallDialogsTest, PortOutsideTheFourSelectsNoneAndOkStoresTheLast) {
    for (const bool ok : {false, true}) {
        bench.program.settings.CommPortNumber = 9;
        bench.InDialog("OptionsSettings", [ok](QWidget* dialog) {
            for (int index = 0; index < 4; ++index)
                EXPECT_FALSE(Option(dialog, index)->isChecked());
            Click(dialog, ok ? "cmdOk" : "cmdCancel");
        });
        EXPECT_EQ(bench.program.settings.CommPortNumber, ok ? 4 : 9);
    }
}

TEST_F(SmallDialogsTest, PortsTellWhatTheyStandFor) {
    std::filesystem::create_symlink("/dev/null", bench.program.AppPath / "com1");
    std::filesystem::create_symlink("/nowhere", bench.program.AppPath / "com2");
    const QString folder = QString::fromStdString(bench.program.AppPath.string());
    bench.InDialog("OptionsSettings", [&](QWidget* dialog) {
        EXPECT_EQ(Option(dialog, 0)->toolTip(), folder + "/com1 -> /dev/null, present");
        EXPECT_EQ(Option(dialog, 1)->toolTip(), folder + "/com2 -> /nowhere, not there");
        EXPECT_TRUE(Option(dialog, 2)->toolTip().startsWith("/dev/ttyS2, "));
    });
}

TEST_F(SmallDialogsTest, AboutBoxClosesAfterThreeSecondsOrAtAClickOnItsBackground) {
    const auto start = bench.desktop.now;
    bench.InDialog("HelpAbout", [&](QWidget* dialog) {
        QTest::mouseClick(WindowBench::Find<QLabel>(dialog, "lblAbout0"), Qt::LeftButton);
        QTest::mouseClick(WindowBench::Find<QLabel>(dialog, "Image1"), Qt::LeftButton);
        EXPECT_TRUE(dialog->isVisible()) << "labels and picture are no background";
        bench.desktop.Events().DeliverEvents();
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_EQ(bench.desktop.now - start, std::chrono::seconds(3));
    bench.InDialog("HelpAbout", [](QWidget* dialog) {
        QTest::mouseClick(dialog, Qt::LeftButton, {}, {5, dialog->height() - 5});
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_TRUE(bench.window->isVisible());
}

// The part of a picture that is not of its first pixel's colour, and the strongest of these pixels.
struct Ink {
    QRect bounds;
    QColor color;
};

Ink InkOf(const QImage& picture) {
    Ink ink;
    const QColor ground = picture.pixelColor(0, 0);
    int farthest = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QColor here = picture.pixelColor(x, y);
            const int distance = std::abs(here.red() - ground.red()) +
                                 std::abs(here.green() - ground.green()) +
                                 std::abs(here.blue() - ground.blue());
            if (distance > 0)
                ink.bounds |= QRect(x, y, 1, 1);
            if (distance > farthest) {
                farthest = distance;
                ink.color = here;
            }
        }
    return ink;
}

TEST(Splash, LettersEveryTextInItsPlaceSizeAndColour) {
    WindowDesktop desktop;
    frmAbout splash(nullptr, desktop);
    const auto labels = splash.findChildren<QLabel*>(QRegularExpression("^lblAbout"));
    ASSERT_EQ(labels.size(), AboutTexts.size());
    for (auto* label : labels) {
        const AboutText& about = AboutTexts[label->objectName().last(1).toUInt()];
        EXPECT_EQ(label->text(), about.text);
        const Ink ink = InkOf(label->grab().toImage());
        EXPECT_EQ(ink.bounds.isEmpty(), label->text().isEmpty()) << about.text;
        if (ink.bounds.isEmpty())
            continue;
        EXPECT_EQ(ink.color, about.color);
        EXPECT_NEAR(ink.bounds.center().x(), label->width() / 2, 2) << about.text;
        EXPECT_TRUE(label->rect().adjusted(1, 1, -1, -1).contains(ink.bounds)) << about.text;
        // From the top of its capitals to its baseline or below, a text of a point's 4/3 pixels.
        const double height = ink.bounds.height() / (about.points * 4 / 3);
        EXPECT_GT(height, 0.6) << about.text;
        EXPECT_LT(height, 1.3) << about.text;
    }
}

TEST(Splash, BringsUpTheMainWindowOnce) {
    for (const bool click : {false, true}) {
        WindowDesktop desktop;
        int shown = 0;
        frmAbout splash(nullptr, desktop, [&] { ++shown; });
        splash.show();
        EXPECT_EQ(shown, 0);
        if (click)
            QTest::mouseClick(&splash, Qt::LeftButton, {}, {5, splash.height() - 5});
        else
            desktop.Events().DeliverEvents();
        EXPECT_EQ(shown, 1);
        EXPECT_FALSE(splash.isVisible());
        splash.close();
        EXPECT_EQ(shown, 1);
        EXPECT_EQ(desktop.now, std::chrono::seconds(click ? 0 : 3));
    }
}

}  // namespace
}  // namespace Tamber
