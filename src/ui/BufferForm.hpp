#pragma once

#include <QWidget>

namespace Tamber {

/// With Ctrl, the wheel is for the letters of all views: each lets such an event pass.
bool ForLetters(const QEvent& wheel);

/// What the three views have in common: a design in twips that is drawn larger or smaller with the
/// view's letters.
class BufferForm : public QWidget {
  public:
    /// Draws the view with letters of `percent` of their designed size.
    void ShowLetters(int percent);

    /// The size in pixels at which the view, with the letters it has, stands as it was designed.
    QSize DesignSize() const;

    /// What has the keyboard and the context menu.
    virtual QWidget& Body() { return *this; }

  protected:
    /// `width` and `height`, in twips, are those of the design.
    BufferForm(const char* name, const char* caption, int width, int height);

    /// Puts everything where it belongs at this size, and with these letters.
    virtual void Arrange() = 0;

    /// Like Place, with the letters' size taken into account.
    void Put(QWidget& control, const char* name, int left, int top, int width, int height) const;

    int Scaled(int twips) const;  // pixels
    QFont CaptionFont() const;
    QFont DumpFont(bool bold) const;

    void resizeEvent(QResizeEvent* event) override;

  private:
    int width_;
    int height_;
    int percent_ = 100;
};

}  // namespace Tamber
