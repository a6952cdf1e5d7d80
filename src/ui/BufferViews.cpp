#include "ui/BufferViews.hpp"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <utility>

#include "ui/TitleStyle.hpp"
#include "ui/frmBuffer.hpp"
#include "ui/frmConfig.hpp"
#include "ui/frmEEPROM.hpp"

namespace Tamber {
namespace {

BufferForm& FormOf(const QMdiSubWindow& view) {
    return *static_cast<BufferForm*>(view.widget());
}

}  // namespace

BufferViews::BufferViews(QMdiArea& area, const modFunc& program)
    : area_(area), program_(program), letters_(RememberedLetters()) {
    MakeActions();
    area_.viewport()->installEventFilter(this);
}

bool BufferViews::HasEeprom() const {
    return SelectedRecord(program_).EepromBytes != 0;
}

// The title is set last: at every step before, the area would fit it into the frame again.
void BufferViews::Open(QPointer<QMdiSubWindow>& view, BufferForm* form) {
    view = new QMdiSubWindow;
    auto* style = new TitleStyle;
    style->setParent(view);
    view->setStyle(style);
    view->installEventFilter(this);
    const QString title = form->windowTitle();
    form->setWindowTitle(QString());
    form->ShowLetters(letters_);
    form->Body().setContextMenuPolicy(Qt::ActionsContextMenu);
    form->Body().addActions(letterActions_);
    // What is dropped on a view is the main window's.
    for (QWidget* part : form->findChildren<QWidget*>())
        part->setAcceptDrops(false);
    view->setWidget(form);
    view->setAttribute(Qt::WA_DeleteOnClose);
    area_.addSubWindow(view);
    view->setGeometry(Home(*view));
    form->setWindowTitle(title);
}

// The EEPROM view is below the program-memory view, the configuration view to its right.
QRect BufferViews::Home(const QMdiSubWindow& view) const {
    QRect home(QPoint(), FormOf(view).DesignSize().grownBy(view.contentsMargins()));
    if (programMemory_ && &view == eeprom_)
        home.moveTop(programMemory_->geometry().bottom() + 1);
    if (programMemory_ && &view == configuration_)
        home.moveLeft(programMemory_->geometry().right() + 1);
    return home;
}

QMdiSubWindow& BufferViews::ProgramMemoryView() {
    if (!programMemory_) {
        auto* form = new frmBuffer(program_);
        form->Body().addAction(goTo_);
        Open(programMemory_, form);
    }
    return *programMemory_;
}

QMdiSubWindow& BufferViews::EepromView() {
    if (!eeprom_) {
        ProgramMemoryView();
        Open(eeprom_, new frmEEPROM(program_));
    }
    return *eeprom_;
}

QMdiSubWindow& BufferViews::ConfigurationView() {
    if (!configuration_) {
        ProgramMemoryView();
        Open(configuration_, new frmConfig(program_));
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

void BufferViews::Activate(const Regions& regions) {
    const bool configuration = regions.IdLocations || regions.ConfigurationWord;
    for (const auto& [reopened, view] : {std::pair{regions.ProgramMemory, programMemory_},
                                         {regions.Eeprom, eeprom_},
                                         {configuration, configuration_}})
        if (reopened && view) {
            BringToFront(*view);
            FormOf(*view).setFocus();
            return;
        }
}

void BufferViews::CloseAll() {
    delete programMemory_;
    delete eeprom_;
    delete configuration_;
}

}  // namespace Tamber
