#include "ui/frmBuffer.hpp"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "core/HexText.hpp"
#include "core/ImageSummary.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/DumpText.hpp"
#include "ui/DumpTextBox.hpp"

namespace Tamber {
namespace {

constexpr int ClientWidth = 7920;  // twips
constexpr int ClientHeight = 3930;
constexpr int HeightWithLabels = 4695;
constexpr int BoxHeight = 3615;

}  // namespace

frmBuffer::frmBuffer(const modFunc& program)
    : BufferForm("frmBuffer", "Program Memory", ClientWidth, ClientHeight),
      program_(program),
      DumpHeader(ProgramDumpHeader()) {
    MakeControls();
    setFocusProxy(txtBuffer);
    vsc->setRange(0, ProgramDumpTopRowMax(ProgramWords()));
    UpdateBuffer();
}

void frmBuffer::MakeControls() {
    txtBuffer = new DumpTextBox(this);
    txtBuffer->setAccessibleName("Program memory");
    txtBuffer->OfferCopies([this] {
        return DumpHeader + ProgramDump(program_.image, 0, ProgramDumpRowsOf(ProgramWords()));
    });
    txtBuffer->installEventFilter(this);
    txtBuffer->viewport()->installEventFilter(this);
    vsc = new QScrollBar(Qt::Vertical, this);
    vsc->setAccessibleName("Rows");
    vsc->setSingleStep(1);
    vsc->setPageStep(ProgramDumpRows);
    vsc->setTracking(false);  // the text follows when the thumb is let go
    vsc->setFocusPolicy(Qt::StrongFocus);
    connect(vsc, &QScrollBar::valueChanged, this, &frmBuffer::vsc_Change);
    border_ = new QFrame(this);
    border_->setFrameStyle(QFrame::Box | QFrame::Plain);
    border_->setAttribute(Qt::WA_TransparentForMouseEvents);
    lblAddressCaption = new QLabel("Address:", this);
    lblAddress = new QLabel("0000", this);
    lblCheckSumCaption = new QLabel("CheckSum:", this);
    lblCheckSum = new QLabel("0000", this);
    for (QLabel* value : {lblAddress, lblCheckSum})
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

// A view made taller shows the labels first, then more rows. The scroll bar lies over the text
// box's right edge, so the border is drawn once more, over both.
void frmBuffer::Arrange() {
    const int wider = width() - DesignSize().width();
    const int shorter = std::min(height() - DesignSize().height(), 0);
    const int taller = std::max(height() - Scaled(HeightWithLabels), 0);
    Put(*txtBuffer, "txtBuffer", 120, 120, 7695, BoxHeight);
    txtBuffer->resize(txtBuffer->size() + QSize(wider, shorter + taller));
    Put(*vsc, "vsc", 7560, 120, 255, BoxHeight);
    vsc->setGeometry(vsc->x() + wider, vsc->y(), vsc->width(), txtBuffer->height());
    border_->setObjectName("shpBorder");
    border_->setGeometry(txtBuffer->geometry());
    Put(*lblAddressCaption, "lblAddressCaption", 120, 4320, 615, 255);
    Put(*lblAddress, "lblAddress", 840, 4320, 615, 255);
    Put(*lblCheckSumCaption, "lblCheckSumCaption", 1920, 4320, 855, 255);
    Put(*lblCheckSum, "lblCheckSum", 2880, 4320, 615, 255);
    for (QLabel* caption : {lblAddressCaption, lblCheckSumCaption})
        caption->setFont(Fitted(CaptionFont(), caption->text(), caption->width()));
    for (QLabel* value : {lblAddress, lblCheckSum})
        value->setFont(DumpFont(true));
    for (QLabel* label : {lblAddressCaption, lblAddress, lblCheckSumCaption, lblCheckSum})
        label->move(label->x(), label->y() + taller);
    txtBuffer->ShowLetters(DumpFont(true), Scaled(BoxHeight));
    FitRows();
}

// A small device's view shows sixteen rows all the same, but no more.
void frmBuffer::FitRows() {
    const int most = std::max(ProgramDumpRowsOf(ProgramWords()), ProgramDumpRows);
    const int rows = std::min(txtBuffer->RowsThatFit(Scaled(BoxHeight)), most);
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
