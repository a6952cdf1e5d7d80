#include "operations/FunctionRows.hpp"

#include <QListWidget>

namespace Tamber {

void AddRow(QListWidget& list, std::string_view name, std::int16_t code) {
    auto* row = new QListWidgetItem(
        QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())), &list);
    row->setData(Qt::UserRole, code);
}

std::int16_t CodeOf(const QListWidgetItem& row) {
    return static_cast<std::int16_t>(row.data(Qt::UserRole).toInt());
}

std::int16_t HighlightedCode(const QListWidget& list) {
    const QList<QListWidgetItem*> highlighted = list.selectedItems();
    return highlighted.isEmpty() ? std::int16_t{-1} : CodeOf(*highlighted.first());
}

}  // namespace Tamber
