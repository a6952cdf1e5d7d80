#pragma once

#include <QWidget>

#include "modFunc.hpp"

class QLineEdit;

namespace Tamber {

/// The configuration view: the ID locations and the configuration word.
class frmConfig : public QWidget {
  public:
    static constexpr int ClientWidth = 2625;  // twips
    static constexpr int ClientHeight = 960;

    explicit frmConfig(const modFunc& program);

    /// Refills the two text boxes from the image.
    void UpdateLocs();

  private:
    const modFunc& program_;
    QLineEdit* txtIDLOCS;
    QLineEdit* txtConfig;
};

}  // namespace Tamber
