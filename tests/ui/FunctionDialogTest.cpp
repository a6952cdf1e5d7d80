#include "WindowBench.hpp"

namespace Tamber {
namespace {

struct FunctionDialog : testing::Test {
    // Starts the program anew, opens the dialog and uses it.
    void Use(const std::function<void()>& use) {
        bench.emplace(device, faults);
        bench->InDialog("DeviceFunction", use);
    }
    std::string Text(const char* label) { return bench->Find<QLabel>(label)->text().toStdString(); }
    void Run(FunctionCode code, const std::function<void()>& atEachStep = {}) {
        bench->Find<QListWidget>("listFunction")->setCurrentRow(code);
        bench->desktop.record.clear();
        bench->desktop.intrude = atEachStep;
        bench->Press(Qt::Key_Return);
        bench->desktop.intrude = nullptr;
    }
    void ExpectEnabled(bool enabled) {
        for (const char* control : {"cmdRun", "cmdClose", "frameOption"})
            EXPECT_EQ(bench->Find(control)->isEnabled(), enabled) << control;
    }

    DeviceRecord device{"small", 7, 64, 16, 1};
    Simulator::FaultPlan faults;
    std::optional<WindowBench> bench;
};

TEST_F(FunctionDialog, OpensWithTheChoicesThatTheDeviceHas) {
    for (const DeviceRecord& tested :
         {device, {"no EEPROM", 7, 64, 0, 1}, {"stream", 1, 64, 0, 0}}) {
        SCOPED_TRACE(tested.Name);
        device = tested;
        Use([&] {
            EXPECT_EQ(bench->desktop.record.size(), 1U) << "the device type";
            EXPECT_EQ(bench->Find<QListWidget>("listFunction")->currentRow(), FunctionRead);
            EXPECT_EQ(Text("lblProgress"), "0%");
            for (int run = 0; run < 2; ++run) {  // a run leaves the choice as it was
                EXPECT_EQ(bench->Enabled("frameOption"), device.TypeCode != 1);
                EXPECT_EQ(bench->Enabled("chkEM"), device.EepromBytes != 0);
                EXPECT_EQ(bench->Find<QCheckBox>("chkEM")->isChecked(), device.EepromBytes != 0);
                Run(FunctionVerify);
            }
        });
    }
}

// Whatever the user presses at each step of a run, it goes on as if nothing had been pressed.
TEST_F(FunctionDialog, RunsShowHowFarTheyAreAndAreNotDisturbed) {
    faults.ReplyLength = {3, 0};  // identification is the first request
    Use([&] {
        Run(FunctionBlank);
        EXPECT_EQ(Text("lblMsg0"), "Blank Checking Program Memory...   Device Fault!");
        ExpectNothingCutOff(*bench->dialog);  // with the longest text
        Run(FunctionVerify);
        const std::vector<std::string> undisturbed = bench->desktop.record;
        std::set<int> seen;
        Run(FunctionVerify, [&] {
            const int percent = std::stoi(Text("lblProgress"));
            seen.insert(percent);
            auto* ground = bench->Find<QProgressBar>("shpBG");
            EXPECT_EQ(bench->Find("shpProgress")->width(), percent * ground->width() / 100);
            EXPECT_EQ(ground->value(), percent) << "for screen readers";
            ExpectEnabled(false);
            bench->Press(Qt::Key_Return);
            bench->Press(Qt::Key_Escape);
            bench->Click("cmdRun");
            bench->Click("cmdClose");
            bench->dialog->close();
            bench->window->close();
            bench->Find<QListWidget>("listFunction")->setCurrentRow(FunctionErase);
        });
        EXPECT_TRUE(bench->dialog->isVisible());
        EXPECT_EQ(bench->desktop.record, undisturbed);
        EXPECT_TRUE(seen.contains(87)) << "the last of eight blocks";
        EXPECT_EQ(Text("lblMsg0"), "Verifying Program Memory...   OK!");
        EXPECT_EQ(Text("lblMsg3"), "Verifying Conig Word...   OK!");
        EXPECT_EQ(Text("lblProgress"), "100%");
        ExpectEnabled(true);
    });
    EXPECT_TRUE(bench->window->isVisible());
}

TEST_F(FunctionDialog, EndOfTheSessionEndsARunAtItsNextBlockAndWritesTheSettings) {
    Use([&] {
        std::filesystem::remove(bench->program.AppPath / "tamber.cfg");
        Run(FunctionBlank, [&] {
            if (Text("lblProgress") == "25%")
                bench->window->EndProgram();
        });
        EXPECT_EQ(std::ranges::count_if(
                      bench->desktop.record,
                      [](const std::string& event) { return event.starts_with("> 04 "); }),
                  3);
        EXPECT_EQ(bench->desktop.record.back(), "> 01 49") << "the sequence is closed";
        EXPECT_EQ(bench->Contents("tamber.cfg"), "2\r\n2\r\n1\r\n");
    });
}

// The reply that comes too late counts into the next function's, which reads the wrong block.
TEST_F(FunctionDialog, ReplyOfAnEarlierRunIsToldAndDroppedOnlyByTheUser) {
    faults.Delay = {4, std::chrono::milliseconds(1100)};
    const auto read = [&] {
        bench->InDialog("DeviceFunction", [&] {
            for (const char* box : {"chkEM", "chkID", "chkCW"})
                bench->Find<QCheckBox>(box)->setChecked(false);
            Run(FunctionRead);
        });
    };
    const auto expectTold = [&](const std::string& beginning) {
        EXPECT_TRUE(bench->Said().starts_with(beginning)) << bench->Said();
    };
    Use([] {});
    bench->engine.Memory().SetByte(0, 0x41);
    read();
    expectTold("Warning: Read: Reading Program Memory...   Device Fault!; ");
    bench->desktop.Events().DeliverEvents();  // the late reply
    read();
    EXPECT_NE(bench->program.image.Byte(0), 0x41);
    expectTold("Failure: The line is out of step: 17 bytes came that nobody asked for. What ");
    bench->Click("cmdRemedyOfFirst");
    read();
    EXPECT_EQ(bench->program.image.Byte(0), 0x41);
    expectTold("Note: Read: all good; ");
}

TEST_F(FunctionDialog, KeepsTheKeyboardWhereItWasBeforeARun) {
    Use([&] {
        for (const char* name : {"cmdRun", "chkPM"}) {
            bench->dialog->activateWindow();
            bench->Find(name)->setFocus();
            Run(FunctionVerify);
            EXPECT_EQ(bench->dialog->focusWidget()->objectName(), name);
        }
    });
}

// The main window stays without input until the run has unwound.
TEST_F(FunctionDialog, ReadTakesItOffTheScreenAndReopensTheViewsWhileTheSeriesGoesOn) {
    QPointer<QWidget> programView, configurationView;
    int stepsOffScreen = 0;
    Use([&] {
        programView = bench->Find("frmBuffer");
        configurationView = bench->Find("frmConfig");
        bench->engine.Memory().SetByte(0, 0x41);
        bench->program.autoSequence.Entries[1] = FunctionRead;
        bench->program.autoSequence.Entries[2] = FunctionVerify;
        for (const char* box : {"chkID", "chkCW"})
            bench->Find<QCheckBox>(box)->setChecked(false);
        Run(FunctionAuto, [&] {
            if (bench->dialog->isVisible())
                return;
            ++stepsOffScreen;
            EXPECT_FALSE(bench->window->isEnabled());
            bench->window->close();
        });
        EXPECT_FALSE(bench->dialog->isVisible());
    });
    EXPECT_GT(stepsOffScreen, 8) << "the Verify ran on";
    EXPECT_EQ(bench->program.image.Byte(0), 0x41);
    EXPECT_TRUE(programView.isNull());
    EXPECT_FALSE(configurationView.isNull()) << "a region that was not read keeps its view";
    EXPECT_TRUE(bench->window->isVisible() && bench->window->isEnabled());
    EXPECT_TRUE(bench->dialog.isNull());
    EXPECT_EQ(QApplication::focusWidget(), bench->Dump()) << "the keys work in what was read";
}

}  // namespace
}  // namespace Tamber
