#include "WindowBench.hpp"
#include "ui/Opening.hpp"
#include "ui/frmAbout.hpp"

namespace Tamber {
namespace {

struct SmallDialogs : testing::Test, WindowBench {
    std::string Rows(const char* list) {
        QStringList rows;
        for (const auto* item : Find<QListWidget>(list)->findItems("*", Qt::MatchWildcard))
            rows << item->text();
        return rows.join(' ').toStdString();
    }
    // Opens Edit Auto with this series, uses it and presses OK.
    void EditSeries(const std::vector<std::int16_t>& codes, const std::function<void()>& use) {
        program.autoSequence.AutoCount = static_cast<std::int16_t>(codes.size());
        std::ranges::copy(codes, program.autoSequence.Entries.begin() + 1);
        InDialog("OptionsEditAuto", [&] {
            use();
            Press(Qt::Key_Return);
        });
    }
    void Add(int row) {
        Find<QListWidget>("lstIn")->setCurrentRow(row);
        Click("cmdMoveRight");
    }
    void Remove(int row) {
        Find<QListWidget>("lstOut")->setCurrentRow(row);
        Click("cmdMoveLeft");
    }
};

TEST_F(SmallDialogs, ChosenDeviceGetsABlankImageAndItsOwnViews) {
    program.image.SetByte(0, 0x12);
    InDialog("DeviceSelect", [&] {
        EXPECT_EQ(Rows("listDevice"), "PIC16F84A A&Ä");
        Press(Qt::Key_Return);
    });
    EXPECT_EQ(Panels(), "COM2 | Device: PIC16F84A | Size: 400H | File:");
    EXPECT_EQ(program.image.Byte(0), 0xFF);
    InDialog("DeviceSelect", [&] {
        auto* list = Find<QListWidget>("listDevice");
        const QPoint second = list->visualItemRect(list->item(1)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_EQ(Panels(), "COM2 | Device: A&Ä | Size: 200H | File:");
    EXPECT_EQ(program.image.Byte(1), 0x0F);
    for (const char* item : {"BufferView", "BufferClearAll"}) {
        Choose(item);
        EXPECT_NE(Find("frmBuffer"), nullptr);
        EXPECT_EQ(Find("frmEEPROM"), nullptr) << "the device has no EEPROM";
    }
}

TEST_F(SmallDialogs, DeviceIsFoundByAnyPartOfItsNameAndKeptByAClickBesideTheRows) {
    InDialog("DeviceSelect", [&] {
        auto* list = Find<QListWidget>("listDevice");
        EXPECT_EQ(list->item(1)->toolTip(), "512 words, no EEPROM, type 3, can be erased");
        QTest::keyClicks(list, "a&");
        EXPECT_EQ(list->currentRow(), 1);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, {5, list->height() - 10});
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          list->visualItemRect(list->item(1)).center());
        Press(Qt::Key_Return);
    });
    EXPECT_EQ(Panels(), "COM2 | Device: A&Ä | Size: 200H | File:");
    InDialog("DeviceSelect", [&] {
        QTest::keyClicks(Find("listDevice"), "84a");
        Press(Qt::Key_Return);
    });
    EXPECT_EQ(program.settings.SelectedDevice, 1);
}

TEST_F(SmallDialogs, PortIsRememberedForTheNextStart) {
    program.settings.CommPortNumber = 9;
    InDialog("OptionsSettings", [&] { Press(Qt::Key_Return); });
    EXPECT_EQ(program.settings.CommPortNumber, 4) << "with none selected, the last";
    program.settings.CommPortNumber = 2;
    std::filesystem::create_symlink("gone", program.AppPath / "com3");
    std::filesystem::create_symlink("<img src='\n\u202E'>", program.AppPath / "com4");
    InDialog("OptionsSettings", [&] {
        EXPECT_TRUE(Find<QRadioButton>("optComm1")->isChecked());
        const QString link = Find("optComm3")->toolTip();
        EXPECT_TRUE(link.contains("&lt;img src='\u240A\uFFFD'") ||
                    link.contains("&lt;img src=&#39;\u240A\uFFFD"))
            << link.toStdString();
        EXPECT_TRUE(Find("optComm2")->toolTip().contains("gone, not there"));
        QTest::keyClick(Find("optComm1"), Qt::Key_Down);
        Press(Qt::Key_Return);
    });
    EXPECT_TRUE(Panels().starts_with("COM2 ")) << "the open port is not touched";
    EXPECT_THAT(desktop.record, testing::IsEmpty());
    Choose("FileExit");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Contents("tamber.cfg"), "3\r\n2\r\n1\r\n");
}

TEST_F(SmallDialogs, SeriesIsComposedAndStoredOrSaysWhyNot) {
    EditSeries({}, [&] {
        EXPECT_EQ(Rows("lstIn"), "Erase Blank Program Verify");
        EXPECT_FALSE(Enabled("cmdMoveLeft") || Enabled("cmdMoveLeftAll"));
        for (const int row : {0, 1, 3})
            Add(row);
        Remove(-1);
        EXPECT_EQ(Rows("lstOut"), "Erase Blank Verify") << "no row was selected";
        Remove(1);
    });
    EXPECT_EQ(Contents("auto.cfg"), "2\r\n1\r\n4\r\n");
    EditSeries({1, 2}, [&] {
        auto* functions = Find<QListWidget>("lstIn");
        const QPoint verify = functions->visualItemRect(functions->item(3)).center();
        QTest::mouseClick(functions->viewport(), Qt::LeftButton, {}, verify);
        QTest::mouseDClick(functions->viewport(), Qt::LeftButton, {}, verify);
        auto* series = Find<QListWidget>("lstOut");
        series->setCurrentRow(2);
        series->setFocus();
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down})
            QTest::keyClick(series, key, Qt::AltModifier);
        EXPECT_EQ(Rows("lstOut"), "Erase Verify Blank");
        QTest::keyClick(series, Qt::Key_Delete);
        EXPECT_EQ(Rows("lstOut"), "Erase Blank");
    });
    EditSeries({0, 7, 4, 1}, [&] {
        EXPECT_EQ(Rows("lstOut"), "Read Verify Erase");
        Remove(2);
    });
    EXPECT_EQ(Contents("auto.cfg"), "3\r\n0\r\n4\r\n4\r\n")
        << "a code without a row counts, and its entry keeps the code it had";
    EditSeries({1, 4}, [&] {
        Click("cmdMoveLeftAll");
        EXPECT_FALSE(Enabled("cmdMoveLeft") || Enabled("cmdMoveLeftAll"));
        for (int entry = 0; entry < 25; ++entry)
            Add(entry % 4);
        EXPECT_EQ(Find<QListWidget>("lstOut")->count(), 20);
        EXPECT_FALSE(Enabled("cmdMoveRight"));
        Remove(0);
        EXPECT_TRUE(Enabled("cmdMoveRight") && Enabled("cmdMoveLeft"));
    });
    EXPECT_EQ(program.autoSequence.AutoCount, 19);

