#include "ui/NoticeList.hpp"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <array>

#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

constexpr QSize Room(720, 300);
enum Column { SeverityColumn, TextColumn, RemedyColumn };

struct SeverityDesign {
    const char* name;
    QStyle::StandardPixmap picture;
};
constexpr std::array<SeverityDesign, 3> Severities{{
    {"Note", QStyle::SP_MessageBoxInformation},
    {"Warning", QStyle::SP_MessageBoxWarning},
    {"Failure", QStyle::SP_MessageBoxCritical},
}};

}  // namespace

QString SeverityName(NoticeSeverity severity) {
    return Severities.at(static_cast<std::size_t>(severity)).name;
}

QIcon SeverityIcon(NoticeSeverity severity, const QWidget& widget) {
    return widget.style()->standardIcon(Severities.at(static_cast<std::size_t>(severity)).picture,
                                        nullptr, &widget);
}

QPushButton* MakeNoticeButton(const char* name, const QString& caption, QWidget* parent) {
    auto* button = new QPushButton(QString(caption).replace('&', "&&"), parent);
    button->setObjectName(name);
    button->setAutoDefault(true);  // Enter presses it, in a dialog or not
    return button;
}

NoticeList::NoticeList(QWidget* parent) : QDialog(parent) {
    setObjectName("NoticeList");
    setWindowTitle("Notices");
    lstNotices = new QTreeWidget(this);
    lstNotices->setObjectName("lstNotices");
    lstNotices->setAccessibleName("Notices");
    lstNotices->setHeaderLabels({"Severity", "Notice", "Remedy"});
    lstNotices->setRootIsDecorated(false);
    lstNotices->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lstNotices->setWordWrap(true);
    lstNotices->setTabKeyNavigation(false);
    connect(lstNotices, &QTreeWidget::itemActivated, this, &NoticeList::GoTo);
    QHeaderView* header = lstNotices->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(TextColumn, QHeaderView::Stretch);
    connect(header, &QHeaderView::sectionResized, this, &NoticeList::FitRows, Qt::QueuedConnection);

    auto* copy = MakeNoticeButton("cmdCopy", "Copy", this);
    connect(copy, &QPushButton::clicked, this, &NoticeList::cmdCopy_Click);
    connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this,
            &NoticeList::cmdCopy_Click);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(copy);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lstNotices);
    layout->addLayout(buttons);
    resize(Room.boundedTo(screen()->availableSize()));
}

void NoticeList::ShowNotices(const std::vector<Notice>& notices) {
    lstNotices->clear();
    notices_ = notices;
    for (const Notice& notice : notices_)
        AddRow(notice);
    FitRows();
}

// A remedy changes the list, so it begins only when the press of its button has ended.
void NoticeList::AddRow(const Notice& notice) {
    auto* row = new QTreeWidgetItem(lstNotices);
    row->setIcon(SeverityColumn, SeverityIcon(notice.Severity, *this));
    row->setText(SeverityColumn, SeverityName(notice.Severity));
    row->setText(TextColumn, OutsideText(notice.Text));
    if (notice.Go)
        row->setToolTip(TextColumn, "Enter or a double click shows the place.");
    if (!notice.Action)
        return;
    auto* button = MakeNoticeButton("cmdRemedy", OutsideText(notice.Action->Caption), lstNotices);
    connect(button, &QPushButton::clicked, this, notice.Action->Run, Qt::QueuedConnection);
    row->setSizeHint(RemedyColumn, button->sizeHint());
    lstNotices->setItemWidget(row, RemedyColumn, button);
}

// The height of a row follows the width of its text, which the tree sees to for no column.
void NoticeList::FitRows() {
    const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1);
    const int width = lstNotices->columnWidth(TextColumn) - margin;
    for (int index = 0; index < lstNotices->topLevelItemCount(); ++index) {
        QTreeWidgetItem* row = lstNotices->topLevelItem(index);
        const QSize text = lstNotices->fontMetrics()
                               .boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap,
                                             row->text(TextColumn))
                               .size();
        row->setSizeHint(TextColumn, {width, text.height() + margin});
    }
}

// What shows the place may change the notices.
void NoticeList::GoTo(const QTreeWidgetItem* row) {
    const auto index = lstNotices->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(row));
    if (const auto go = notices_.at(static_cast<std::size_t>(index)).Go)
        go();
}

void NoticeList::cmdCopy_Click() {
    const bool selected = !lstNotices->selectedItems().isEmpty();
    QStringList lines;
    for (int index = 0; index < lstNotices->topLevelItemCount(); ++index)
        if (const auto* row = lstNotices->topLevelItem(index); row->isSelected() || !selected)
            lines.append(row->text(SeverityColumn) + ": " + row->text(TextColumn));
    QGuiApplication::clipboard()->setText(lines.join('\n'));
}

}  // namespace Tamber
