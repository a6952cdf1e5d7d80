#pragma once

#include <QWidget>

namespace Tamber {

/// A plain text that wraps, within its words where one is wider than the widget. Of a long text the
/// first lines are shown.
class NoticeText final : public QWidget {
  public:
    static constexpr int LinesMax = 4;

    explicit NoticeText(QWidget* parent);

    void SetText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QStringList Lines(int width) const;

    QString text_;
};

}  // namespace Tamber
