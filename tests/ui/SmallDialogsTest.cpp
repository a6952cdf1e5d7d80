#include "WindowBench.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/frmAbout.hpp"

namespace Tamber {
namespace {

class SmallDialogs : public testing::Test {
  protected:
    SmallDialogs() { bench.Start(); }

    // Opens a dialog, uses it and presses Enter if it is still there.
    void Use(const char* item, const std::function<void()>& use) {
        bench.InDialog(item, [&](QWidget* opened) {
            dialog = opened;
            use();
            if (dialog->isVisible())
                QTest::keyClick(dialog, Qt::Key_Return);
        });
    }
    template <typename Control>
    Control* Get(const char* name) {
        return Find<Control>(dialog, name);
    }
    void Press(const char* name) { Get<QPushButton>(name)->click(); }
    bool Enabled(const char* name) { return Get<QWidget>(name)->isEnabled(); }
    std::string Rows(const char* list) {
        QStringList rows;
        for (const auto* item : Get<QListWidget>(list)->findItems("*", Qt::MatchWildcard))
            rows << item->text();
        return rows.join(' ').toStdString();
    }

    void EditSeries(std::vector<std::int16_t> codes, const std::function<void()>& use) {
        bench.program.autoSequence.AutoCount = static_cast<std::int16_t>(codes.size());
        std::ranges::copy(codes, bench.program.autoSequence.Entries.begin() + 1);
        Use("OptionsEditAuto", use);
    }
    void Add(int row) {
        Get<QListWidget>("lstIn")->setCurrentRow(row);
        Press("cmdMoveRight");
    }

    WindowBench bench;
    QPointer<QWidget> dialog;
};

TEST_F(SmallDialogs, ChosenDeviceGetsABlankImageAndItsOwnViews) {
    bench.program.image.SetByte(0, 0x12);
    Use("DeviceSelect", [&] { EXPECT_EQ(Rows("listDevice"), "PIC16F84A A&B"); });
    EXPECT_EQ(bench.Panels(), "COM1 | Device: PIC16F84A | Size: 400H | File:");
    EXPECT_EQ(bench.program.image.Byte(0), 0xFF);
    Use("DeviceSelect", [&] {
        auto* list = Get<QListWidget>("listDevice");
        const QPoint second = list->visualItemRect(list->item(1)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_EQ(bench.Panels(), "COM1 | Device: A&B | Size: 200H | File:");
    EXPECT_EQ(bench.program.image.Byte(1), 0x0F);
    for (const char* item : {"BufferView", "BufferClearAll"}) {
        bench.Choose(item);
        EXPECT_NE(bench.Find("frmBuffer"), nullptr);
        EXPECT_EQ(bench.Find("frmEEPROM"), nullptr) << "the device has no EEPROM";
    }
    bench.program.settings.DeviceCount = 0;
    Use("DeviceSelect", [&] { EXPECT_EQ(Rows("listDevice"), ""); });
    EXPECT_EQ(bench.Panels(), "COM1 | Device:  | Size: 0H | File:") << "the empty slot";
}

TEST_F(SmallDialogs, PortIsRememberedForTheNextStart) {
    bench.program.settings.CommPortNumber = 9;
    Use("OptionsSettings", [&] { EXPECT_FALSE(Get<QRadioButton>("optComm3")->isChecked()); });
    EXPECT_EQ(bench.program.settings.CommPortNumber, 4) << "with none selected, the last";
    bench.program.settings.CommPortNumber = 2;
    Use("OptionsSettings", [&] {
        EXPECT_TRUE(Get<QRadioButton>("optComm1")->isChecked());
        EXPECT_TRUE(Get<QRadioButton>("optComm2")->toolTip().startsWith("/dev/ttyS2"));
        QTest::keyClick(Get<QRadioButton>("optComm1"), Qt::Key_Down);
    });
    EXPECT_TRUE(bench.Panels().starts_with("COM1 ")) << "the open port is not touched";
    EXPECT_THAT(bench.desktop.record, testing::IsEmpty());
    bench.Choose("FileExit");
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_EQ(bench.Contents("tamber.cfg"), "3\r\n2\r\n1\r\n");
}

TEST_F(SmallDialogs, SeriesIsComposedAndStored) {
    EditSeries({}, [&] {
        EXPECT_EQ(Rows("lstIn"), "Erase Blank Program Verify");
        EXPECT_FALSE(Enabled("cmdMoveLeft") || Enabled("cmdMoveLeftAll"));
        for (const int row : {0, 0, 3})
            Add(row);
        Get<QListWidget>("lstOut")->clearSelection();
        Press("cmdMoveLeft");
        EXPECT_EQ(Rows("lstOut"), "Erase Erase Verify") << "no row was selected";
        Get<QListWidget>("lstOut")->setCurrentRow(1);
        Press("cmdMoveLeft");
    });
    EXPECT_EQ(bench.Contents("auto.cfg"), "2\r\n1\r\n4\r\n");
    EditSeries({0, 7, 4}, [&] { EXPECT_EQ(Rows("lstOut"), "Read Verify"); });
    EXPECT_EQ(bench.Contents("auto.cfg"), "3\r\n0\r\n4\r\n4\r\n")
        << "a code without a row counts, and its entry keeps the code it had";
    EditSeries({1, 4}, [&] {
        Press("cmdMoveLeftAll");
        EXPECT_FALSE(Enabled("cmdMoveLeft") || Enabled("cmdMoveLeftAll"));
        for (int entry = 0; entry < 25; ++entry)
            Add(entry % 4);
        EXPECT_EQ(Get<QListWidget>("lstOut")->count(), 20);
        EXPECT_FALSE(Enabled("cmdMoveRight"));
        Get<QListWidget>("lstOut")->setCurrentRow(0);
        Press("cmdMoveLeft");
        EXPECT_TRUE(Enabled("cmdMoveRight") && Enabled("cmdMoveLeft"));
    });
    EXPECT_EQ(bench.program.autoSequence.AutoCount, 19);
}

TEST_F(SmallDialogs, FilesThatCannotBeWrittenAreReported) {
    std::filesystem::remove_all(bench.program.AppPath);
    EditSeries({}, [&] { Add(0); });
    EXPECT_EQ(bench.program.autoSequence.AutoCount, 1);
    bench.Choose("FileExit");
    EXPECT_THAT(bench.desktop.record, testing::ElementsAre(testing::HasSubstr("auto.cfg"),
                                                           testing::HasSubstr("tamber.cfg")));
    EXPECT_FALSE(bench.window->isVisible()) << "the program ends all the same";
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
            QTest::mouseClick(Find(&box, name), Qt::LeftButton);
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
