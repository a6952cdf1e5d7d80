#include "WindowBench.hpp"
#include "ui/NoticeStrip.hpp"

namespace Tamber {
namespace {

struct NoticesInTheWindow : testing::Test, WindowBench {
    Notices& Strip() const { return *Find<NoticeStrip>("NoticeStrip"); }
    void Show(NoticeSeverity severity, const char* text, const char* subject = nullptr) const {
        Strip().Show({.Severity = severity, .Subject = subject ? subject : text, .Text = text});
    }

    static std::string Clipboard() { return QApplication::clipboard()->text().toStdString(); }
    void Key(Qt::Key key) const {
        QTest::keyClick(QApplication::focusWidget(), key);
        Settle();
    }
};

TEST_F(NoticesInTheWindow, TheGravestAndLatestIsShownAndTheOthersComeAfterIt) {
    Show(NoticeSeverity::Warning, "warning", "subject");
    Show(NoticeSeverity::Note, "note");
    EXPECT_EQ(Said(), "Warning: warning");
    Show(NoticeSeverity::Failure, "failure");
    Show(NoticeSeverity::Failure, "later failure");
    EXPECT_EQ(Said(), "Failure: later failure");
    Show(NoticeSeverity::Note, "less grave now", "subject");
    Strip().Withdraw("later failure");
    EXPECT_EQ(Said(), "Failure: failure");
    Click("cmdCloseNotice");
    EXPECT_EQ(Said(), "Note: less grave now");
    Strip().Withdraw("subject");
    Strip().Withdraw("note");
    EXPECT_EQ(Said(), "");
}

TEST_F(NoticesInTheWindow, TakeNeitherKeyboardNorRoomOfTheirOwnAccordAndCloseByEscape) {
    const auto* area = Find<QMdiArea>("");
    const QRect whole = area->geometry();
    const QPointer<QWidget> focus = QApplication::focusWidget();
    ASSERT_TRUE(focus);
    Show(NoticeSeverity::Note, "<b>not bold</b>\u202E\n<img src=x>");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(Find("NoticeStrip"))->role(),
              QAccessible::AlertMessage);
    EXPECT_EQ(Said(), "Note: <b>not bold</b>\uFFFD\u240A<img src=x>");
    EXPECT_EQ(QApplication::focusWidget(), focus);
    EXPECT_LT(area->height(), whole.height());
    const int oneLine = Find("NoticeStrip")->height();
    Show(NoticeSeverity::Note, std::string(255, 'W').c_str());
    Said();
    EXPECT_GT(Find("NoticeStrip")->height(), oneLine) << "a long name wraps";
    EXPECT_EQ(window->width(), area->width());
    Key(Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdShowAll");
    Key(Qt::Key_Escape);
    Key(Qt::Key_Escape);
    EXPECT_EQ(Said(), "");
    EXPECT_EQ(area->geometry(), whole);
    EXPECT_EQ(QApplication::focusWidget(), focus);
}

TEST_F(NoticesInTheWindow, TheListHasThemAllWithTheirRemediesAndCanBeCopied) {
    int remedied = 0;
    Strip().Show({.Severity = NoticeSeverity::Warning,
                  .Subject = "remedied",
                  .Text = "with a remedy",
                  .Action = NoticeAction{"Mend & go on", [&] {
                                             ++remedied;
                                             Strip().Withdraw("remedied");
                                         }}});
    EXPECT_EQ(Find<QPushButton>("cmdRemedyOfFirst")->text(), "Mend && go on");
    Show(NoticeSeverity::Failure, "graver");
    EXPECT_FALSE(Find("cmdRemedyOfFirst")->isVisible());
    Click("cmdShowAll");
    Settle();
    ExpectNothingCutOff(*Find("NoticeStrip"));
    ExpectNothingCutOff(*Find("NoticeList"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    const auto* list = Find<QTreeWidget>("lstNotices");
    Click("cmdCopy");
    EXPECT_EQ(Clipboard(), "Failure: graver\nWarning: with a remedy");
    list->topLevelItem(1)->setSelected(true);
    QTest::keyClick(list->window(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), "Warning: with a remedy");
    Click("cmdRemedy");
    Settle();
    EXPECT_EQ(remedied, 1);
    EXPECT_EQ(list->topLevelItemCount(), 1);
}

}  // namespace
}  // namespace Tamber
