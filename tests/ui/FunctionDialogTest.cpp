#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "WindowBench.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;

const DeviceRecord Small{"small", 7, 64, 16, 1};

// The function dialog as a user has it before him.
struct Dialog {
    explicit Dialog(QWidget* dialog) : widget(dialog) {}

    template <typename Control>
    Control* Find(const char* name) const {
        return WindowBench::Find<Control>(widget, name);
    }
    QString Line(int line) const {
        return Find<QLabel>(("lblMsg" + std::to_string(line)).c_str())->text();
    }
    void Select(FunctionCode code) const { Find<QListWidget>("listFunction")->setCurrentRow(code); }
    void PressRun() const { QTest::keyClick(widget, Qt::Key_Return); }
    bool RunEnabled() const { return Find<QPushButton>("cmdRun")->isEnabled(); }

    QWidget* widget;
};

std::vector<std::string> Sent(const std::vector<std::string>& record) {
    std::vector<std::string> sent;
    for (const std::string& entry : record)
        if (entry.starts_with("> "))
            sent.push_back(entry);
    return sent;
}

TEST(FunctionDialog, AsItOpens) {
    WindowBench bench(Small);
    bench.Start();
    bench.desktop.record.clear();
    bench.InDialog("DeviceFunction", [&](QWidget* widget) {
        const Dialog dialog(widget);
        EXPECT_EQ(widget->windowTitle(), "Function");
        EXPECT_THAT(bench.desktop.record, ElementsAre("> 01 67"));
        const auto* list = dialog.Find<QListWidget>("listFunction");
        QStringList rows;
        for (int row = 0; row < list->count(); ++row)
            rows << list->item(row)->text();
        EXPECT_EQ(rows, QStringList({"Read", "Erase", "Blank", "Program", "Verify", "Auto"}));
        EXPECT_EQ(list->currentRow(), 0);
        for (const char* box : {"chkPM", "chkEM", "chkID", "chkCW"}) {
            EXPECT_TRUE(dialog.Find<QCheckBox>(box)->isChecked());
            EXPECT_TRUE(dialog.Find<QCheckBox>(box)->isEnabled());
        }
        EXPECT_TRUE(dialog.RunEnabled());
        EXPECT_EQ(dialog.Find<QLabel>("lblProgress")->text(), "0%");
        EXPECT_EQ(dialog.Find<QWidget>("shpProgress")->width(), 0);
    });
}

TEST(FunctionDialog, DevicesWithoutAChoiceOfRegions) {
    {
        WindowBench bench({"no EEPROM", 7, 64, 0, 1});
        bench.Start();
        bench.InDialog("DeviceFunction", [](QWidget* widget) {
            const Dialog dialog(widget);
            for (int run = 0; run < 2; ++run) {
                EXPECT_FALSE(dialog.Find<QCheckBox>("chkEM")->isChecked());
                EXPECT_FALSE(dialog.Find<QCheckBox>("chkEM")->isEnabled());
                EXPECT_TRUE(dialog.Find<QGroupBox>("frameOption")->isEnabled());
                dialog.Select(FunctionVerify);
                dialog.PressRun();
            }
        });
    }
    WindowBench bench({"stream", 1, 64, 0, 0});
    bench.Start();
    bench.InDialog("DeviceFunction", [](QWidget* widget) {
        const Dialog dialog(widget);
        for (int run = 0; run < 2; ++run) {
            EXPECT_FALSE(dialog.Find<QGroupBox>("frameOption")->isEnabled());
            dialog.Select(FunctionVerify);
            dialog.PressRun();
        }
    });
}

TEST(FunctionDialog, WithoutABoardNothingCanBeRunOrIsSent) {
    Simulator::FaultPlan faults;
    faults.SilentFrom = 1;
    WindowBench bench(Small, faults);
    bench.Start();
    bench.desktop.record.clear();
    bench.InDialog("DeviceFunction", [&](QWidget* widget) {
        const Dialog dialog(widget);
        EXPECT_FALSE(dialog.RunEnabled());
        dialog.PressRun();
        EXPECT_THAT(bench.desktop.record, testing::IsEmpty());
    });
}

