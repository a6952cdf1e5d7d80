#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>

#include "WindowBench.hpp"
#include "core/TextFile.hpp"
#include "ui/ManualWindow.hpp"

namespace Tamber {
namespace {

using testing::Contains;
using testing::IsEmpty;

QWidget* ManualOnScreen() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == "ManualWindow" && window->isVisible())
            return window;
    return nullptr;
}

QString Page(const QString& name) {
    QFile file(":/manual/" + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromUtf8(file.readAll());
}

QStringList PageNames() {
    return QDir(":/manual").entryList({"*.html"});
}

struct HelpTest : testing::Test {
    HelpTest() : bench(Device) { bench.Start(); }

    QWidget* OpenManual() {
        bench.Choose("HelpContents");
        bench.desktop.failViewer();
        Settle();
        return ManualOnScreen();
    }

    WindowBench bench;
};

TEST_F(HelpTest, StartsTheViewerAndShowsNothingItself) {
    bench.desktop.record.clear();
    bench.Choose("HelpContents");
    EXPECT_THAT(bench.desktop.record, testing::ElementsAre("start winhlp32.exe TAMBER.HLP"));
    EXPECT_EQ(ManualOnScreen(), nullptr);
}

TEST_F(HelpTest, ManualComesUpBesideTheProgramWhenTheViewerFails) {
    const QWidget* manual = OpenManual();
    ASSERT_NE(manual, nullptr);
    EXPECT_EQ(manual->windowTitle(), "Tamber Manual");
    EXPECT_TRUE(manual->isWindow());
    EXPECT_FALSE(manual->isModal());
    EXPECT_EQ(manual->parentWidget(), nullptr) << "it would stay in front of the main window";

    bench.program.image.SetByte(0, 0x12);
    bench.Choose("BufferClearPM");
    EXPECT_EQ(bench.program.image.Byte(0), 0xFF) << "the program is usable";
    EXPECT_EQ(ManualOnScreen(), manual);
}

TEST_F(HelpTest, OpenedAgainItIsTheSameWindowAtTheSamePage) {
    QWidget* manual = OpenManual();
    ASSERT_NE(manual, nullptr);
    auto* text = manual->findChild<QTextBrowser*>("txtManual");
    text->setSource(QUrl("qrc:/manual/board.html"));
    EXPECT_EQ(OpenManual(), manual);
    QTest::keyClick(manual, Qt::Key_Escape);
    EXPECT_EQ(ManualOnScreen(), nullptr);
    EXPECT_EQ(OpenManual(), manual);
    EXPECT_EQ(text->source().fileName(), "board.html");
}

TEST_F(HelpTest, ManualGoesWithTheMainWindow) {
    ASSERT_NE(OpenManual(), nullptr);
    bench.Choose("FileExit");
    EXPECT_EQ(ManualOnScreen(), nullptr);
    bench.desktop.failViewer();
    EXPECT_EQ(ManualOnScreen(), nullptr) << "a viewer that fails after the end";
    bench.window.reset();
    bench.desktop.failViewer();
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_NE(window->objectName(), "ManualWindow");
}

struct ManualTest : testing::Test {
    ManualTest() {
        manual.show();
        manual.activateWindow();
        Settle();
    }

    std::string PageOnShow() const { return text->source().fileName().toStdString(); }
    void FindByKeys(const QString& what) {
        QTest::keyClick(&manual, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(find, what);
        QTest::keyClick(find, Qt::Key_Return);
    }

    ManualWindow manual;
    QTextBrowser* text = manual.findChild<QTextBrowser*>("txtManual");
    QLineEdit* find = manual.findChild<QLineEdit*>("txtFind");
    QLabel* found = manual.findChild<QLabel*>("lblFound");
};

TEST_F(ManualTest, KeysLeadThroughThePages) {
    EXPECT_EQ(PageOnShow(), "index.html");
    text->setSource(QUrl("files.html"));
    text->setSource(QUrl("board.html"));
    QTest::keyClick(text, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(PageOnShow(), "files.html");
    QTest::keyClick(text, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(PageOnShow(), "board.html");
    QTest::keyClick(text, Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(PageOnShow(), "index.html");
}

TEST_F(ManualTest, FindGoesOnThroughAllPagesAndRound) {
    FindByKeys("verifying conig word...   ok!");
    EXPECT_EQ(PageOnShow(), "messages.html");
    EXPECT_TRUE(text->textCursor().hasSelection());
    const int there = text->textCursor().position();
    text->setSource(QUrl("cli.html"));
    QTest::keyClick(&manual, Qt::Key_F3);
    EXPECT_EQ(PageOnShow(), "messages.html");
    QTest::keyClick(&manual, Qt::Key_F3);
    EXPECT_EQ(text->textCursor().position(), there) << "the only place there is, once more";
    EXPECT_EQ(found->text(), "");

    FindByKeys("no such words in here");
    EXPECT_EQ(found->text(), "Not found");
    EXPECT_EQ(PageOnShow(), "messages.html");
}

TEST_F(ManualTest, LinksCanBeReadOnDarkGround) {
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(225, 225, 225));
    manual.setPalette(dark);
    Settle();
    QTextCursor cursor(text->document());
    while (!cursor.charFormat().isAnchor() && cursor.movePosition(QTextCursor::NextCharacter)) {
    }
    ASSERT_TRUE(cursor.charFormat().isAnchor());
    EXPECT_GT(cursor.charFormat().foreground().color().lightness(), 150);
}

TEST(ManualPages, EveryLinkLeadsSomewhereAndEveryPageIsInTheContents) {
    const QRegularExpression link("href=\"([^\"#]*)(?:#([^\"]*))?\"");
    ASSERT_GE(PageNames().size(), 8);
    for (const QString& name : PageNames()) {
        EXPECT_TRUE(name == "index.html" || Page("index.html").contains("href=\"" + name))
            << name.toStdString();
        auto links = link.globalMatch(Page(name));
        while (links.hasNext()) {
            const QRegularExpressionMatch match = links.next();
            const QString target = match.captured(1).isEmpty() ? name : match.captured(1);
            const bool there = QFile::exists(":/manual/" + target);
            const QString anchor = match.captured(2);
            EXPECT_TRUE(there && (anchor.isEmpty() ||
                                  Page(target).contains("<a name=\"" + anchor + "\"></a>")))
                << name.toStdString() << ": " << match.captured().toStdString();
        }
    }
}

// The texts between quotation marks in a source file that have more than one word, pieces that
// stand one behind the other joined, line by line.
std::vector<std::string> TextsOf(const std::filesystem::path& source) {
    QString code = QString::fromStdString(ReadTextFile(source).value());
    code.remove(QRegularExpression("//[^\n]*|#include[^\n]*|'\"'"));
    code.remove(QRegularExpression("\"\\s*\n\\s*\""));
    auto literals = QRegularExpression("\"((?:[^\"\\\\\n]|\\\\.)*)\"").globalMatch(code);
    std::vector<std::string> texts;
    while (literals.hasNext()) {
        const QString literal = literals.next().captured(1).replace("\\\"", "\"");
        for (const QString& line : literal.split(QRegularExpression("(\\\\r)?\\\\n")))
            if (line.contains(QRegularExpression("[A-Za-z]{2}")) && line.contains(' '))
                texts.push_back(line.toStdString());
    }
    return texts;
}

std::vector<std::filesystem::path> SourcesWithMessages() {
    const std::filesystem::path root = SAMPLE_DATA "/../src";
    std::vector<std::filesystem::path> sources{root / "main.cpp", root / "ui/mdiMain.cpp",
                                               root / "platform/qt/QtSerialControl.cpp"};
    for (const char* room : {"core", "operations", "link"})
        for (const auto& entry : std::filesystem::directory_iterator(root / room))
            if (!entry.path().filename().string().starts_with("frm"))
                sources.push_back(entry.path());
    return sources;
}

TEST(ManualPages, TellOfEveryMessageLetterForLetter) {
    std::string manual;
    for (const QString& name : PageNames()) {
        QTextDocument page;
        page.setHtml(Page(name));
        manual += page.toPlainText().toStdString() + "\n";
    }
    std::vector<std::string> texts;
    for (const auto& source : SourcesWithMessages())
        for (const std::string& text : TextsOf(source)) {
            texts.push_back(text);
            EXPECT_NE(manual.find(text), std::string::npos)
                << source.filename() << " says \"" << text << "\"";
        }
    // The search itself must find what is there.
    for (const char* text :
         {"Reading EEPROM...", "   Device Fault!", "Erasing Config Word...",
          "Verifying Conig Word...", "PM not blank at ", "Config. not blank at ID Locs ",
          "Program Error at ", "Erase Function Not Available!", "Communication Port Error",
          "The settings are lost; check the folder's permissions and space."})
        EXPECT_THAT(texts, Contains(text));
}

}  // namespace
}  // namespace Tamber
