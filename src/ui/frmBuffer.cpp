#include "ui/frmBuffer.hpp"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "core/HexText.hpp"
#include "core/ImageSummary.hpp"
#include "ui/DumpText.hpp"
#include "ui/DumpTextBox.hpp"

namespace Tamber {
frmBuffer::frmBuffer(const modFunc& program)
    : BufferForm("frmBuffer", "Program Memory", 7920, 3930),
      program_(program),
      DumpHeader(ProgramDumpHeader()) {
    MakeControls();
    setFocusProxy(txtBuffer);
    vsc->setRange(0, ProgramDumpTopRowMax(ProgramWords()));
    UpdateBuffer();
}

// A small device's view shows sixteen rows all the same, but no more.
void frmBuffer::FitRows() {
    const QScrollBar* across = txtBuffer->horizontalScrollBar();
    const bool shown = across->isVisibleTo(txtBuffer);
    const int below = shown ? across->height() + txtBuffer->frameWidth() : 0;
    vsc->resize(vsc->width(), txtBuffer->height() - below);
    const int most = std::max(ProgramDumpRowsOf(ProgramWords()), ProgramDumpRows);
    const int rows = std::min(txtBuffer->RowsThatFit(BoxHeight()), most);
    if (rows == rows_)
        return;
    rows_ = rows;
    vsc->setPageStep(rows_);
    vsc->setMaximum(ProgramDumpTopRowMax(ProgramWords(), rows_));
    UpdateBuffer();
}

void frmBuffer::UpdateBuffer() {
    DumpBody = ProgramDump(program_.image, TopRow, rows_);
    txtBuffer->ShowDump(DumpHeader + DumpBody);
    lblAddress->setText(
        QString::fromStdString(HexWord(static_cast<std::uint32_t>(TopRow * WordsInRow))));
    lblCheckSum->setText(
        QString::fromStdString(HexWord(ProgramChecksum(program_.image, ProgramWords()))));
}

void frmBuffer::GoTo(int address) {
    constexpr int firstWord = 5;  // columns
    constexpr int digits = 4;
    const int row = address / WordsInRow;
    if (row < TopRow || row >= TopRow + rows_)
        vsc->setValue(row);
    txtBuffer->Select(1 + row - TopRow, firstWord + address % WordsInRow * (digits + 1), digits);
    txtBuffer->setFocus();
}

QWidget& frmBuffer::Body() {
    return *txtBuffer;
}

void frmBuffer::vsc_Change(int value) {
    TopRow = value;
    UpdateBuffer();
}

bool frmBuffer::ScrollByKey(int key) {
    switch (key) {
        case Qt::Key_Up:
            vsc->triggerAction(QScrollBar::SliderSingleStepSub);
            return true;
        case Qt::Key_Down:
            vsc->triggerAction(QScrollBar::SliderSingleStepAdd);
            return true;
        case Qt::Key_PageUp:
            vsc->triggerAction(QScrollBar::SliderPageStepSub);
            return true;
        case Qt::Key_PageDown:
            vsc->triggerAction(QScrollBar::SliderPageStepAdd);
            return true;
        case Qt::Key_Home:
            vsc->triggerAction(QScrollBar::SliderToMinimum);
            return true;
        case Qt::Key_End:
            vsc->triggerAction(QScrollBar::SliderToMaximum);
            return true;
        default:
            return false;
    }
}

// The keys and the wheel scroll from within the text box too, which has nothing of its own to
// scroll; with Shift, the keys extend the selection there.
bool frmBuffer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtBuffer->viewport()) {
        if (event->type() == QEvent::Wheel && !ForLetters(*event))
            return QCoreApplication::sendEvent(vsc, event);
        if (event->type() == QEvent::Resize)
            QMetaObject::invokeMethod(
                this, [this] { FitRows(); }, Qt::QueuedConnection);
    }
    if (event->type() == QEvent::KeyPress && watched == txtBuffer) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (!(key->modifiers() & Qt::ShiftModifier) && ScrollByKey(key->key()))
            return true;
    }
    return BufferForm::eventFilter(watched, event);
}

void frmBuffer::wheelEvent(QWheelEvent* event) {
    if (ForLetters(*event))
        event->ignore();
    else
        QCoreApplication::sendEvent(vsc, event);
}

}  // namespace Tamber
