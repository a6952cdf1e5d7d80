#include "WindowBench.hpp"
#include "ui/ManualWindow.hpp"

namespace Tamber {
namespace {

QWidget* ManualOnScreen() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == "ManualWindow" && window->isVisible())
            return window;
    return nullptr;
}

TEST(Help, StartsTheViewerAndShowsTheManualWhileTheMainWindowIsThereWhenThatFails) {
    WindowBench bench;
    QTest::keyClick(bench.window.get(), Qt::Key_F1);
    EXPECT_THAT(bench.desktop.record, testing::ElementsAre("start winhlp32.exe TAMBER.HLP"));
    EXPECT_EQ(ManualOnScreen(), nullptr);
    const auto openManual = [&] {
        QTest::keyClick(bench.window.get(), Qt::Key_F1);
        bench.desktop.failViewer();
        Settle();
        return ManualOnScreen();
    };
    const QPointer<QWidget> manual = openManual();
    ASSERT_NE(manual, nullptr);
    EXPECT_EQ(manual->parentWidget(), nullptr) << "it would stay in front of the main window";
    QTest::keyClick(manual, Qt::Key_Escape);
    EXPECT_EQ(ManualOnScreen(), nullptr);
    EXPECT_EQ(openManual(), manual) << "the one that was open";
    bench.Choose("FileExit");
    bench.desktop.failViewer();
    EXPECT_EQ(ManualOnScreen(), nullptr) << "after the end";
    bench.window.reset();
    bench.desktop.failViewer();
    EXPECT_TRUE(manual.isNull());
}

TEST(Manual, FindGoesOnThroughAllPagesAndRound) {
    ManualWindow manual;
    manual.show();
    manual.activateWindow();
    Settle();
    auto* text = manual.findChild<QTextBrowser*>("txtManual");
    const auto* found = manual.findChild<QLabel*>("lblFound");
    const auto find = [&](const char* what) {
        QTest::keyClick(&manual, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(manual.focusWidget(), what);
        QTest::keyClick(manual.focusWidget(), Qt::Key_Return);
    };
    find("verifying conig word...   ok!");
    const int there = text->textCursor().position();
    text->setSource(QUrl("cli.html"));
    for (int time = 0; time < 2; ++time) {  // the only place there is, again and again
        QTest::keyClick(&manual, Qt::Key_F3);
        EXPECT_EQ(text->source().fileName(), "messages.html");
        EXPECT_EQ(text->textCursor().position(), there);
    }
    EXPECT_EQ(found->text(), "");
    find("no such words in here");
    EXPECT_EQ(found->text(), "Not found");
    QTest::keyClick(text, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(text->source().fileName(), "cli.html");
}

TEST(Manual, IsZoomedAndClosedByKeys) {
    ManualWindow manual;
    manual.show();
    manual.activateWindow();
    Settle();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&manual)->role(), QAccessible::Window);
    auto* text = manual.findChild<QTextBrowser*>("txtManual");
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(text, key, Qt::ControlModifier);
        return text->document()->size().height();
    };
    const double usual = press(Qt::Key_0);
    const double larger = press(Qt::Key_Plus);
    EXPECT_GT(larger, usual);
    EXPECT_GT(press(Qt::Key_Equal), larger);
    EXPECT_EQ(press(Qt::Key_Minus), larger);
    EXPECT_EQ(press(Qt::Key_0), usual);
    press(Qt::Key_W);
    EXPECT_FALSE(manual.isVisible());
}

TEST(Help, OpensThePageOnAttachingABoardFromTheStripWhenNoneHasAnswered) {
    WindowBench bench({"PIC16F84A", 7, 1024, 64, 1}, {}, "No such file or directory");
    EXPECT_TRUE(bench.Said().find("No board has answered.") != std::string::npos) << bench.Said();
    bench.Click("cmdRemedyOfFirst");
    ASSERT_NE(ManualOnScreen(), nullptr);
    const auto* text = ManualOnScreen()->findChild<QTextBrowser*>("txtManual");
    EXPECT_EQ(text->source().fileName(), "board.html");
    EXPECT_TRUE(text->toPlainText().contains("Attaching a board"));
}

TEST(ManualPages, EveryLinkLeadsSomewhere) {
    QString all;
    for (const QFileInfo& page : QDir(":/manual").entryInfoList({"*.html"})) {
        QFile file(page.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        all += "<a name=\"" + page.fileName() + "\">" + QString::fromUtf8(file.readAll());
    }
    ASSERT_TRUE(all.contains("<a href"));
    for (const auto& link : QRegularExpression("<a href=\"([^\"#]*)#?([^\"]*)\"").globalMatch(all))
        for (const QString& there : {link.captured(1), link.captured(2)})
            EXPECT_TRUE(there.isEmpty() || all.contains("<a name=\"" + there + "\">"))
                << link.captured().toStdString();
}

}  // namespace
}  // namespace Tamber
