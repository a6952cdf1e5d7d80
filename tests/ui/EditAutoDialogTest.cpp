#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <filesystem>

#include "StartUp.hpp"
#include "WindowBench.hpp"
#include "core/TextFile.hpp"

namespace Tamber {
namespace {

const DeviceRecord ShortDevice{"PIC16F84A", 7, 64, 16, 1};

class EditAutoDialogTest : public testing::Test {
  protected:
    EditAutoDialogTest() { bench.Start(); }

    void SetSeries(std::initializer_list<std::int16_t> codes) {
        AutoSequence& series = bench.program.autoSequence;
        series = {};
        for (const std::int16_t code : codes)
            series.Entries[static_cast<std::size_t>(++series.AutoCount)] = code;
    }

    // Opens the dialog and uses it; what is asked of it below refers to it.
    void InDialog(const std::function<void()>& use) {
        bench.InDialog("OptionsEditAuto", [&](QWidget* widget) {
            dialog = widget;
            use();
        });
    }
    QListWidget* List(const char* name) { return WindowBench::Find<QListWidget>(dialog, name); }
    QPushButton* Button(const char* name) { return WindowBench::Find<QPushButton>(dialog, name); }
    QStringList Rows(const char* name) {
        QStringList rows;
        for (int row = 0; row < List(name)->count(); ++row)
            rows << List(name)->item(row)->text();
        return rows;
    }
    void Add(int row) {
        List("lstIn")->setCurrentRow(row);
        Button("cmdMoveRight")->click();
    }
    std::string File() { return ReadTextFile(AutoSequenceFile(bench.program)).value(); }

    WindowBench bench{ShortDevice};
    QWidget* dialog = nullptr;
};

TEST_F(EditAutoDialogTest, EmptySeries) {
    SetSeries({});
    InDialog([&] {
        EXPECT_EQ(dialog->windowTitle(), "Edit Auto");
        EXPECT_EQ(Rows("lstIn"), QStringList({"Erase", "Blank", "Program", "Verify"}));
        EXPECT_EQ(List("lstIn")->currentRow(), 0);
        EXPECT_TRUE(Rows("lstOut").isEmpty());
        EXPECT_FALSE(Button("cmdMoveLeft")->isEnabled());
        EXPECT_FALSE(Button("cmdMoveLeftAll")->isEnabled());
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(File(), "0\r\n");
}

TEST_F(EditAutoDialogTest, RowsAreAddedAndTakenAway) {
    SetSeries({});
    InDialog([&] {
        Add(0);
        Add(0);
        Add(3);
        EXPECT_EQ(Rows("lstOut"), QStringList({"Erase", "Erase", "Verify"}));
        EXPECT_EQ(List("lstIn")->count(), 4);
        List("lstOut")->clearSelection();
        Button("cmdMoveLeft")->click();
        EXPECT_EQ(List("lstOut")->count(), 3) << "no row was selected";
        List("lstOut")->setCurrentRow(1);
        Button("cmdMoveLeft")->click();
        Button("cmdOk")->click();
    });
    EXPECT_EQ(File(), "2\r\n1\r\n4\r\n");
    EXPECT_EQ(bench.program.autoSequence.AutoCount, 2);
    InDialog([&] {
        Button("cmdMoveLeftAll")->click();
        EXPECT_TRUE(Rows("lstOut").isEmpty());
        EXPECT_FALSE(Button("cmdMoveLeft")->isEnabled());
        EXPECT_FALSE(Button("cmdMoveLeftAll")->isEnabled());
        Add(1);
        EXPECT_TRUE(Button("cmdMoveLeftAll")->isEnabled());
        Button("cmdOk")->click();
    });
    EXPECT_EQ(File(), "1\r\n2\r\n");
}

TEST_F(EditAutoDialogTest, CancelKeepsTheStoredSeries) {
    SetSeries({1, 3});
    const std::string before = File();
    for (int way = 0; way < 3; ++way) {
        InDialog([&] {
            EXPECT_EQ(Rows("lstOut"), QStringList({"Erase", "Program"}));
            Add(2);
            if (way == 0)
                Button("cmdCancel")->click();
            else if (way == 1)
                QTest::keyClick(dialog, Qt::Key_Escape);
            else
                dialog->close();
        });
        EXPECT_EQ(bench.program.autoSequence.AutoCount, 2);
        EXPECT_EQ(File(), before);
    }
}

TEST_F(EditAutoDialogTest, HoldsNoMoreThanTwentyEntries) {
    SetSeries({});
    InDialog([&] {
        for (int entry = 0; entry < 25; ++entry)
            Add(entry % 4);
        EXPECT_EQ(List("lstOut")->count(), 20);
        EXPECT_FALSE(Button("cmdMoveRight")->isEnabled());
        List("lstOut")->setCurrentRow(0);
        Button("cmdMoveLeft")->click();
        EXPECT_TRUE(Button("cmdMoveRight")->isEnabled());
        Button("cmdOk")->click();
    });
    EXPECT_EQ(bench.program.autoSequence.AutoCount, 19);
}

TEST_F(EditAutoDialogTest, SeriesWrittenByHand) {
    SetSeries({0, 7, 4});  // Read is kept; 7 has no row but counts
    InDialog([&] {
        EXPECT_EQ(Rows("lstOut"), QStringList({"Read", "Verify"}));
        Button("cmdOk")->click();
    });
    EXPECT_EQ(File(), "3\r\n0\r\n4\r\n4\r\n") << "the entry without a row keeps the code it had";
}

TEST_F(EditAutoDialogTest, FileThatCannotBeWrittenIsReported) {
    SetSeries({});
    bench.desktop.record.clear();
    std::filesystem::remove_all(bench.program.AppPath);
    InDialog([&] {
        Add(0);
        Button("cmdOk")->click();
    });
    ASSERT_EQ(bench.desktop.record.size(), 1U);
    EXPECT_NE(bench.desktop.record[0].find("auto.cfg"), std::string::npos);
    EXPECT_EQ(bench.program.autoSequence.AutoCount, 1);
}

}  // namespace
}  // namespace Tamber
