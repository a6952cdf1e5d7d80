#pragma once

#include <QApplication>

namespace Tamber::Bench {

/// An application that prints the seconds from its start to the end of its first painting, and ends
/// half a second after its main window was painted. The moment of the start, in seconds of the
/// steady clock, comes as the first argument.
class FirstPaintApplication : public QApplication {
  public:
    FirstPaintApplication(int& count, char** values);

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    double start_;
    double first_ = 0;
    int paintDepth_ = 0;
    bool painting_ = false;
    bool ending_ = false;
};

}  // namespace Tamber::Bench
