#pragma once

#include <QTextEdit>
#include <string>

namespace Tamber {

/// A multi-line text box for a hex dump: read-only, but text can be selected and copied.
class DumpTextBox : public QTextEdit {
  public:
    explicit DumpTextBox(QWidget* parent);

    /// Replaces the text. `dump` is ASCII with CR LF line ends.
    void ShowDump(const std::string& dump);
};

}  // namespace Tamber
