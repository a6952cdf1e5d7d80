#pragma once

#include <QDialog>
#include <vector>

#include "ui/Notices.hpp"

class QIcon;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace Tamber {

/// A window with all notices that stand, each with its remedy as a button. Ctrl+C or the button
/// below copies the selected rows, or all of them while none is selected. Enter or a double click
/// on a row goes to the place that it is about.
class NoticeList final : public QDialog {
  public:
    explicit NoticeList(QWidget* parent);

    /// Shows these, the first on top.
    void ShowNotices(const std::vector<Notice>& notices);

  private:
    void AddRow(const Notice& notice);
    void FitRows();
    void GoTo(const QTreeWidgetItem* row);
    void cmdCopy_Click();

    std::vector<Notice> notices_;  // a row for each
    QTreeWidget* lstNotices = nullptr;
};

/// What the strip and its list have in common.
QString SeverityName(NoticeSeverity severity);
QIcon SeverityIcon(NoticeSeverity severity, const QWidget& widget);
QPushButton* MakeNoticeButton(const char* name, const QString& caption, QWidget* parent);

}  // namespace Tamber