TEST(FunctionDialog, ProgramShowsLinesBarAndPercentage) {
    WindowBench bench(Small);
    bench.Start();
    bench.InDialog("DeviceFunction", [&](QWidget* widget) {
        const Dialog dialog(widget);
        dialog.Select(FunctionProgram);
        int seen = 0;
        bench.desktop.intrude = [&] {
            const int percent = dialog.Find<QLabel>("lblProgress")->text().chopped(1).toInt();
            const float whole = static_cast<float>(dialog.Find<QWidget>("shpBG")->width());
            EXPECT_EQ(dialog.Find<QWidget>("shpProgress")->width(),
                      static_cast<int>(static_cast<float>(percent) * whole / 100.0F));
            seen = std::max(seen, percent == 100 ? 0 : percent);
            EXPECT_FALSE(dialog.RunEnabled());
            EXPECT_FALSE(dialog.Find<QPushButton>("cmdClose")->isEnabled());
            EXPECT_FALSE(dialog.Find<QGroupBox>("frameOption")->isEnabled());
        };
        dialog.PressRun();
        bench.desktop.intrude = nullptr;
        EXPECT_EQ(seen, 87) << "the last of eight blocks";
        EXPECT_EQ(dialog.Line(0), "Programming Program Memory...   OK!");
        EXPECT_EQ(dialog.Line(1), "Programming EEPROM...   OK!");
        EXPECT_EQ(dialog.Line(2), "Programming ID and Config...   OK!");
        EXPECT_EQ(dialog.Find<QLabel>("lblProgress")->text(), "100%");
        EXPECT_TRUE(dialog.RunEnabled());
        EXPECT_TRUE(dialog.Find<QGroupBox>("frameOption")->isEnabled());
    });
    for (int index = 0; index < 128; ++index)
        ASSERT_EQ(bench.engine.Memory().ByteAt(static_cast<std::uint32_t>(index)),
                  bench.program.image.Byte(index));
}

TEST(FunctionDialog, SecondRunAtOnceAfterAFault) {
    Simulator::FaultPlan faults;
    faults.ReplyLength = {3, 0};  // identification is the first request
    WindowBench bench(Small, faults);
    bench.Start();
    bench.InDialog("DeviceFunction", [&](QWidget* widget) {
        const Dialog dialog(widget);
        dialog.Select(FunctionVerify);
        dialog.PressRun();
        EXPECT_EQ(dialog.Line(0), "Verifying Program Memory...   Device Fault!");
        EXPECT_TRUE(dialog.RunEnabled());
        dialog.PressRun();
        EXPECT_EQ(dialog.Line(0), "Verifying Program Memory...   OK!");
        EXPECT_EQ(dialog.Line(3), "Verifying Conig Word...   OK!");
    });
}

// Whatever the user presses while a function runs, at each of its steps: the run goes on as if
// nothing had been pressed, and the windows stay.
TEST(FunctionDialog, NothingPressedDuringARunDisturbsIt) {
    const std::pair<const char*, std::function<void(WindowBench&, const Dialog&)>> intrusions[] = {
        {"nothing", [](WindowBench&, const Dialog&) {}},
        {"run",
         [](WindowBench&, const Dialog& dialog) {
             dialog.Find<QPushButton>("cmdRun")->click();
             dialog.PressRun();
         }},
        {"close",
         [](WindowBench&, const Dialog& dialog) { dialog.Find<QPushButton>("cmdClose")->click(); }},
        {"escape", [](WindowBench&,
                      const Dialog& dialog) { QTest::keyClick(dialog.widget, Qt::Key_Escape); }},
        {"close box", [](WindowBench&, const Dialog& dialog) { dialog.widget->close(); }},
        {"close main window", [](WindowBench& bench, const Dialog&) { bench.window->close(); }},
        {"another function",
         [](WindowBench&, const Dialog& dialog) { dialog.Select(FunctionErase); }},
    };
    std::vector<std::string> undisturbed;
    for (const auto& [name, intrude] : intrusions) {
        WindowBench bench(Small);
        bench.Start();
        bench.InDialog("DeviceFunction", [&](QWidget* widget) {
            const Dialog dialog(widget);
            dialog.Select(FunctionProgram);
            bench.desktop.record.clear();
            bench.desktop.intrude = [&] { intrude(bench, dialog); };
            dialog.PressRun();
            bench.desktop.intrude = nullptr;
            EXPECT_TRUE(widget->isVisible()) << name;
            EXPECT_EQ(dialog.Line(2), "Programming ID and Config...   OK!") << name;
        });
        EXPECT_TRUE(bench.window->isVisible()) << name;
        if (undisturbed.empty())
            undisturbed = bench.desktop.record;
        EXPECT_EQ(bench.desktop.record, undisturbed) << name;
    }
}

