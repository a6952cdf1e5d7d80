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
    bench.Start();
    const auto openManual = [&] {
        QTest::keyClick(bench.window.get(), Qt::Key_F1);
        bench.desktop.failViewer();
        Settle();
        return ManualOnScreen();
    };
    bench.Choose("HelpContents");
    EXPECT_THAT(bench.desktop.record, testing::ElementsAre("start winhlp32.exe TAMBER.HLP"));
    EXPECT_EQ(ManualOnScreen(), nullptr);
    QWidget* manual = openManual();
    ASSERT_NE(manual, nullptr);
    EXPECT_FALSE(manual->isModal());
    EXPECT_EQ(manual->parentWidget(), nullptr) << "it would stay in front of the main window";
    auto* text = manual->findChild<QTextBrowser*>("txtManual");
    text->setSource(QUrl("qrc:/manual/board.html"));
    EXPECT_EQ(openManual(), manual);
    QTest::keyClick(manual, Qt::Key_Escape);
    EXPECT_EQ(ManualOnScreen(), nullptr);
    EXPECT_EQ(openManual(), manual);
    EXPECT_EQ(text->source().fileName(), "board.html") << "the page that was open";

    const QPointer<QWidget> still = manual;
    bench.Choose("FileExit");
    EXPECT_EQ(ManualOnScreen(), nullptr);
    bench.desktop.failViewer();
    EXPECT_EQ(ManualOnScreen(), nullptr) << "a viewer that fails after the end";
    bench.window.reset();
    bench.desktop.failViewer();
    EXPECT_TRUE(still.isNull());
}

class Manual : public testing::Test {
  protected:
    Manual() {
        manual.show();
        manual.activateWindow();
        Settle();
    }

    std::string Page() const { return text->source().fileName().toStdString(); }
    void FindByKeys(const QString& what) {
        QTest::keyClick(&manual, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(manual.focusWidget(), what);
        QTest::keyClick(manual.focusWidget(), Qt::Key_Return);
    }

    ManualWindow manual;
    QTextBrowser* text = manual.findChild<QTextBrowser*>("txtManual");
};

TEST_F(Manual, FindGoesOnThroughAllPagesAndRound) {
    FindByKeys("verifying conig word...   ok!");
    const int there = text->textCursor().position();
    text->setSource(QUrl("cli.html"));
    for (int time = 0; time < 2; ++time) {  // the only place there is, again and again
        QTest::keyClick(&manual, Qt::Key_F3);
        EXPECT_EQ(Page(), "messages.html");
        EXPECT_EQ(text->textCursor().position(), there);
        EXPECT_TRUE(text->textCursor().hasSelection());
    }
    const auto* found = manual.findChild<QLabel*>("lblFound");
    EXPECT_EQ(found->text(), "");
    FindByKeys("no such words in here");
    EXPECT_EQ(found->text(), "Not found");
    EXPECT_EQ(Page(), "messages.html");
    QTest::keyClick(text, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Page(), "cli.html");
}

TEST_F(Manual, LinksCanBeReadOnDarkGround) {
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    manual.setPalette(dark);
    Settle();
    QTextCursor cursor(text->document());
    while (!cursor.charFormat().isAnchor() && cursor.movePosition(QTextCursor::NextCharacter)) {
    }
    ASSERT_TRUE(cursor.charFormat().isAnchor());
    EXPECT_GT(cursor.charFormat().foreground().color().lightness(), 150);
}

TEST_F(Manual, EveryLinkLeadsSomewhereAndEveryPageIsInTheContents) {
    const auto contents = [](const QString& page) {
        QFile file(":/manual/" + page);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };
    const QRegularExpression link("href=\"([^\"#]*)#?([^\"]*)\"");
    const QStringList pages = QDir(":/manual").entryList({"*.html"});
    ASSERT_GE(pages.size(), 8);
    for (const QString& page : pages) {
        EXPECT_TRUE(page == "index.html" || contents("index.html").contains("href=\"" + page));
        for (const QRegularExpressionMatch& match : link.globalMatch(contents(page))) {
            const QString there = contents(match.captured(1).isEmpty() ? page : match.captured(1));
            const QString anchor = match.captured(2);
            EXPECT_TRUE(!there.isEmpty() &&
                        (anchor.isEmpty() || there.contains("<a name=\"" + anchor + "\"></a>")))
                << page.toStdString() << ": " << match.captured().toStdString();
        }
    }
}

}  // namespace
}  // namespace Tamber
