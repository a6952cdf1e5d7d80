#include <QFrame>
#include <QLabel>
#include <QScrollBar>
#include <algorithm>

#include "platform/qt/WindowDesign.hpp"
#include "ui/DumpTextBox.hpp"
#include "ui/frmBuffer.hpp"

namespace Tamber {
namespace {

constexpr int HeightWithLabels = 4695;  // twips
constexpr int BoxTwips = 3615;

}  // namespace

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

// A view made taller shows the labels first, then more rows.
void frmBuffer::Arrange() {
    const int shorter = std::min(height() - DesignSize().height(), 0);
    const int taller = std::max(height() - Scaled(HeightWithLabels), 0);
    ArrangeDump({width() - DesignSize().width(), shorter + taller});
    ArrangeLabels(taller);
    FitRows();
}

// The scroll bar lies over the text box's right edge, so the border is drawn once more, over both.
void frmBuffer::ArrangeDump(QSize growth) {
    Put(*txtBuffer, "txtBuffer", 120, 120, 7695, BoxTwips);
    txtBuffer->resize(txtBuffer->size() + growth);
    txtBuffer->ShowLetters(DumpFont(true), BoxHeight());
    Put(*vsc, "vsc", 7560, 120, 255, BoxTwips);
    vsc->move(vsc->x() + growth.width(), vsc->y());
    txtBuffer->LeaveRight(vsc->width());
    border_->setObjectName("shpBorder");
    border_->setGeometry(txtBuffer->geometry());
}

void frmBuffer::ArrangeLabels(int lower) {
    Put(*lblAddressCaption, "lblAddressCaption", 120, 4320, 615, 255);
    Put(*lblAddress, "lblAddress", 840, 4320, 615, 255);
    Put(*lblCheckSumCaption, "lblCheckSumCaption", 1920, 4320, 855, 255);
    Put(*lblCheckSum, "lblCheckSum", 2880, 4320, 615, 255);
    for (QLabel* caption : {lblAddressCaption, lblCheckSumCaption})
        caption->setFont(Fitted(CaptionFont(), caption->text(), caption->width()));
    for (QLabel* value : {lblAddress, lblCheckSum})
        value->setFont(DumpFont(true));
    for (QLabel* label : {lblAddressCaption, lblAddress, lblCheckSumCaption, lblCheckSum})
        label->move(label->x(), label->y() + lower);
}

int frmBuffer::BoxHeight() const {
    return Scaled(BoxTwips);
}

}  // namespace Tamber
