#pragma once

#include <QTextEdit>
#include <functional>
#include <string>

namespace Tamber {

/// A multi-line text box for a hex dump: read-only, but text can be selected and copied. It has
/// scroll bars while it is too small for its text.
class DumpTextBox : public QTextEdit {
  public:
    explicit DumpTextBox(QWidget* parent);

    /// Replaces the text. `dump` is ASCII with CR LF line ends.
    void ShowDump(const std::string& dump);

    /// Uses this font and makes the lines so high, in pixels, that a heading and sixteen rows fit
    /// into a box of `height` pixels.
    void ShowLetters(const QFont& font, int height);

    /// Leaves `width` pixels at the right edge to something that lies over the box.
    void LeaveRight(int width);

    /// How many rows fit below the heading, at least one, if sixteen do at `height` pixels.
    int RowsThatFit(int height) const;

    /// Selects `length` characters of line `line` from `column` on; all count from 0.
    void Select(int line, int column, int length);

    /// Puts into the context menu what copies the selection, the view and the whole memory, whose
    /// dump `wholeMemory` makes.
    void OfferCopies(std::function<std::string()> wholeMemory);

  protected:
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void SetLineHeight();

    int linePixels_ = 0;
};

}  // namespace Tamber