TEST(FunctionDialog, ClosesByButtonEscapeAndCloseBox) {
    const std::function<void(const Dialog&)> ways[] = {
        [](const Dialog& dialog) { dialog.Find<QPushButton>("cmdClose")->click(); },
        [](const Dialog& dialog) { QTest::keyClick(dialog.widget, Qt::Key_Escape); },
        [](const Dialog& dialog) { dialog.widget->close(); },
    };
    for (const auto& close : ways) {
        WindowBench bench(Small);
        bench.Start();
        bench.InDialog("DeviceFunction", [&](QWidget* widget) {
            close(Dialog(widget));
            EXPECT_FALSE(widget->isVisible());
        });
        EXPECT_EQ(bench.Find<QWidget>("frmFunction"), nullptr);
    }
}

TEST(FunctionDialog, ReadTakesItOffTheScreenAndReopensTheViews) {
    WindowBench bench(Small);
    bench.engine.Memory().SetByte(0, 0x41);
    bench.Start();
    const QPointer<QWidget> configuration = bench.Find<QWidget>("frmConfig");
    bench.InDialog("DeviceFunction", [&](QWidget* widget) {
        const Dialog dialog(widget);
        dialog.Find<QCheckBox>("chkID")->setChecked(false);
        dialog.Find<QCheckBox>("chkCW")->setChecked(false);
        dialog.PressRun();
        EXPECT_FALSE(widget->isVisible());
    });
    EXPECT_EQ(bench.program.image.Byte(0), 0x41);
    EXPECT_FALSE(configuration.isNull()) << "a region that was not read keeps its view";
    EXPECT_TRUE(bench.window->isEnabled());
    EXPECT_EQ(bench.Find<QWidget>("frmFunction"), nullptr);
}

TEST(FunctionDialog, ReadInASeriesKeepsTheMainWindowFromInputUntilTheRunHasUnwound) {
    WindowBench bench(Small);
    bench.Start();
    bench.program.autoSequence.AutoCount = 2;
    bench.program.autoSequence.Entries[1] = FunctionRead;
    bench.program.autoSequence.Entries[2] = FunctionVerify;
    int stepsOffScreen = 0;
    bench.InDialog("DeviceFunction", [&](QWidget* widget) {
        const Dialog dialog(widget);
        dialog.Select(FunctionAuto);
        bench.desktop.record.clear();
        bench.desktop.intrude = [&] {
            if (widget->isVisible())
                return;
            ++stepsOffScreen;
            EXPECT_FALSE(bench.window->isEnabled());
            bench.window->close();
            EXPECT_TRUE(bench.window->isVisible());
        };
        dialog.PressRun();
        bench.desktop.intrude = nullptr;
    });
    EXPECT_GT(stepsOffScreen, 8) << "the Verify ran on";
    EXPECT_EQ(std::ranges::count(Sent(bench.desktop.record), "> 01 52"), 22);
    EXPECT_TRUE(bench.window->isEnabled());
}

TEST(FunctionDialog, EveryMessageFitsItsLine) {
    WindowBench bench(Small);
    bench.Start();
    bench.InDialog("DeviceFunction", [&](QWidget* widget) {
        const Dialog dialog(widget);
        for (const char* text : {"Blank Checking Program Memory...   Device Fault!",
                                 "Programming Program Memory...   Device Fault!"}) {
            auto* line = dialog.Find<QLabel>("lblMsg0");
            ShowFitted(*line, text);
            EXPECT_LE(QFontMetrics(line->font()).horizontalAdvance(text), line->width()) << text;
        }
    });
}

}  // namespace
}  // namespace Tamber
