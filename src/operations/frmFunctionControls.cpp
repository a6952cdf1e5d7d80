#include <QCheckBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>

#include "operations/frmFunction.hpp"
#include "platform/qt/Contrast.hpp"
#include "platform/qt/RowList.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

constexpr int ClientWidth = 7440;  // twips
constexpr int ClientHeight = 3330;
constexpr QColor BarBlue(0, 0, 192);

QCheckBox* MakeRegionBox(QGroupBox* frame, const char* name, const char* caption, int top) {
    auto* box = new QCheckBox(caption, frame);
    box->setChecked(true);
    DrawAsDesigned(*box);
    Place(*box, name, 120, top, 1635, 255);
    return box;
}

// On the screen, a plain rectangle behind the bar; for a screen reader, the progress bar.
class ProgressGround final : public QProgressBar {
  public:
    using QProgressBar::QProgressBar;

  protected:
    void paintEvent(QPaintEvent*) override {}
};

void PlaceBar(QWidget& bar, const char* name, const QColor& color) {
    Place(bar, name, 1680, 2760, 3735, 135);
    QPalette palette = bar.palette();
    palette.setColor(QPalette::Window, color);
    bar.setPalette(palette);
    bar.setAutoFillBackground(true);
}

}  // namespace

void frmFunction::MakeControls() {
    DesignDialog(*this, "frmFunction", "Function", ClientWidth, ClientHeight);
    listFunction = new RowList(this);
    Place(*listFunction, "listFunction", 120, 240, 1455, 2400);
    listFunction->setAccessibleName("Functions");
    MakeMessageLines();
    MakeOptions();
    MakeProgress();
    MakeButtons();

    setTabOrder(listFunction, cmdRun);
    setTabOrder(cmdRun, cmdClose);
    setTabOrder(cmdClose, chkPM);
    setTabOrder(chkPM, chkEM);
    setTabOrder(chkEM, chkID);
    setTabOrder(chkID, chkCW);
    listFunction->setFocus();
}

void frmFunction::MakeMessageLines() {
    Frame1 = MakeFrame("Message:", this);
    Place(*Frame1, "Frame1", 1680, 120, 3735, 2535);
    int index = 0;
    for (QLabel*& line : lblMsg) {
        line = new QLabel(Frame1);
        line->setTextFormat(Qt::PlainText);
        line->hide();
        const std::string name = "lblMsg" + std::to_string(index);
        Place(*line, name.c_str(), 120, 240 + 240 * index, 3495, 255);
        ++index;
    }
}

void frmFunction::MakeOptions() {
    frameOption = MakeFrame("Option", this);
    Place(*frameOption, "frameOption", 5520, 120, 1815, 1335);
    chkPM = MakeRegionBox(frameOption, "chkPM", "Program Memory", 240);
    chkEM = MakeRegionBox(frameOption, "chkEM", "EEPROM", 480);
    chkID = MakeRegionBox(frameOption, "chkID", "ID Locations", 720);
    chkCW = MakeRegionBox(frameOption, "chkCW", "Config. Word", 960);
}

void frmFunction::MakeProgress() {
    shpBG = new ProgressGround(this);
    PlaceBar(*shpBG, "shpBG", Readable(palette().color(QPalette::Base), BarBlue));
    shpBG->setAccessibleName("Progress");
    shpProgress = new QFrame(this);
    PlaceBar(*shpProgress, "shpProgress", BarBlue);
    lblProgress = new QLabel(this);
    lblProgress->setFont(CourierFont(9.75, true));
    Place(*lblProgress, "lblProgress", 3000, 3000, 615, 255);
}

void frmFunction::MakeButtons() {
    cmdRun = new QPushButton("Run", this);
    Place(*cmdRun, "cmdRun", 360, 2760, 975, 375);
    cmdRun->setDefault(true);
    cmdClose = new QPushButton("Close", this);
    Place(*cmdClose, "cmdClose", 6000, 2760, 975, 375);
    connect(cmdRun, &QPushButton::clicked, this, &frmFunction::cmdRun_Click);
    connect(cmdClose, &QPushButton::clicked, this, &frmFunction::cmdClose_Click);
}

}  // namespace Tamber
