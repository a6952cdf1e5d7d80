#include "ui/frmConfig.hpp"

#include <QLabel>
#include <QLineEdit>

#include "core/ImageSummary.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

QLineEdit* MakeTextBox(QWidget* parent, const char* text) {
    auto* box = new QLineEdit(text, parent);
    box->setFont(CourierFont(9.75, false));
    box->setReadOnly(true);
    box->setTextMargins(0, 0, 0, 0);
    return box;
}

void MakeCaption(QWidget* parent, const char* name, const char* text, int top, int width) {
    auto* caption = new QLabel(parent);
    caption->setFont(SansSerifFont());
    Place(*caption, name, 120, top, width, 255);
    ShowFitted(*caption, text);
}

}  // namespace

frmConfig::frmConfig(const modFunc& program)
    : program_(program),
      txtIDLOCS(MakeTextBox(this, "FFFFFFFF")),
      txtConfig(MakeTextBox(this, "3FFF")) {
    setObjectName("frmConfig");
    setWindowTitle("Configuration");
    MakeCaption(this, "lblIDLOCS", "ID Locations:", 120, 1095);
    Place(*txtIDLOCS, "txtIDLOCS", 1200, 120, 1095, 285);
    MakeCaption(this, "lblConfig", "Configuration Word:", 480, 1455);
    Place(*txtConfig, "txtConfig", 1680, 480, 615, 285);
    txtIDLOCS->setAccessibleName("ID Locations");
    txtConfig->setAccessibleName("Configuration Word");
    UpdateLocs();
}

void frmConfig::UpdateLocs() {
    txtIDLOCS->setText(QString::fromStdString(IdLocationsText(program_.image)));
    txtConfig->setText(QString::fromStdString(ConfigurationWordText(program_.image)));
}

}  // namespace Tamber
