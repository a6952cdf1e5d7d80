#pragma once

#include <QElapsedTimer>
#include <QListWidget>

namespace Tamber {

/// A list in which one row is highlighted, once one has been: a click beside the rows changes
/// nothing, nor does Ctrl with a click or the space bar take the highlight away. Typing goes to the
/// next row that has what was typed in any part of its text.
class RowList : public QListWidget {
  public:
    using QListWidget::QListWidget;

    void keyboardSearch(const QString& typed) override;

  protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

  private:
    QString sought_;
    QElapsedTimer sinceLetter_;
};

}  // namespace Tamber
