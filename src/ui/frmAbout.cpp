#include "ui/frmAbout.hpp"

#include <QEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <chrono>
#include <utility>

#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

constexpr QColor PaleBlue(0xC0, 0xC0, 0xFF);
constexpr QColor Blue(0, 0, 0xFF);
constexpr QColor DarkBlue(0, 0, 0x80);
constexpr std::chrono::milliseconds OnScreen(3000);

}  // namespace

frmAbout::frmAbout(QWidget* owner, Platform& platform, std::function<void()> closed)
    : QDialog(owner), tmrShow(platform.NewTimer()), closed_(std::move(closed)) {
    MakeControls();
    CentreOnScreen(*this);
    tmrShow->OnTick([this] { tmrShow_Timer(); });
    tmrShow->SetInterval(OnScreen);
    tmrShow->Enable();
}

void frmAbout::ShowModally() {
    ExecuteModal(*this);
}

void frmAbout::MakeControls() {
    DesignDialog(*this, "frmAbout", "", 4905, 3090);
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setAccessibleName("About");
    QPalette palette;
    palette.setColor(QPalette::Window, PaleBlue);
    setPalette(palette);
    // The upper labels are made last: where two overlap, the upper one's text stays whole.
    AddLabel(4, TAMBER_WEB, 720, 2160, 3495, 495, 9.75, DarkBlue);
    AddLabel(3, TAMBER_EMAIL, 720, 1800, 3495, 495, 9.75, DarkBlue);
    AddLabel(2, TAMBER_MAKER, 240, 1320, 4455, 495, 15.75, Blue);
    AddLabel(1, "ver.1.01, 14/03/05", 720, 720, 3495, 375, 9.75, Qt::black);
    AddLabel(0, "PIC Programmer", 720, 120, 3495, 615, 20.25, Qt::black);
    image_ = new QLabel(this);
    Place(*image_, "Image1", 120, 120, 480, 480);
    image_->setAccessibleName("Icon");
}

void frmAbout::AddLabel(int index, const char* text, int left, int top, int width, int height,
                        double points, QColor color) {
    auto* label = new QLabel(this);
    Place(*label, ("lblAbout" + std::to_string(index)).c_str(), left, top, width, height);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    label->setFont(ComicFont(points));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
    ShowFitted(*label, text);
}

bool frmAbout::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::Paint && !std::exchange(onScreen_, true))
        QMetaObject::invokeMethod(
            this, [this] { ComesOnScreen(); }, Qt::QueuedConnection);
    return handled;
}

// The splash is the first thing on the screen, and must be there at once. Reading the icon makes Qt
// load its readers of all kinds of pictures, so that comes behind the texts.
void frmAbout::ComesOnScreen() {
    image_->setPixmap(ApplicationIcon().pixmap(QSize(32, 32), devicePixelRatioF()));
    if (onceOnScreen_)
        onceOnScreen_();
}

// However the box is closed, it goes only once.
void frmAbout::reject() {
    if (std::exchange(done_, true))
        return;
    tmrShow->Disable();
    QDialog::reject();
    if (closed_)
        closed_();
}

void frmAbout::tmrShow_Timer() {
    reject();
}

void frmAbout::mousePressEvent(QMouseEvent* event) {
    if (!childAt(event->pos()))
        reject();
}

void frmAbout::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            return reject();
        default:
            return QDialog::keyPressEvent(event);
    }
}

}  // namespace Tamber
