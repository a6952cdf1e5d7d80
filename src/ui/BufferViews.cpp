#include "ui/BufferViews.hpp"

#include <QMdiArea>
#include <QMdiSubWindow>

#include "platform/qt/WindowDesign.hpp"
#include "ui/frmBuffer.hpp"
#include "ui/frmConfig.hpp"
#include "ui/frmEEPROM.hpp"

namespace Tamber {

BufferViews::BufferViews(QMdiArea& area, const modFunc& program) : area_(area), program_(program) {}

bool BufferViews::HasEeprom() const {
    return SelectedRecord(program_).EepromBytes != 0;
}

// The title is set last: at every step before, the area would fit it into the frame again.
QMdiSubWindow* BufferViews::MakeView(QWidget* form, int clientWidth, int clientHeight) {
    auto* view = new QMdiSubWindow;
    const QString title = form->windowTitle();
    form->setWindowTitle(QString());
    view->setWidget(form);
    view->setAttribute(Qt::WA_DeleteOnClose);
    area_.addSubWindow(view);
    const QMargins frame = view->contentsMargins();
    view->resize(Pixels(clientWidth) + frame.left() + frame.right(),
                 Pixels(clientHeight) + frame.top() + frame.bottom());
    view->move(0, 0);
    form->setWindowTitle(title);
    return view;
}

QMdiSubWindow& BufferViews::ProgramMemoryView() {
    if (!programMemory_)
        programMemory_ =
            MakeView(new frmBuffer(program_), frmBuffer::ClientWidth, frmBuffer::ClientHeight);
    return *programMemory_;
}

// Below the program-memory view; the configuration view stands to its right.
QMdiSubWindow& BufferViews::EepromView() {
    if (!eeprom_) {
        const QRect home = ProgramMemoryView().geometry();
        eeprom_ =
            MakeView(new frmEEPROM(program_), frmEEPROM::ClientWidth, frmEEPROM::ClientHeight);
        eeprom_->move(0, home.top() + home.height());
    }
    return *eeprom_;
}

QMdiSubWindow& BufferViews::ConfigurationView() {
    if (!configuration_) {
        const QRect home = ProgramMemoryView().geometry();
        configuration_ =
            MakeView(new frmConfig(program_), frmConfig::ClientWidth, frmConfig::ClientHeight);
        configuration_->move(home.left() + home.width(), 0);
    }
    return *configuration_;
}

void BufferViews::BringToFront(QMdiSubWindow& view) {
    if (view.isMinimized())
        view.showNormal();
    view.show();
    area_.setActiveSubWindow(&view);
    view.raise();
}

void BufferViews::Show() {
    if (HasEeprom())
        BringToFront(EepromView());
    BringToFront(ConfigurationView());
    BringToFront(ProgramMemoryView());
}

void BufferViews::ReopenProgramMemory() {
    delete programMemory_;
    BringToFront(ProgramMemoryView());
}

void BufferViews::ReopenEeprom() {
    delete eeprom_;
    BringToFront(EepromView());
}

void BufferViews::ReopenConfiguration() {
    delete configuration_;
    BringToFront(ConfigurationView());
}

void BufferViews::CloseAll() {
    delete programMemory_;
    delete eeprom_;
    delete configuration_;
}

}  // namespace Tamber
