#pragma once

#include <QFrame>
#include <QPointer>
#include <vector>

#include "ui/Notices.hpp"

class QLabel;
class QPushButton;

namespace Tamber {

class NoticeList;
class NoticeText;

/// A strip across the top of the document area with the gravest notice that stands, of equally
/// grave ones the latest. While there is none it is hidden. It never takes the keyboard by itself:
/// F6 goes to it; its cross or Escape closes the notice that it shows.
class NoticeStrip final : public QFrame, public Notices {
  public:
    explicit NoticeStrip(QWidget* parent);

    void Replace(const std::string& subject, std::vector<Notice> notices) override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void MakeControls();
    void MakeKeys();
    void ShowFirst();
    void Announce(const QString& text);
    void cmdAction_Click();
    void cmdShowAll_Click();
    void CloseFirst();

    std::vector<Notice> notices_;  // the gravest first, of equally grave ones the latest
    QLabel* imgSeverity = nullptr;
    NoticeText* lblNotice = nullptr;
    QPushButton* cmdAction = nullptr;
    QPushButton* cmdShowAll = nullptr;
    QPointer<NoticeList> list_;
    QPointer<QWidget> keyboardBefore_;  // had the keyboard before the strip got it
};

}  // namespace Tamber
