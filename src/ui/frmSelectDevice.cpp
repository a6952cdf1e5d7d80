#include "ui/frmSelectDevice.hpp"

#include <QFrame>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/RowList.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/mdiMain.hpp"

namespace Tamber {
namespace {

constexpr QColor SocketGreen(0, 0xC0, 0);

struct Outline {
    const char* name;
    int left, top, width, height;  // twips
};

// The packages sit at the lower end of the socket, with pin 1 at that end.
constexpr Outline Packages[] = {
    {"shp40P", 2280, 120, 375, 1935},  {"shp28P", 2280, 720, 375, 1335},
    {"shp18P", 2280, 1200, 375, 855},  {"shp8P", 2280, 1680, 375, 375},
    {"shpPin1", 2400, 1920, 135, 135},
};

struct Caption {
    const char* name;
    const char* text;
    int top;  // twips
};

constexpr Caption Captions[] = {
    {"lbl40P", "40P", 120}, {"lbl28P", "28P", 600}, {"lbl18P", "18P", 1080},
    {"lbl8P", "8 P", 1560}, {"lblPin1", "1", 1920},
};

// Drawn on the socket's green, so black on every desktop.
void AddOutline(QWidget* parent, const Outline& outline) {
    auto* shape = new QFrame(parent);
    Place(*shape, outline.name, outline.left, outline.top, outline.width, outline.height);
    shape->setFrameStyle(QFrame::Box | QFrame::Plain);
    QPalette palette = shape->palette();
    palette.setColor(QPalette::WindowText, Qt::black);
    shape->setPalette(palette);
}

QString Describe(const DeviceRecord& device) {
    const QString eeprom = device.EepromBytes == 0
                               ? QString("no EEPROM")
                               : QString("%1 bytes of EEPROM").arg(device.EepromBytes);
    return QString("%1 words, %2, type %3, %4")
        .arg(device.ProgramWords)
        .arg(eeprom)
        .arg(device.TypeCode)
        .arg(device.EraseSupported ? "can be erased" : "cannot be erased");
}

}  // namespace

frmSelectDevice::frmSelectDevice(mdiMain& owner, modFunc& program)
    : QDialog(&owner), owner_(owner), program_(program) {
    MakeControls();
    MakeSocketDrawing();
    Form_Load();
    CentreOnScreen(*this);
}

void frmSelectDevice::ShowModally() {
    ExecuteModal(*this);
}

void frmSelectDevice::MakeControls() {
    DesignDialog(*this, "frmSelectDevice", "Select Device", 3285, 2940);
    listDevice = new RowList(this);
    Place(*listDevice, "listDevice", 240, 120, 1695, 2010);
    listDevice->setAccessibleName("Devices");
    cmdOk = new QPushButton("OK", this);
    Place(*cmdOk, "cmdOk", 1800, 2400, 1095, 375);
    cmdOk->setDefault(true);
    cmdCancel = new QPushButton("Cancel", this);
    Place(*cmdCancel, "cmdCancel", 240, 2400, 1095, 375);
    connect(cmdOk, &QPushButton::clicked, this, &frmSelectDevice::cmdOk_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmSelectDevice::cmdCancel_Click);
    connect(listDevice, &QListWidget::itemDoubleClicked, this, &frmSelectDevice::cmdOk_Click);
}

void frmSelectDevice::MakeSocketDrawing() {
    auto* socket = new QWidget(this);
    Place(*socket, "shpSocket", 2160, 120, 615, 1935);
    QPalette palette = socket->palette();
    palette.setColor(QPalette::Window, SocketGreen);
    socket->setPalette(palette);
    socket->setAutoFillBackground(true);
    for (const Outline& outline : Packages)
        AddOutline(this, outline);
    auto* line = new QFrame(this);
    Place(*line, "linPin1", 2760, 2040, 15, 120);
    line->setFrameStyle(QFrame::VLine | QFrame::Plain);
    for (const Caption& caption : Captions) {
        auto* label = new QLabel(caption.text, this);
        Place(*label, caption.name, 2880, caption.top, 405, 255);
    }
}

void frmSelectDevice::Form_Load() {
    for (int slot = 1; slot <= program_.settings.DeviceCount; ++slot) {
        const DeviceRecord& device = program_.catalogue.Record(slot);
        auto* row = new QListWidgetItem(OutsideText(device.Name), listDevice);
        row->setToolTip(Describe(device));
        row->setData(Qt::AccessibleDescriptionRole, Describe(device));
    }
    listDevice->setCurrentRow(program_.settings.SelectedDevice - 1);
    listDevice->setFocus();
}

void frmSelectDevice::cmdOk_Click() {
    owner_.SelectDevice(static_cast<std::int16_t>(HighlightedRow(*listDevice) + 1));
    accept();
}

void frmSelectDevice::cmdCancel_Click() {
    reject();
}

// Cancel, Escape and the close box end up here.
void frmSelectDevice::reject() {
    program_.SelectionCancelled = true;
    QDialog::reject();
}

}  // namespace Tamber
