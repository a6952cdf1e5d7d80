#include "WindowBench.hpp"

namespace Tamber {
namespace {

class FunctionDialog : public testing::Test {
  protected:
    // Starts the program anew, opens the dialog and uses it.
    void Use(const std::function<void()>& use) {
        bench.emplace(device, faults);
        bench->Start();
        bench->InDialog("DeviceFunction", [&](QWidget* opened) {
            dialog = opened;
            use();
        });
    }
    template <typename Control = QWidget>
    Control* Get(const std::string& name) const {
        return Find<Control>(dialog, name);
    }
    std::string Line(int line) const {
        return Get<QLabel>("lblMsg" + std::to_string(line))->text().toStdString();
    }
    bool Enabled(const char* name) const { return Get(name)->isEnabled(); }
    void Run(FunctionCode code, const std::function<void()>& atEachStep = {}) {
        Get<QListWidget>("listFunction")->setCurrentRow(code);
        bench->desktop.intrude = atEachStep;
        QTest::keyClick(dialog, Qt::Key_Return);
        bench->desktop.intrude = nullptr;
    }

    DeviceRecord device{"small", 7, 64, 16, 1};
    Simulator::FaultPlan faults;
    std::optional<WindowBench> bench;
    QPointer<QWidget> dialog;
};

TEST_F(FunctionDialog, OpensWithTheChoicesThatTheDeviceHas) {
    for (const DeviceRecord& tested :
         {device, {"no EEPROM", 7, 64, 0, 1}, {"stream", 1, 64, 0, 0}}) {
        SCOPED_TRACE(tested.Name);
        device = tested;
        Use([&] {
            EXPECT_EQ(bench->desktop.record.size(), 1U) << "the device type";
            EXPECT_EQ(Get<QListWidget>("listFunction")->currentRow(), FunctionRead);
            EXPECT_EQ(Get<QLabel>("lblProgress")->text(), "0%");
            for (int run = 0; run < 2; ++run) {  // a run leaves the choice as it was
                EXPECT_EQ(Enabled("frameOption"), device.TypeCode != 1);
                EXPECT_EQ(Enabled("chkEM"), device.EepromBytes != 0);
                for (const auto* box : dialog->findChildren<QCheckBox*>())
                    EXPECT_EQ(box->isChecked(), device.EepromBytes != 0 || box != Get("chkEM"));
                Run(FunctionVerify);
            }
        });
    }
}

TEST_F(FunctionDialog, WithoutABoardNothingCanBeRunOrIsSent) {
    faults.silentFrom = 1;
    Use([&] {
        EXPECT_FALSE(Enabled("cmdRun"));
        Run(FunctionRead);
    });
    EXPECT_EQ(bench->startRecord.back(), "box [Device Error] Communication Error! (critical)");
    EXPECT_THAT(bench->desktop.record, testing::IsEmpty());
}

TEST_F(FunctionDialog, ProgramShowsAndSaysHowFarItIs) {
    Use([&] {
        std::set<int> seen;
        Run(FunctionProgram, [&] {
            const int percent = Get<QLabel>("lblProgress")->text().chopped(1).toInt();
            seen.insert(percent);
            EXPECT_EQ(Get("shpProgress")->width(), percent * Get("shpBG")->width() / 100);
            EXPECT_EQ(QAccessible::queryAccessibleInterface(Get("shpBG"))
                          ->valueInterface()
                          ->currentValue(),
                      percent);
            EXPECT_FALSE(Enabled("cmdRun") || Enabled("cmdClose") || Enabled("frameOption"));
        });
        EXPECT_TRUE(seen.contains(87)) << "the last of eight blocks";
        EXPECT_EQ(Line(0), "Programming Program Memory...   OK!");
        EXPECT_EQ(Line(1), "Programming EEPROM...   OK!");
        EXPECT_EQ(Line(2), "Programming ID and Config...   OK!");
        EXPECT_EQ(Get<QLabel>("lblProgress")->text(), "100%");
        EXPECT_TRUE(Enabled("cmdRun") && Enabled("cmdClose") && Enabled("frameOption"));
    });
    for (int index = 0; index < 128; ++index)
        ASSERT_EQ(bench->engine.Memory().ByteAt(static_cast<std::uint32_t>(index)),
                  bench->program.image.Byte(index));
}

TEST_F(FunctionDialog, RunsAgainAtOnceAfterAFault) {
    faults.replyLength = {3, 0};  // identification is the first request
    Use([&] {
        Run(FunctionBlank);
        EXPECT_EQ(Line(0), "Blank Checking Program Memory...   Device Fault!");
        ExpectNothingCutOff(*dialog);  // with the longest text
        Run(FunctionVerify);
        EXPECT_EQ(Line(0), "Verifying Program Memory...   OK!");
        EXPECT_EQ(Line(3), "Verifying Conig Word...   OK!");
    });
}

// Whatever the user presses while a function runs, at each of its steps: the run goes on as if
// nothing had been pressed, and the windows stay.
TEST_F(FunctionDialog, NothingPressedDuringARunDisturbsIt) {
    const std::function<void()> intrusions[] = {
        [] {},
        [this] { QTest::keyClick(dialog, Qt::Key_Return); },
        [this] { Get<QPushButton>("cmdRun")->click(); },
        [this] { Get<QPushButton>("cmdClose")->click(); },
        [this] { QTest::keyClick(dialog, Qt::Key_Escape); },
        [this] { dialog->close(); },
        [this] { bench->window->close(); },
        [this] { Get<QListWidget>("listFunction")->setCurrentRow(FunctionErase); },
    };
    std::vector<std::string> undisturbed;
    for (const auto& intrude : intrusions) {
        SCOPED_TRACE(&intrude - intrusions);
        Use([&] {
            Run(FunctionProgram, intrude);
            EXPECT_TRUE(dialog->isVisible());
            EXPECT_EQ(Line(2), "Programming ID and Config...   OK!");
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
            Get<QCheckBox>(box)->setChecked(false);
        Run(FunctionRead);
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_EQ(bench->program.image.Byte(0), 0x41);
    EXPECT_TRUE(programView.isNull());
    EXPECT_FALSE(configurationView.isNull()) << "a region that was not read keeps its view";
    EXPECT_TRUE(bench->window->isEnabled());
    EXPECT_TRUE(dialog.isNull());
}

TEST_F(FunctionDialog, ReadInASeriesKeepsTheMainWindowFromInputUntilTheRunHasUnwound) {
    int stepsOffScreen = 0;
    Use([&] {
        bench->program.autoSequence.Entries[1] = FunctionRead;
        bench->program.autoSequence.Entries[2] = FunctionVerify;
        Run(FunctionAuto, [&] {
            if (dialog->isVisible())
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
