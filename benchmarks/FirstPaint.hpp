#pragma once

#include <QApplication>
#include <functional>
#include <optional>

namespace Tamber::Bench {

/// Nanoseconds of the steady clock.
double Nanoseconds();

/// An application that prints three figures about itself and ends: the nanoseconds from its start
/// to the end of its first painting, those to the end of its main window's, and the most memory it
/// has held, in KiB, half a second after that. The moment of the start comes as the first argument.
class FirstPaintApplication : public QApplication {
  public:
    FirstPaintApplication(int& count, char** values);

    bool notify(QObject* receiver, QEvent* event) override;

    /// When the first painting had ended.
    double FirstPainted() const { return first_.value_or(0); }

    /// Nanoseconds of waiting to be left out of the main window's figure.
    std::function<double()> Waited = [] { return 0.0; };

    /// Runs when a dialog goes from the screen.
    std::function<void()> DialogGoes = [] {};

  private:
    void NotePainting(QObject* receiver);
    void PaintingEnds();
    void Report() const;

    double start_;
    int paintDepth_ = 0;
    bool painting_ = false;
    bool paintingMain_ = false;
    std::optional<double> first_;
    std::optional<double> main_;
};

}  // namespace Tamber::Bench
