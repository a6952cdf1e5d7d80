#include "WindowBench.hpp"
#include "platform/qt/UserMemory.hpp"
#include "ui/frmGoTo.hpp"

namespace Tamber {
namespace {

struct DumpWork : testing::Test, WindowBench {
    QMdiSubWindow* View(const char* form) {
        return qobject_cast<QMdiSubWindow*>(Find(form)->parentWidget());
    }
    QStringList Rows() { return Dump()->toPlainText().split('\n').mid(1); }
    void Key(Qt::Key key, Qt::KeyboardModifiers with) {
        QTest::keyClick(QApplication::focusWidget(), key, with);
        Settle();
    }
    // The sizes of the letters; everything else keeps its proportion to them.
    std::vector<int> Letters() {
        EXPECT_EQ(View("frmEEPROM")->y(), View("frmBuffer")->height());
        EXPECT_EQ(View("frmConfig")->x(), View("frmBuffer")->width());
        EXPECT_EQ(Rows().size(), 16);
        for (const char* form : {"frmBuffer", "frmEEPROM", "frmConfig"})
            ExpectNothingCutOff(*Find(form));
        return {Dump()->font().pixelSize(),
                View("frmEEPROM")->findChild<QTextEdit*>()->font().pixelSize(),
                Find("txtConfig")->font().pixelSize()};
    }
    QScrollBar* vsc = Find<QScrollBar>("vsc");
};

TEST_F(DumpWork, LettersOfAllViewsChangeAndAreRemembered) {
    EXPECT_EQ(Letters(), std::vector({13, 13, 13}));
    Key(Qt::Key_Plus, Qt::ControlModifier);
    Key(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(Letters(), std::vector({16, 16, 16}));
    for (QWidget* below :
         {static_cast<QWidget*>(Dump()->viewport()),
          View("frmEEPROM")->findChild<QTextEdit*>()->viewport(), Find("txtConfig")}) {
        QWheelEvent wheel({5, 5}, below->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&wheel);  // or it would not go on to the parents
        qApp->notify(below, &wheel);
    }
    EXPECT_EQ(vsc->value(), 0) << "the wheel does not scroll as well";
    EXPECT_EQ(Letters(), std::vector({12, 12, 12}));
    Choose("BufferClearAll");
    EXPECT_EQ(Letters(), std::vector({12, 12, 12}));
    EXPECT_EQ(UserMemory().value("views/letters").toInt(), 90);
    Key(Qt::Key_Minus, Qt::ControlModifier);
    Key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Letters(), std::vector({13, 13, 13}));
}

TEST_F(DumpWork, ViewShowsAsManyRowsAsItHasRoomForAndScrollsTheRest) {
    EXPECT_EQ(vsc->maximum(), 128 - 16);
    const QSize designed = View("frmBuffer")->size();
    vsc->setValue(112);
    View("frmBuffer")->resize(designed + QSize(0, 51 + 5 * 14));  // the labels come first
    Settle();
    EXPECT_EQ(Rows().size(), 21);
    EXPECT_EQ(Rows().back().left(4), "03F8");
    EXPECT_EQ(vsc->maximum(), 128 - 21);
    for (const char* label : {"lblAddress", "lblCheckSum"})
        EXPECT_TRUE(Find("frmBuffer")->rect().contains(Find(label)->geometry())) << label;
    View("frmBuffer")->showMaximized();
    Settle();
    EXPECT_GT(Rows().size(), 21);
    ExpectNothingCutOff(*Find("frmBuffer"));
    View("frmBuffer")->showNormal();
    View("frmBuffer")->resize(designed - QSize(200, 100));
    Settle();
    EXPECT_LT(Rows().size(), 16);
    EXPECT_GT(Dump()->horizontalScrollBar()->maximum(), 0);
    EXPECT_TRUE(Dump()->horizontalScrollBar()->isVisible());
    EXPECT_TRUE(Find("frmBuffer")->rect().contains(vsc->geometry()));
    for (const QWidget* part : {Dump()->viewport(), Dump()->horizontalScrollBar()->parentWidget()})
        EXPECT_FALSE(vsc->geometry().intersects(part->geometry().translated(Dump()->pos())));
    View("frmConfig")->resize(120, 60);
    Settle();
    for (const auto* bar : Find("frmConfig")->findChildren<QScrollBar*>())
        EXPECT_TRUE(bar->isVisible());
    View("frmBuffer")->resize(designed);
    Settle();
    EXPECT_EQ(Rows().size(), 16);
}

TEST(DumpOfASmallDevice, ShowsSixteenRowsHoweverLargeItIs) {
    WindowBench bench({"small", 7, 64, 0, 1});
    qobject_cast<QMdiSubWindow*>(bench.Find("frmBuffer")->parentWidget())->showMaximized();
    Settle();
    EXPECT_EQ(bench.Dump()->toPlainText().count('\n'), 16);
}

TEST_F(DumpWork, GoesToAnAddressOrSaysWhichOnesThereAre) {
    const auto goTo = [&](const QString& text) {
        QTimer::singleShot(0, qApp, [&] {
            dialog = QApplication::activeModalWidget();
            Settle();
            QTest::keyClicks(dialog->focusWidget(), "400");
            Press(Qt::Key_Return);
            EXPECT_EQ(Find<QLabel>("lblMsg")->text(), "The address must be from 0000 to 03FF.");
            QTest::keyClicks(dialog->focusWidget(), text);
            Press(Qt::Key_Return);
        });
        Key(Qt::Key_G, Qt::ControlModifier);
        return Dump()->textCursor();
    };
    program.image.SetByte(2 * 0x1A3, 0x34);
    EXPECT_EQ(goTo("1a3").selectedText(), "3F34");
    EXPECT_EQ(Rows()[0].left(4), "01A0");
    EXPECT_EQ(goTo("1A7").blockNumber(), 1) << "what is on show stays";
    EXPECT_EQ(goTo("0x3ff").blockNumber(), 16);
    EXPECT_EQ(QApplication::focusWidget(), Dump());
    for (const auto& [text, address] : {std::pair{" 3fFh ", 0x3FF},
                                        {"0", 0},
                                        {"", -1},
                                        {"400", -1},
                                        {"-1", -1},
                                        {"12G", -1},
                                        {"+1", -1},
                                        {"0x0x1", -1},
                                        {"100000001", -1}})
        EXPECT_EQ(WordAddress(text, 0x3FF).value_or(-1), address) << text;
}

TEST_F(DumpWork, ContextMenuCopiesSelectionViewOrWholeMemory) {
    const auto copied = [](QTextEdit* box, int entry) {
        EXPECT_EQ(box->contextMenuPolicy(), Qt::ActionsContextMenu);
        box->actions()[entry]->trigger();
        return QApplication::clipboard()->text();
    };
    auto* eeprom = View("frmEEPROM")->findChild<QTextEdit*>();
    EXPECT_FALSE(Dump()->actions()[0]->isEnabled()) << "nothing is selected";
    Dump()->find("3FFF 3FFF");
    EXPECT_EQ(copied(Dump(), 0), "3FFF 3FFF");
    vsc->setValue(3);
    EXPECT_EQ(copied(Dump(), 1), Dump()->toPlainText());
    const QStringList whole = copied(Dump(), 2).split('\n');
    EXPECT_EQ(whole.size(), 1 + 128);
    EXPECT_TRUE(whole[128].startsWith("03F8=3FFF "));
    EXPECT_EQ(copied(eeprom, 2), eeprom->toPlainText());
}

TEST_F(DumpWork, ViewsHaveTheirSystemMenuByKeysWhileTheDumpHasTheFocus) {
    const auto choose = [&](Qt::Key item) {
        QWidget* menu = nullptr;
        QTimer::singleShot(0, qApp, [&] {
            if ((menu = QApplication::activePopupWidget()))
                QTest::keyClick(menu, item);
        });
        Key(Qt::Key_Minus, Qt::AltModifier);
        Settle();
        EXPECT_NE(menu, nullptr);
    };
    ASSERT_EQ(QApplication::focusWidget(), Dump());
    choose(Qt::Key_X);
    EXPECT_TRUE(View("frmBuffer")->isMaximized());
    choose(Qt::Key_R);
    EXPECT_FALSE(View("frmBuffer")->isMaximized());
    choose(Qt::Key_M);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Return})
        QTest::keyClick(View("frmBuffer"), key);
    EXPECT_GT(View("frmBuffer")->y(), 0);
}

}  // namespace
}  // namespace Tamber
