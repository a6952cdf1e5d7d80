#pragma once

#include <QObject>
#include <QSerialPort>
#include <functional>

namespace Tamber {

/// True once the line of an open port was hung up, as it is when its adapter is pulled out.
bool HungUp(const QSerialPort& port);

/// Notices that an open port's line was hung up. Such a line reads as one on which nothing comes,
/// yet wakes whoever sleeps on it again and again: unwatched, every wait would burn a core.
class HangUpWatch final : public QObject {
  public:
    /// Calls `lost` once, from the event loop, when the line of `port`, which is open, is hung up.
    HangUpWatch(QSerialPort& port, std::function<void()> lost);

    bool eventFilter(QObject* notifier, QEvent* event) override;

  private:
    QSerialPort& port_;
    std::function<void()> lost_;
};

}  // namespace Tamber
