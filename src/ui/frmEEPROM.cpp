#include "ui/frmEEPROM.hpp"

#include "ui/DumpText.hpp"
#include "ui/DumpTextBox.hpp"

namespace Tamber {
namespace {

constexpr int ClientWidth = 9780;  // twips
constexpr int ClientHeight = 3885;

}  // namespace

frmEEPROM::frmEEPROM(const modFunc& program)
    : BufferForm("frmEEPROM", "EEPROM", ClientWidth, ClientHeight),
      program_(program),
      txtBuffer(new DumpTextBox(this)),
      DumpHeader(EepromDumpHeader()) {
    txtBuffer->setAccessibleName("EEPROM");
    txtBuffer->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    txtBuffer->OfferCopies([this] { return DumpHeader + DumpBody; });
    setFocusProxy(txtBuffer);
    UpdateBuffer();
}

QWidget& frmEEPROM::Body() {
    return *txtBuffer;
}

void frmEEPROM::Arrange() {
    Put(*txtBuffer, "txtBuffer", 120, 120, 9495, 3615);
    txtBuffer->resize(txtBuffer->size() + size() - DesignSize());
    txtBuffer->ShowLetters(DumpFont(true), Scaled(3615));
}

void frmEEPROM::UpdateBuffer() {
    const DeviceRecord& device = SelectedRecord(program_);
    DumpBody = EepromDump(program_.image, device.EepromBytes);
    txtBuffer->ShowDump(DumpHeader + DumpBody);
}

}  // namespace Tamber
