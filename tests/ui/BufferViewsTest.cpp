#include "WindowBench.hpp"
#include "ui/DumpText.hpp"

namespace Tamber {
namespace {

TEST(DumpText, ProgramRows) {
    EXPECT_EQ(ProgramDumpHeader(), "ADDR                   HEX                    ASCII\r\n");
    MemoryImage image;
    image.ClearProgramMemory(7);
    image.SetByte(1, 0x28);
    const std::uint8_t lowBytes[] = {0x41, 0, 0x1F, 0x20, 0x7E, 0x7F, 0x80, 0xFF};
    for (int word = 0; word < 8; ++word)
        image.SetByte(2 * word, lowBytes[word]);
    const std::string dump = ProgramDump(image, 0);
    EXPECT_EQ(dump.substr(0, 66),
              "0000=2841 3F00 3F1F 3F20 3F7E 3F7F 3F80 3FFF A.. ~\x7F..\r\n"
              "0008=3FFF 3");
    EXPECT_EQ(ProgramDump(image, 1020).size(), 4U * 55) << "the region ends there";
    for (const auto& [words, topRow] :
         {std::pair{8192, 1008}, {128, 0}, {140, 2}, {-1, 0}, {100'000, 1008}})
        EXPECT_EQ(ProgramDumpTopRowMax(words), topRow) << words;
}

TEST(DumpText, EepromRowsSkipTheCompanionBytes) {
    EXPECT_EQ(EepromDumpHeader(),
              "ADDR                       HEX                            ASCII\r\n");
    MemoryImage image;
    image.ClearEeprom();
    for (const auto& [index, byte] :
         {std::pair{0x4200, 'H'}, {0x4201, 'x'}, {0x421E, 'i'}, {0x4220, '\x05'}})
        image.SetByte(index, static_cast<std::uint8_t>(byte));
    EXPECT_EQ(EepromDump(image, 32),
              "0000=48 FF FF FF FF FF FF FF FF FF FF FF FF FF FF 69 H..............i\r\n"
              "0010=05 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF ................\r\n");
    EXPECT_EQ(EepromDump(image, -16), "");
    EXPECT_EQ(EepromDump(image, 32'000).size(), 16U * 71) << "the region has no more";
}

struct BufferViewsTest : testing::Test, WindowBench {
    std::string TopLine() {
        return Dump()->toPlainText().section('\n', 1, 1).left(9).toStdString();
    }
    QWidget* View(const char* form) { return Find(form)->parentWidget(); }

    QMdiArea* documents = window->findChild<QMdiArea*>();
};

TEST_F(BufferViewsTest, ShowWhatTheImageHoldsSideBySide) {
    EXPECT_EQ(Dump()->toPlainText().count('\n'), 16);
    EXPECT_EQ(View("frmEEPROM")->findChild<QTextEdit*>()->toPlainText().count('\n'), 4);
    EXPECT_LE(Dump()->document()->size().height(), Dump()->viewport()->height());
    EXPECT_EQ(Find<QLabel>("lblCheckSum")->text(), "7C00");
    EXPECT_EQ(Find<QLineEdit>("txtIDLOCS")->text(), "FFFFFFFF");
    EXPECT_EQ(Find<QLineEdit>("txtConfig")->text(), "3FFF");
    EXPECT_EQ(View("frmBuffer")->pos(), QPoint(0, 0));
    EXPECT_EQ(documents->activeSubWindow(), View("frmBuffer"));
    for (const QMdiSubWindow* view : documents->subWindowList())
        EXPECT_TRUE(documents->viewport()->rect().contains(view->geometry()));
    for (const int offset : {0, 20}) {  // the smaller views follow where the first one stands
        View("frmBuffer")->move(offset, offset);
        Choose("BufferClearDM");
        Choose("BufferClearConfig");
        const QRect first = View("frmBuffer")->geometry();
        EXPECT_EQ(View("frmEEPROM")->pos(), QPoint(0, first.bottom() + 1));
        EXPECT_EQ(View("frmConfig")->pos(), QPoint(first.right() + 1, 0));
    }
}

TEST_F(BufferViewsTest, DumpScrollsAndIsCopiedButNotChanged) {
    const QString before = Dump()->toPlainText();
    QTest::keyClicks(Dump(), "zzz");
    QTest::keyClick(Dump(), Qt::Key_Delete);
    QTest::keyClick(Dump(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Dump(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), before);
    for (const auto& [key, top] : {std::pair{Qt::Key_Down, "0008=3FFF"},
                                   {Qt::Key_PageDown, "0088=3FFF"},
                                   {Qt::Key_Up, "0080=3FFF"},
                                   {Qt::Key_PageUp, "0000=3FFF"},
                                   {Qt::Key_End, "0380=3FFF"},
                                   {Qt::Key_Down, "0380=3FFF"},
                                   {Qt::Key_Home, "0000=3FFF"}}) {
        QTest::keyClick(Dump(), key);
        EXPECT_EQ(TopLine(), top);
        EXPECT_EQ(Find<QLabel>("lblAddress")->text().toStdString(), TopLine().substr(0, 4));
    }
    QWheelEvent wheel({50, 50}, Dump()->mapToGlobal(QPointF(50, 50)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(Dump()->viewport(), &wheel);
    const std::string wheeled = TopLine();
    EXPECT_NE(wheeled, "0000=3FFF");
    auto* scroll = Find<QScrollBar>("vsc");
    scroll->setSliderDown(true);
    scroll->setSliderPosition(40);
    EXPECT_EQ(TopLine(), wheeled) << "the text follows when the thumb is let go";
    scroll->setSliderDown(false);
    EXPECT_EQ(TopLine(), "0140=3FFF");
}

// An open view is brought to the front as it was; a closed one is made anew, at its home.
TEST_F(BufferViewsTest, ViewOpensWhatIsClosedAndNothingElse) {
    View("frmBuffer")->move(30, 40);
    program.image.SetByte(0, 0x00);
    View("frmEEPROM")->setFocus();
    Choose("BufferView");
    EXPECT_EQ(documents->activeSubWindow(), View("frmBuffer"));
    EXPECT_EQ(View("frmBuffer")->pos(), QPoint(30, 40));
    EXPECT_EQ(TopLine(), "0000=3FFF");
    View("frmBuffer")->close();
    Settle();
    Choose("BufferView");
    EXPECT_EQ(View("frmBuffer")->pos(), QPoint(0, 0));
    EXPECT_EQ(TopLine(), "0000=3F00");
}

}  // namespace
}  // namespace Tamber
