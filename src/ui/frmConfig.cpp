#include "ui/frmConfig.hpp"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>

#include "core/ImageSummary.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

constexpr int ClientWidth = 2625;  // twips
constexpr int ClientHeight = 960;

QLineEdit* MakeTextBox(QWidget* parent, const char* accessibleName) {
    auto* box = new QLineEdit(parent);
    box->setReadOnly(true);
    box->setTextMargins(0, 0, 0, 0);
    box->setAccessibleName(accessibleName);
    DrawAsDesigned(*box);
    return box;
}

}  // namespace

frmConfig::frmConfig(const modFunc& program)
    : BufferForm("frmConfig", "Configuration", ClientWidth, ClientHeight), program_(program) {
    MakeControls();
    UpdateLocs();
}

void frmConfig::MakeControls() {
    scroll_ = new QScrollArea(this);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->viewport()->installEventFilter(this);
    auto* sheet = new QWidget;
    lblIDLOCS = new QLabel("ID Locations:", sheet);
    txtIDLOCS = MakeTextBox(sheet, "ID Locations");
    lblConfig = new QLabel("Configuration Word:", sheet);
    txtConfig = MakeTextBox(sheet, "Configuration Word");
    scroll_->setWidget(sheet);
    setFocusProxy(txtIDLOCS);
}

void frmConfig::Arrange() {
    scroll_->resize(size());
    scroll_->widget()->resize(DesignSize());
    Put(*lblIDLOCS, "lblIDLOCS", 120, 120, 1095, 255);
    Put(*txtIDLOCS, "txtIDLOCS", 1200, 120, 1095, 285);
    Put(*lblConfig, "lblConfig", 120, 480, 1455, 255);
    Put(*txtConfig, "txtConfig", 1680, 480, 615, 285);
    for (QLabel* caption : {lblIDLOCS, lblConfig})
        caption->setFont(Fitted(CaptionFont(), caption->text(), caption->width()));
    for (QLineEdit* box : {txtIDLOCS, txtConfig})
        box->setFont(DumpFont(false));
}

void frmConfig::UpdateLocs() {
    txtIDLOCS->setText(QString::fromStdString(IdLocationsText(program_.image)));
    txtConfig->setText(QString::fromStdString(ConfigurationWordText(program_.image)));
}

bool frmConfig::eventFilter(QObject* watched, QEvent* event) {
    if (ForLetters(*event)) {
        event->ignore();
        return true;
    }
    return BufferForm::eventFilter(watched, event);
}

}  // namespace Tamber
