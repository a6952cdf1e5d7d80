#pragma once

#include "modFunc.hpp"
#include "ui/BufferForm.hpp"

class QLabel;
class QLineEdit;
class QScrollArea;

namespace Tamber {

/// The configuration view: the ID locations and the configuration word. It scrolls when it is too
/// small for them.
class frmConfig : public BufferForm {
  public:
    explicit frmConfig(const modFunc& program);

    /// Refills the two text boxes from the image.
    void UpdateLocs();

  protected:
    void Arrange() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void MakeControls();

    const modFunc& program_;
    QScrollArea* scroll_ = nullptr;
    QLabel* lblIDLOCS = nullptr;
    QLabel* lblConfig = nullptr;
    QLineEdit* txtIDLOCS = nullptr;
    QLineEdit* txtConfig = nullptr;
};

}  // namespace Tamber
