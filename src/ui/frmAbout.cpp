#include "ui/frmAbout.hpp"

#include <QEvent>
#include <QFile>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <chrono>
#include <utility>

#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/AboutTexts.hpp"

namespace Tamber {
namespace {

constexpr QColor PaleBlue(0xC0, 0xC0, 0xFF);
constexpr std::chrono::milliseconds OnScreen(3000);

// Shows an outline instead of its text, which is there for a screen reader.
class LetteredLabel final : public QLabel {
  public:
    LetteredLabel(QWidget* parent, QPainterPath outline)
        : QLabel(parent), outline_(std::move(outline)) {}

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(outline_, palette().windowText());
    }

  private:
    QPainterPath outline_;
};

QList<QPainterPath> Lettering() {
    QFile file(QStringLiteral(":/lettering/about"));
    return file.open(QIODevice::ReadOnly) ? ReadLettering(file) : QList<QPainterPath>();
}

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

// No font is asked for here, as that makes Qt read all of the system's.
void frmAbout::MakeControls() {
    setObjectName("frmAbout");
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setFixedSize(Pixels(4905), Pixels(3090));
    setAccessibleName("About");
    QPalette palette;
    palette.setColor(QPalette::Window, PaleBlue);
    setPalette(palette);
    // The upper labels are made last: where two overlap, the upper one's text stays whole.
    const QList<QPainterPath> outlines = Lettering();
    for (int index = static_cast<int>(AboutTexts.size()) - 1; index >= 0; --index)
        AddLabel(index, outlines.value(index));
    image_ = new QLabel(this);
    Place(*image_, "Image1", 120, 120, 480, 480);
    image_->setAccessibleName("Icon");
}

void frmAbout::AddLabel(int index, const QPainterPath& outline) {
    const AboutText& about = AboutTexts[static_cast<std::size_t>(index)];
    auto* label = new LetteredLabel(this, outline);
    Place(*label, ("lblAbout" + std::to_string(index)).c_str(), about.left, about.top, about.width,
          about.height);
    label->setTextFormat(Qt::PlainText);
    label->setText(about.text);
    QPalette palette;
    palette.setColor(QPalette::WindowText, about.color);
    label->setPalette(palette);
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
