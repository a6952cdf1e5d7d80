#pragma once

#include <string>

#include "modFunc.hpp"
#include "ui/BufferForm.hpp"
#include "ui/DumpText.hpp"

class QFrame;
class QLabel;
class QScrollBar;

namespace Tamber {

class DumpTextBox;

/// The program-memory view: rows of eight words, sixteen of them at its designed size, a scroll
/// bar, the address of the first row shown and the checksum.
class frmBuffer : public BufferForm {
  public:
    explicit frmBuffer(const modFunc& program);

    /// Rebuilds the text and the checksum from the image.
    void UpdateBuffer();

    /// Brings the word at `address`, 0..8,191, into sight and selects it.
    void GoTo(int address);

    QWidget& Body() override;

  protected:
    void Arrange() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void MakeControls();
    void ArrangeDump(QSize growth);
    void ArrangeLabels(int lower);
    int BoxHeight() const;  // as designed, in pixels
    void FitRows();
    void vsc_Change(int value);
    bool ScrollByKey(int key);
    int ProgramWords() const { return SelectedRecord(program_).ProgramWords; }

    const modFunc& program_;
    DumpTextBox* txtBuffer = nullptr;
    QScrollBar* vsc = nullptr;
    QFrame* border_ = nullptr;
    QLabel* lblAddressCaption = nullptr;
    QLabel* lblAddress = nullptr;
    QLabel* lblCheckSumCaption = nullptr;
    QLabel* lblCheckSum = nullptr;
    std::string DumpHeader;
    std::string DumpBody;
    int TopRow = 0;
    int rows_ = ProgramDumpRows;
};

}  // namespace Tamber
