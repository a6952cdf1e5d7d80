#pragma once

#include <QWidget>
#include <string>

#include "modFunc.hpp"

namespace Tamber {

class DumpTextBox;

/// The EEPROM view: rows of sixteen bytes.
class frmEEPROM : public QWidget {
  public:
    static constexpr int ClientWidth = 9780;  // twips
    static constexpr int ClientHeight = 3885;

    explicit frmEEPROM(const modFunc& program);

    /// Rebuilds the text from the image.
    void UpdateBuffer();

  private:
    const modFunc& program_;
    DumpTextBox* txtBuffer;
    std::string DumpHeader;
    std::string DumpBody;
};

}  // namespace Tamber
