#include "ui/frmBuffer.hpp"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QWheelEvent>

#include "core/HexText.hpp"
#include "core/ImageSummary.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/DumpText.hpp"
#include "ui/DumpTextBox.hpp"

namespace Tamber {
namespace {

QLabel* MakeCaption(QWidget* parent, const char* name, const char* text, int left, int width) {
    auto* caption = new QLabel(parent);
    caption->setFont(SansSerifFont());
    Place(*caption, name, left, 4320, width, 255);
    ShowFitted(*caption, text);
    return caption;
}

QLabel* MakeValue(QWidget* parent, const char* name, int left) {
    auto* value = new QLabel("0000", parent);
    value->setFont(CourierFont(9.75, true));
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Place(*value, name, left, 4320, 615, 255);
    return value;
}

}  // namespace

frmBuffer::frmBuffer(const modFunc& program) : program_(program), DumpHeader(ProgramDumpHeader()) {
    setObjectName("frmBuffer");
    setWindowTitle("Program Memory");
    MakeControls();
    const DeviceRecord& device = SelectedRecord(program_);
    vsc->setRange(0, ProgramDumpTopRowMax(device.ProgramWords));
    UpdateBuffer();
}

void frmBuffer::MakeControls() {
    txtBuffer = new DumpTextBox(this);
    Place(*txtBuffer, "txtBuffer", 120, 120, 7695, 3615);
    txtBuffer->setAccessibleName("Program memory");
    txtBuffer->installEventFilter(this);
    txtBuffer->viewport()->installEventFilter(this);
    vsc = new QScrollBar(Qt::Vertical, this);
    Place(*vsc, "vsc", 7560, 120, 255, 3615);
    vsc->setAccessibleName("Rows");
    vsc->setSingleStep(1);
    vsc->setPageStep(ProgramDumpRows);
    vsc->setTracking(false);  // the text follows when the thumb is let go
    vsc->setFocusPolicy(Qt::StrongFocus);
    connect(vsc, &QScrollBar::valueChanged, this, &frmBuffer::vsc_Change);
    MakeCaption(this, "lblAddressCaption", "Address:", 120, 615);
    lblAddress = MakeValue(this, "lblAddress", 840);
    MakeCaption(this, "lblCheckSumCaption", "CheckSum:", 1920, 855);
    lblCheckSum = MakeValue(this, "lblCheckSum", 2880);
}

void frmBuffer::UpdateBuffer() {
    const DeviceRecord& device = SelectedRecord(program_);
    DumpBody = ProgramDump(program_.image, TopRow);
    txtBuffer->ShowDump(DumpHeader + DumpBody);
    lblAddress->setText(
        QString::fromStdString(HexWord(static_cast<std::uint32_t>(TopRow * WordsInRow))));
    lblCheckSum->setText(
        QString::fromStdString(HexWord(ProgramChecksum(program_.image, device.ProgramWords))));
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
    if (event->type() == QEvent::Wheel && watched == txtBuffer->viewport())
        return QCoreApplication::sendEvent(vsc, event);
    if (event->type() == QEvent::KeyPress && watched == txtBuffer) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (!(key->modifiers() & Qt::ShiftModifier) && ScrollByKey(key->key()))
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

void frmBuffer::wheelEvent(QWheelEvent* event) {
    QCoreApplication::sendEvent(vsc, event);
}

}  // namespace Tamber
