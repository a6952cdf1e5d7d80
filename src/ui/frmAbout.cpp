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
constexpr std::chrono::milliseconds OnScreen(3000);

constexpr QColor Black(0, 0, 0);
constexpr QColor Blue(0, 0, 0xFF);
constexpr QColor DarkBlue(0, 0, 0x80);

struct AboutText {
    const char* text;
    int left, top, width, height;  // twips
    double points;
    QColor color;
};

constexpr AboutText Texts[] = {
    {"PIC Programmer", 720, 120, 3495, 615, 20.25, Black},
    {"ver.1.01, 14/03/05", 720, 720, 3495, 375, 9.75, Black},
    {TAMBER_MAKER, 240, 1320, 4455, 495, 15.75, Blue},
    {TAMBER_EMAIL, 720, 1800, 3495, 495, 9.75, DarkBlue},
    {TAMBER_WEB, 720, 2160, 3495, 495, 9.75, DarkBlue},
};

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
    setObjectName("frmAbout");
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setFixedSize(Pixels(4905), Pixels(3090));
    setAccessibleName("About");
    setToolTip("Tamber " TAMBER_VERSION);
    QPalette palette;
    palette.setColor(QPalette::Window, PaleBlue);
    setPalette(palette);
    int index = 0;
    for (const AboutText& about : Texts) {
        auto* label = new QLabel(this);
        Place(*label, ("lblAbout" + std::to_string(index++)).c_str(), about.left, about.top,
              about.width, about.height);
        palette.setColor(QPalette::WindowText, about.color);
        label->setPalette(palette);
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        label->setTextFormat(Qt::PlainText);
        const QString text = QString::fromUtf8(about.text);
        label->setFont(FittedWhole(ComicFont(about.points), text, label->width()));
        label->setText(text);
        label->setHidden(text.isEmpty());
    }
    image_ = new QLabel(this);
    Place(*image_, "Image1", 120, 120, 480, 480);
    image_->setAccessibleName("Icon");
}

bool frmAbout::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::Paint && !std::exchange(onScreen_, true))
        QMetaObject::invokeMethod(
            this, [this] { ComesOnScreen(); }, Qt::QueuedConnection);
    return handled;
}

// The splash must be on the screen at once. Reading the icon makes Qt load its readers for all
// kinds of pictures, so the icon comes after the texts.
void frmAbout::ComesOnScreen() {
    image_->setPixmap(ApplicationIcon().pixmap(image_->size(), devicePixelRatioF()));
    if (onceOnScreen_)
        onceOnScreen_();
}

// However the box is closed, it closes only once.
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
