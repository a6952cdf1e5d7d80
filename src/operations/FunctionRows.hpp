#pragma once

#include <cstdint>
#include <string_view>

class QListWidget;
class QListWidgetItem;

namespace Tamber {

/// Adds a row for a function to a list; the row keeps its code.
void AddRow(QListWidget& list, std::string_view name, std::int16_t code);

/// The code that a row keeps.
std::int16_t CodeOf(const QListWidgetItem& row);

/// The code of the highlighted row, -1 when none is highlighted.
std::int16_t HighlightedCode(const QListWidget& list);

}  // namespace Tamber