    std::filesystem::remove_all(program.AppPath);  // nothing can be written
    EditSeries({}, [&] { Add(0); });
    EXPECT_EQ(program.autoSequence.AutoCount, 1);
    Choose("FileExit");
    EXPECT_THAT(desktop.record, testing::ElementsAre(testing::HasSubstr("auto.cfg"),
                                                     testing::HasSubstr("tamber.cfg")));
    EXPECT_FALSE(window->isVisible()) << "the program ends all the same";
}

TEST_F(SmallDialogs, EndOfTheDesktopSessionWritesTheSettingsBesideAnOpenBox) {
    Opening opening(program, desktop);
    opening.Begin();
    desktop.whileBoxIsOpen = [&] {
        std::filesystem::remove(program.AppPath / "tamber.cfg");
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
    };
    desktop.Events().DeliverEvents();  // the splash goes, the main window comes, with its box
    Settle();
    EXPECT_EQ(Contents("tamber.cfg"), "2\r\n2\r\n1\r\n");
}

TEST(AboutBox, GoesOnceAfterThreeSecondsAtAKeyOrAtAClickOnItsBackground) {
    for (const char* way : {"time", "key", "click"}) {
        SCOPED_TRACE(way);
        WindowDesktop desktop;
        int gone = 0;
        frmAbout box(nullptr, desktop, [&] { ++gone; });
        box.show();
        for (const char* name : {"lblAbout0", "Image1"})
            QTest::mouseClick(box.findChild<QWidget*>(name), Qt::LeftButton);
        EXPECT_EQ(gone, 0) << "labels and picture are no background";
        for (const auto* label : box.findChildren<QLabel*>(QRegularExpression("lblAbout")))
            EXPECT_EQ(label->isVisible(), label->text() != "") << "it would keep clicks to itself";
        if (*way == 't')
            desktop.Events().DeliverEvents();
        else if (*way == 'k')
            QTest::keyClick(&box, Qt::Key_Space);
        else
            QTest::mouseClick(&box, Qt::LeftButton, {}, {5, box.height() - 5});
        EXPECT_FALSE(box.isVisible());
        box.reject();
        EXPECT_EQ(gone, 1);
        EXPECT_EQ(desktop.now, std::chrono::seconds(*way == 't' ? 3 : 0));
    }
}

}  // namespace
}  // namespace Tamber
