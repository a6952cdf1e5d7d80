#include "WindowBench.hpp"

namespace Tamber {
namespace {

struct FunctionDialog : testing::Test {
    // Starts the program anew, opens the dialog and uses it.
    void Use(const std::function<void()>& use) {
        bench.emplace(device, faults);
        bench->Start();
        bench->InDialog("DeviceFunction", use);
    }
    std::string Text(const char* label) { return bench->Find<QLabel>(label)->text().toStdString(); }
    void Run(FunctionCode code, const std::function<void()>& atEachStep = {}) {
        bench->Find<QListWidget>("listFunction")->setCurrentRow(code);
        bench->desktop.intrude = atEachStep;
        bench->Press(Qt::Key_Return);
        bench->desktop.intrude = nullptr;
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
                for (const auto* box : bench->dialog->findChildren<QCheckBox*>())
                    EXPECT_EQ(box->isChecked(),
                              device.EepromBytes != 0 || box != bench->Find("chkEM"));
                Run(FunctionVerify);
            }
        });
    }
}

TEST_F(FunctionDialog, WithoutABoardNothingCanBeRunOrIsSent) {
    faults.SilentFrom = 1;
    Use([&] {
        EXPECT_FALSE(bench->Enabled("cmdRun"));
        Run(FunctionRead);
    });
    EXPECT_EQ(bench->startRecord.back(), "box [Device Error] Communication Error! (critical)");
    EXPECT_THAT(bench->desktop.record, testing::IsEmpty());
}

TEST_F(FunctionDialog, ProgramShowsAndSaysHowFarItIs) {
    Use([&] {
        std::set<int> seen;
        Run(FunctionProgram, [&] {
            const int percent = std::stoi(Text("lblProgress"));
            seen.insert(percent);
            EXPECT_EQ(bench->Find("shpProgress")->width(),
                      percent * bench->Find("shpBG")->width() / 100);
            EXPECT_EQ(QAccessible::queryAccessibleInterface(bench->Find("shpBG"))
                          ->valueInterface()
                          ->currentValue(),
                      percent);
            EXPECT_FALSE(bench->Enabled("cmdRun") || bench->Enabled("cmdClose") ||
                         bench->Enabled("frameOption"));
        });
        EXPECT_TRUE(seen.contains(87)) << "the last of eight blocks";
        EXPECT_EQ(Text("lblMsg0"), "Programming Program Memory...   OK!");
        EXPECT_EQ(Text("lblMsg1"), "Programming EEPROM...   OK!");
        EXPECT_EQ(Text("lblMsg2"), "Programming ID and Config...   OK!");
        EXPECT_EQ(Text("lblProgress"), "100%");
        EXPECT_TRUE(bench->Enabled("cmdRun") && bench->Enabled("cmdClose") &&
                    bench->Enabled("frameOption"));
    });
    for (int index = 0; index < 128; ++index)
        ASSERT_EQ(bench->engine.Memory().ByteAt(static_cast<std::uint32_t>(index)),
                  bench->program.image.Byte(index));
}

TEST_F(FunctionDialog, RunsAgainAtOnceAfterAFault) {
    faults.ReplyLength = {3, 0};  // identification is the first request
    Use([&] {
        Run(FunctionBlank);
        EXPECT_EQ(Text("lblMsg0"), "Blank Checking Program Memory...   Device Fault!");
        ExpectNothingCutOff(*bench->dialog);  // with the longest text
        Run(FunctionVerify);
        EXPECT_EQ(Text("lblMsg0"), "Verifying Program Memory...   OK!");
        EXPECT_EQ(Text("lblMsg3"), "Verifying Conig Word...   OK!");
    });
}

// Whatever the user presses while a function runs, at each of its steps: the run goes on as if
// nothing had been pressed, and the windows stay.
TEST_F(FunctionDialog, NothingPressedDuringARunDisturbsIt) {
    const std::function<void()> intrusions[] = {
        [] {},
        [this] { bench->Press(Qt::Key_Return); },
        [this] { bench->Click("cmdRun"); },
        [this] { bench->Click("cmdClose"); },
        [this] { bench->Press(Qt::Key_Escape); },
        [this] { bench->dialog->close(); },
        [this] { bench->window->close(); },
        [this] { bench->Find<QListWidget>("listFunction")->setCurrentRow(FunctionErase); },
    };
    std::vector<std::string> undisturbed;
    for (const auto& intrude : intrusions) {
        SCOPED_TRACE(&intrude - intrusions);
        Use([&] {
            Run(FunctionProgram, intrude);
            EXPECT_TRUE(bench->dialog->isVisible());
            EXPECT_EQ(Text("lblMsg2"), "Programming ID and Config...   OK!");
        });
        EXPECT_TRUE(bench->window->isVisible());
        if (undisturbed.empty())
            undisturbed = bench->desktop.record;
        EXPECT_EQ(bench->desktop.record, undisturbed);
    }
}

TEST_F(FunctionDialog, ReadTakesItOffTheScreenAndReopensTheViews) {
    QPointer<QWidget> programView, configurationView;
    Use([&] {
        programView = bench->Find("frmBuffer");
        configurationView = bench->Find("frmConfig");
        bench->engine.Memory().SetByte(0, 0x41);
        for (const char* box : {"chkID", "chkCW"})
            bench->Find<QCheckBox>(box)->setChecked(false);
        Run(FunctionRead);
        EXPECT_FALSE(bench->dialog->isVisible());
    });
    EXPECT_EQ(bench->program.image.Byte(0), 0x41);
    EXPECT_TRUE(programView.isNull());
    EXPECT_FALSE(configurationView.isNull()) << "a region that was not read keeps its view";
    EXPECT_TRUE(bench->window->isEnabled());
    EXPECT_TRUE(bench->dialog.isNull());
}

TEST_F(FunctionDialog, ReadInASeriesKeepsTheMainWindowFromInputUntilTheRunHasUnwound) {
    int stepsOffScreen = 0;
    Use([&] {
        bench->program.autoSequence.Entries[1] = FunctionRead;
        bench->program.autoSequence.Entries[2] = FunctionVerify;
        Run(FunctionAuto, [&] {
            if (bench->dialog->isVisible())
                return;
            ++stepsOffScreen;
            EXPECT_FALSE(bench->window->isEnabled());
            bench->window->close();
            EXPECT_TRUE(bench->window->isVisible());
        });
    });
    EXPECT_GT(stepsOffScreen, 8) << "the Verify ran on";
    EXPECT_EQ(std::ranges::count(bench->desktop.record, "> 01 52"), 22);
    EXPECT_TRUE(bench->window->isEnabled());
}

}  // namespace
}  // namespace Tamber
