#include "ui/frmEEPROM.hpp"

#include "platform/qt/WindowDesign.hpp"
#include "ui/DumpText.hpp"
#include "ui/DumpTextBox.hpp"

namespace Tamber {

frmEEPROM::frmEEPROM(const modFunc& program)
    : program_(program), txtBuffer(new DumpTextBox(this)), DumpHeader(EepromDumpHeader()) {
    setObjectName("frmEEPROM");
    setWindowTitle("EEPROM");
    Place(*txtBuffer, "txtBuffer", 120, 120, 9495, 3615);
    txtBuffer->setAccessibleName("EEPROM");
    UpdateBuffer();
}

void frmEEPROM::UpdateBuffer() {
    const DeviceRecord& device = SelectedRecord(program_);
    DumpBody = EepromDump(program_.image, device.EepromBytes);
    txtBuffer->ShowDump(DumpHeader + DumpBody);
}

}  // namespace Tamber
