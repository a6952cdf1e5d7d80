#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>
#include <QWheelEvent>

#include "WindowBench.hpp"
#include "ui/DumpText.hpp"

namespace Tamber {
namespace {

const DeviceRecord WithEeprom{"PIC16F84A", 7, 1024, 64, 1};

class BufferViewsTest : public testing::Test {
  protected:
    explicit BufferViewsTest(const DeviceRecord& device = WithEeprom) : bench(device) {
        bench.Start();
    }

    QWidget* Form(const char* name) { return bench.Find<QWidget>(name); }
    QTextEdit* Dump(const char* form) {
        return WindowBench::Find<QTextEdit>(Form(form), "txtBuffer");
    }
    QScrollBar* Scroll() { return bench.Find<QScrollBar>("vsc"); }
    QString TopLine() { return Dump("frmBuffer")->toPlainText().section('\n', 1, 1).left(5); }
    QMdiArea* Documents() { return bench.window->findChild<QMdiArea*>(); }
    QMdiSubWindow* View(const char* form) {
        return qobject_cast<QMdiSubWindow*>(Form(form)->parentWidget());
    }

    WindowBench bench;
};

class WithoutEepromTest : public BufferViewsTest {
  protected:
    WithoutEepromTest() : BufferViewsTest({"PIC16F54", 3, 512, 0, 1}) {}
};

TEST_F(BufferViewsTest, ShowWhatTheImageHolds) {
    EXPECT_EQ(Form("frmBuffer")->windowTitle(), "Program Memory");
    EXPECT_EQ(Form("frmEEPROM")->windowTitle(), "EEPROM");
    EXPECT_EQ(Form("frmConfig")->windowTitle(), "Configuration");
    EXPECT_EQ(Dump("frmBuffer")->toPlainText().count('\n'), 16);
    EXPECT_EQ(Dump("frmEEPROM")->toPlainText().count('\n'), 4);
    EXPECT_EQ(bench.Find<QLabel>("lblCheckSum")->text(), "7C00");
    EXPECT_EQ(bench.Find<QLineEdit>("txtIDLOCS")->text(), "FFFFFFFF");
    EXPECT_EQ(bench.Find<QLineEdit>("txtConfig")->text(), "3FFF");
}

TEST_F(BufferViewsTest, StandSideBySideWithTheirClientsAsDesigned) {
    EXPECT_EQ(Form("frmBuffer")->size(), QSize(528, 262));
    EXPECT_EQ(Form("frmEEPROM")->size(), QSize(652, 259));
    EXPECT_EQ(Form("frmConfig")->size(), QSize(175, 64));
    const QRect home = View("frmBuffer")->geometry();
    EXPECT_EQ(home.topLeft(), QPoint(0, 0));
    EXPECT_EQ(View("frmConfig")->pos(), QPoint(home.width(), 0));
    EXPECT_EQ(View("frmEEPROM")->pos(), QPoint(0, home.height()));
    EXPECT_EQ(Documents()->activeSubWindow(), View("frmBuffer"));
    for (const QMdiSubWindow* view : Documents()->subWindowList())
        EXPECT_TRUE(Documents()->viewport()->rect().contains(view->geometry()))
            << view->windowTitle().toStdString() << " is cut off";
}

TEST_F(BufferViewsTest, EveryLineOfADumpIsOnShow) {
    bench.program.image.ClearEeprom();
    for (const char* form : {"frmBuffer", "frmEEPROM"}) {
        const QTextEdit* dump = Dump(form);
        EXPECT_LE(dump->document()->size().height(), dump->viewport()->height());
        EXPECT_LE(dump->document()->idealWidth(),
                  dump->viewport()->width() - (dump == Dump("frmBuffer") ? Scroll()->width() : 0));
    }
}

TEST_F(BufferViewsTest, KeysAndWheelScroll) {
    struct Case {
        Qt::Key key;
        const char* top;
    };
    QTextEdit* text = Dump("frmBuffer");
    for (const auto& [key, top] :
         {Case{Qt::Key_Down, "0008="}, Case{Qt::Key_PageDown, "0088="}, Case{Qt::Key_Up, "0080="},
          Case{Qt::Key_PageUp, "0000="}, Case{Qt::Key_End, "0380="}, Case{Qt::Key_Down, "0380="},
          Case{Qt::Key_Home, "0000="}}) {
        QTest::keyClick(text, key);
        EXPECT_EQ(TopLine(), top);
        EXPECT_EQ(bench.Find<QLabel>("lblAddress")->text() + "=", top);
    }
    QWheelEvent wheel({50, 50}, text->viewport()->mapToGlobal(QPointF(50, 50)), {}, {0, -120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(text->viewport(), &wheel);
    EXPECT_GT(Scroll()->value(), 0);
    EXPECT_EQ(Scroll()->maximum(), 112);
}

TEST_F(BufferViewsTest, TextFollowsTheThumbOnlyWhenItIsLetGo) {
    Scroll()->setSliderDown(true);
    Scroll()->setSliderPosition(40);
    EXPECT_EQ(TopLine(), "0000=");
    Scroll()->setSliderDown(false);
    EXPECT_EQ(TopLine(), "0140=");
}

TEST_F(BufferViewsTest, TextCanBeSelectedAndCopiedButNotChanged) {
    QTextEdit* text = Dump("frmBuffer");
    const QString before = text->toPlainText();
    QTest::keyClicks(text, "zzz");
    QTest::keyClick(text, Qt::Key_Delete);
    EXPECT_EQ(text->toPlainText(), before);
    QTest::keyClick(text, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(text, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), before);
}

TEST_F(BufferViewsTest, ViewBringsForwardWithoutRebuilding) {
    Scroll()->setValue(5);
    View("frmBuffer")->move(30, 40);
    bench.program.image.SetByte(2 * 8 * 5, 0x00);
    Documents()->setActiveSubWindow(View("frmEEPROM"));
    bench.Choose("BufferView");
    EXPECT_EQ(Documents()->activeSubWindow(), View("frmBuffer"));
    EXPECT_EQ(View("frmBuffer")->pos(), QPoint(30, 40));
    EXPECT_EQ(TopLine(), "0028=");
    EXPECT_FALSE(Dump("frmBuffer")->toPlainText().contains("3F00"));
}

TEST_F(BufferViewsTest, ClosedViewOpensAgainAtItsHomeWithTheTextOfTheDay) {
    Scroll()->setValue(5);
    View("frmBuffer")->move(30, 40);
    View("frmBuffer")->close();
    Settle();
    bench.program.image.SetByte(0, 0x00);
    bench.Choose("BufferView");
    EXPECT_EQ(View("frmBuffer")->pos(), QPoint(0, 0));
    EXPECT_EQ(TopLine(), "0000=");
    EXPECT_TRUE(Dump("frmBuffer")->toPlainText().contains("0000=3F00"));
}

TEST_F(BufferViewsTest, SmallerViewsFollowWhereTheProgramViewStands) {
    View("frmBuffer")->move(20, 30);
    const QRect program = View("frmBuffer")->geometry();
    bench.Choose("BufferClearDM");
    bench.Choose("BufferClearConfig");
    EXPECT_EQ(View("frmEEPROM")->pos(), QPoint(0, program.top() + program.height()));
    EXPECT_EQ(View("frmConfig")->pos(), QPoint(program.left() + program.width(), 0));
}

TEST_F(WithoutEepromTest, HasNoEepromView) {
    EXPECT_EQ(Form("frmEEPROM"), nullptr);
    EXPECT_EQ(Documents()->subWindowList().size(), 2);
    bench.Choose("BufferView");
    bench.Choose("BufferClearAll");
    EXPECT_EQ(Documents()->subWindowList().size(), 2);
}

}  // namespace
}  // namespace Tamber
