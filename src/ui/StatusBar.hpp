#pragma once

#include <QStatusBar>
#include <QString>
#include <array>
#include <string>

namespace Tamber {

class StatusPanel;

/// The main window's status bar with its four panels: port, device, size, file.
class StatusBar : public QStatusBar {
  public:
    explicit StatusBar(QWidget* parent);

    /// Shows `text`, as plain text, in panel `panel`, 1..4; a text too long for the panel is
    /// shortened in its middle.
    void SetPanel(int panel, const QString& text);

    /// The whole text of panel `panel`, 1..4.
    QString Panel(int panel) const;

  private:
    std::array<StatusPanel*, 4> panels_{};
};

}  // namespace Tamber
