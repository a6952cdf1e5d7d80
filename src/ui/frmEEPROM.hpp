#pragma once

#include <string>

#include "modFunc.hpp"
#include "ui/BufferForm.hpp"

namespace Tamber {

class DumpTextBox;

/// The EEPROM view: rows of sixteen bytes.
class frmEEPROM : public BufferForm {
  public:
    explicit frmEEPROM(const modFunc& program);

    /// Rebuilds the text from the image.
    void UpdateBuffer();

    QWidget& Body() override;

  protected:
    void Arrange() override;

  private:
    const modFunc& program_;
    DumpTextBox* txtBuffer;
    std::string DumpHeader;
    std::string DumpBody;
};

}  // namespace Tamber
