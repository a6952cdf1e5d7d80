#pragma once

#include <QWidget>
#include <string>

#include "modFunc.hpp"

class QLabel;
class QScrollBar;

namespace Tamber {

class DumpTextBox;

/// The program-memory view: sixteen rows of eight words, a scroll bar, the address of the first row
/// shown and the checksum.
class frmBuffer : public QWidget {
  public:
    static constexpr int ClientWidth = 7920;  // twips
    static constexpr int ClientHeight = 3930;

    explicit frmBuffer(const modFunc& program);

    /// Rebuilds the text and the checksum from the image.
    void UpdateBuffer();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void MakeControls();
    void vsc_Change(int value);
    bool ScrollByKey(int key);

    const modFunc& program_;
    DumpTextBox* txtBuffer = nullptr;
    QScrollBar* vsc = nullptr;
    QLabel* lblAddress = nullptr;
    QLabel* lblCheckSum = nullptr;
    std::string DumpHeader;
    std::string DumpBody;
    int TopRow = 0;
};

}  // namespace Tamber
