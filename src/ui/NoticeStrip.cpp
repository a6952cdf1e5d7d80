#include "ui/NoticeStrip.hpp"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QToolButton>
#include <algorithm>
#include <functional>
#include <utility>

#include "platform/qt/WindowDesign.hpp"
#include "ui/NoticeList.hpp"
#include "ui/NoticeText.hpp"

namespace Tamber {
namespace {

// Screen readers speak what appears in an alert.
QAccessibleInterface* MakeAlert(const QString&, QObject* object) {
    auto* strip = dynamic_cast<NoticeStrip*>(object);
    return strip ? new QAccessibleWidget(strip, QAccessible::AlertMessage) : nullptr;
}

}  // namespace

NoticeStrip::NoticeStrip(QWidget* parent) : QFrame(parent) {
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(MakeAlert);
        return true;
    }();
    setObjectName("NoticeStrip");
    setFont(SansSerifFont());
    hide();
    MakeControls();
    MakeKeys();
}

void NoticeStrip::MakeControls() {
    imgSeverity = new QLabel(this);
    lblNotice = new NoticeText(this);
    lblNotice->setObjectName("lblNotice");
    cmdAction = MakeNoticeButton("cmdRemedyOfFirst", "", this);
    connect(cmdAction, &QPushButton::clicked, this, &NoticeStrip::cmdAction_Click);
    cmdShowAll = MakeNoticeButton("cmdShowAll", "", this);
    connect(cmdShowAll, &QPushButton::clicked, this, &NoticeStrip::cmdShowAll_Click);
    auto* cross = new QToolButton(this);
    cross->setObjectName("cmdCloseNotice");
    cross->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    cross->setAutoRaise(true);
    cross->setFocusPolicy(Qt::StrongFocus);
    cross->setAccessibleName("Close notice");
    cross->setToolTip("Close (Escape)");
    connect(cross, &QToolButton::clicked, this, &NoticeStrip::CloseFirst);

    auto* layout = new QHBoxLayout(this);
    constexpr int gap = 4;
    layout->setContentsMargins(gap, gap, gap, gap);
    layout->addWidget(imgSeverity);
    layout->addWidget(lblNotice, 1);
    for (QWidget* button : {static_cast<QWidget*>(cmdAction), static_cast<QWidget*>(cmdShowAll),
                            static_cast<QWidget*>(cross)})
        layout->addWidget(button);
}

void NoticeStrip::MakeKeys() {
    connect(new QShortcut(Qt::Key_F6, this), &QShortcut::activated, this, [this] {
        (cmdAction->isVisible() ? cmdAction : cmdShowAll)->setFocus(Qt::ShortcutFocusReason);
    });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
        if (now && isAncestorOf(now) && before && !isAncestorOf(before))
            keyboardBefore_ = before;
    });
}

void NoticeStrip::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        CloseFirst();
    else
        QFrame::keyPressEvent(event);
}

void NoticeStrip::Replace(const std::string& subject, std::vector<Notice> notices) {
    const auto removed =
        std::erase_if(notices_, [&](const Notice& other) { return other.Subject == subject; });
    if (removed == 0 && notices.empty())
        return;
    std::ranges::stable_sort(notices, std::greater(), &Notice::Severity);
    while (!notices.empty()) {
        Notice last = std::move(notices.back());
        notices.pop_back();
        last.Subject = subject;
        const auto place = std::ranges::find_if(
            notices_, [&](const Notice& other) { return other.Severity <= last.Severity; });
        notices_.insert(place, std::move(last));
    }
    ShowFirst();
}

void NoticeStrip::ShowFirst() {
    if (list_)
        list_->ShowNotices(notices_);
    if (notices_.empty()) {
        if (isAncestorOf(QApplication::focusWidget()) && keyboardBefore_)
            keyboardBefore_->setFocus();
        hide();
        return;
    }
    const Notice& first = notices_.front();
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    imgSeverity->setPixmap(SeverityIcon(first.Severity, *this).pixmap(size, size));
    lblNotice->SetText(OutsideText(first.Text));
    cmdAction->setVisible(first.Action.has_value());
    if (first.Action)
        cmdAction->setText(OutsideText(first.Action->Caption).replace('&', "&&"));
    cmdShowAll->setText(notices_.size() == 1 ? QString("Show all")
                                             : QString("Show all (%1)").arg(notices_.size()));
    show();
    Announce(SeverityName(first.Severity) + ": " + OutsideText(first.Text));
}

void NoticeStrip::Announce(const QString& text) {
    if (accessibleName() == text)
        return;
    setAccessibleName(text);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

// The action may change the notices.
void NoticeStrip::cmdAction_Click() {
    if (!notices_.empty() && notices_.front().Action)
        std::function<void()>(notices_.front().Action->Run)();
}

void NoticeStrip::cmdShowAll_Click() {
    if (!list_)
        list_ = new NoticeList(window());
    list_->ShowNotices(notices_);
    list_->show();
    list_->raise();
    list_->activateWindow();
}

void NoticeStrip::CloseFirst() {
    notices_.erase(notices_.begin());
    ShowFirst();
}

}  // namespace Tamber
