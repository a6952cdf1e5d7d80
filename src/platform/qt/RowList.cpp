#include "platform/qt/RowList.hpp"

#include <QApplication>

namespace Tamber {

QItemSelectionModel::SelectionFlags RowList::selectionCommand(const QModelIndex& index,
                                                              const QEvent*) const {
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

// The first letter looks beyond the current row, so that the same letter again goes on; each
// further one may stay where it is.
void RowList::keyboardSearch(const QString& typed) {
    const bool goesOn = sinceLetter_.isValid() &&
                        !sinceLetter_.hasExpired(QApplication::keyboardInputInterval()) &&
                        sought_ != typed;
    sinceLetter_.start();
    sought_ = goesOn ? sought_ + typed : typed;
    const int first = goesOn ? std::max(currentRow(), 0) : currentRow() + 1;
    for (int step = 0; step < count(); ++step) {
        const int row = (first + step) % count();
        if (item(row)->text().contains(sought_, Qt::CaseInsensitive))
            return setCurrentRow(row);
    }
}

}  // namespace Tamber
