#include "WindowBench.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/frmAbout.hpp"

namespace Tamber {
namespace {

struct SmallDialogs : testing::Test, WindowBench {
    SmallDialogs() { Start(); }

    // Opens a dialog, uses it and presses Enter if it is still there.
    void Use(const char* item, const std::function<void()>& use) {
        InDialog(item, [&] {
            use();
            if (dialog->isVisible())
                Press(Qt::Key_Return);
        });
    }
    std::string Rows(const char* list) {
        QStringList rows;
        for (const auto* item : Find<QListWidget>(list)->findItems("*", Qt::MatchWildcard))
            rows << item->text();
        return rows.join(' ').toStdString();
    }
    void EditSeries(const std::vector<std::int16_t>& codes, const std::function<void()>& use) {
        program.autoSequence.AutoCount = static_cast<std::int16_t>(codes.size());
        std::ranges::copy(codes, program.autoSequence.Entries.begin() + 1);
        Use("OptionsEditAuto", use);
    }
    void Add(int row) {
        Find<QListWidget>("lstIn")->setCurrentRow(row);
        Click("cmdMoveRight");
    }
};

TEST_F(SmallDialogs, ChosenDeviceGetsABlankImageAndItsOwnViews) {
    program.image.SetByte(0, 0x12);
    Use("DeviceSelect", [&] { EXPECT_EQ(Rows("listDevice"), "PIC16F84A A&B"); });
    EXPECT_EQ(Panels(), "COM1 | Device: PIC16F84A | Size: 400H | File:");
    EXPECT_EQ(program.image.Byte(0), 0xFF);
    Use("DeviceSelect", [&] {
        auto* list = Find<QListWidget>("listDevice");
        const QPoint second = list->visualItemRect(list->item(1)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_EQ(Panels(), "COM1 | Device: A&B | Size: 200H | File:");
    EXPECT_EQ(program.image.Byte(1), 0x0F);
    for (const char* item : {"BufferView", "BufferClearAll"}) {
        Choose(item);
        EXPECT_NE(Find("frmBuffer"), nullptr);
        EXPECT_EQ(Find("frmEEPROM"), nullptr) << "the device has no EEPROM";
    }
    program.settings.DeviceCount = 0;
    Use("DeviceSelect", [&] { EXPECT_EQ(Rows("listDevice"), ""); });
    EXPECT_EQ(Panels(), "COM1 | Device:  | Size: 0H | File:") << "the empty slot";
}

TEST_F(SmallDialogs, PortIsRememberedForTheNextStart) {
    program.settings.CommPortNumber = 9;
    Use("OptionsSettings", [&] { EXPECT_FALSE(Find<QRadioButton>("optComm3")->isChecked()); });
    EXPECT_EQ(program.settings.CommPortNumber, 4) << "with none selected, the last";
    program.settings.CommPortNumber = 2;
    Use("OptionsSettings", [&] {
        EXPECT_TRUE(Find<QRadioButton>("optComm1")->isChecked());
        EXPECT_TRUE(Find<QRadioButton>("optComm2")->toolTip().startsWith("/dev/ttyS2"));
        QTest::keyClick(Find<QRadioButton>("optComm1"), Qt::Key_Down);
    });
    EXPECT_TRUE(Panels().starts_with("COM1 ")) << "the open port is not touched";
    EXPECT_THAT(desktop.record, testing::IsEmpty());
    Choose("FileExit");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Contents("tamber.cfg"), "3\r\n2\r\n1\r\n");
}

TEST_F(SmallDialogs, SeriesIsComposedAndStored) {
    EditSeries({}, [&] {
        EXPECT_EQ(Rows("lstIn"), "Erase Blank Program Verify");
        EXPECT_FALSE(Enabled("cmdMoveLeft") || Enabled("cmdMoveLeftAll"));
        for (const int row : {0, 0, 3})
            Add(row);
        Find<QListWidget>("lstOut")->clearSelection();
        Click("cmdMoveLeft");
        EXPECT_EQ(Rows("lstOut"), "Erase Erase Verify") << "no row was selected";
        Find<QListWidget>("lstOut")->setCurrentRow(1);
        Click("cmdMoveLeft");
    });
    EXPECT_EQ(Contents("auto.cfg"), "2\r\n1\r\n4\r\n");
    EditSeries({0, 7, 4}, [&] { EXPECT_EQ(Rows("lstOut"), "Read Verify"); });
    EXPECT_EQ(Contents("auto.cfg"), "3\r\n0\r\n4\r\n4\r\n")
        << "a code without a row counts, and its entry keeps the code it had";
    EditSeries({1, 4}, [&] {
        Click("cmdMoveLeftAll");
        EXPECT_FALSE(Enabled("cmdMoveLeft") || Enabled("cmdMoveLeftAll"));
        for (int entry = 0; entry < 25; ++entry)
            Add(entry % 4);
        EXPECT_EQ(Find<QListWidget>("lstOut")->count(), 20);
        EXPECT_FALSE(Enabled("cmdMoveRight"));
        Find<QListWidget>("lstOut")->setCurrentRow(0);
        Click("cmdMoveLeft");
        EXPECT_TRUE(Enabled("cmdMoveRight") && Enabled("cmdMoveLeft"));
    });
    EXPECT_EQ(program.autoSequence.AutoCount, 19);
}

TEST_F(SmallDialogs, FilesThatCannotBeWrittenAreReported) {
    std::filesystem::remove_all(program.AppPath);
    EditSeries({}, [&] { Add(0); });
    EXPECT_EQ(program.autoSequence.AutoCount, 1);
    Choose("FileExit");
    EXPECT_THAT(desktop.record, testing::ElementsAre(testing::HasSubstr("auto.cfg"),
                                                     testing::HasSubstr("tamber.cfg")));
    EXPECT_FALSE(window->isVisible()) << "the program ends all the same";
}

TEST(AboutBox, HasRoomForALongMakersLine) {
    for (const int length : {1, 40, 120}) {
        const QString line(length, 'W');
        const QFont font = FittedWhole(ComicFont(15.75), line, 297);
        EXPECT_LE(QFontMetrics(font).horizontalAdvance(line), 297) << length;
    }
}

TEST(AboutBox, GoesOnceAfterThreeSecondsOrAtAClickOnItsBackground) {
    for (const bool click : {false, true}) {
        WindowDesktop desktop;
        int gone = 0;
        frmAbout box(nullptr, desktop, [&] { ++gone; });
        box.show();
        for (const char* name : {"lblAbout0", "Image1"})
            QTest::mouseClick(box.findChild<QWidget*>(name), Qt::LeftButton);
        EXPECT_EQ(gone, 0) << "labels and picture are no background";
        if (click)
            QTest::mouseClick(&box, Qt::LeftButton, {}, {5, box.height() - 5});
        else
            desktop.Events().DeliverEvents();
        EXPECT_FALSE(box.isVisible());
        box.close();
        EXPECT_EQ(gone, 1);
        EXPECT_EQ(desktop.now, std::chrono::seconds(click ? 0 : 3));
    }
}

}  // namespace
}  // namespace Tamber
