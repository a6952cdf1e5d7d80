#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QWheelEvent>
#include <algorithm>

#include "platform/qt/UserMemory.hpp"
#include "ui/BufferViews.hpp"
#include "ui/frmBuffer.hpp"
#include "ui/frmGoTo.hpp"

namespace Tamber {
namespace {

// Per cent of the designed size.
constexpr int DesignedLetters = 100;
constexpr int SmallestLetters = 50;
constexpr int LargestLetters = 300;
constexpr int LettersStep = 10;
constexpr char LettersKey[] = "views/letters";

}  // namespace

int BufferViews::RememberedLetters() {
    return std::clamp(UserMemory().value(LettersKey, DesignedLetters).toInt(), SmallestLetters,
                      LargestLetters);
}

QAction* BufferViews::MakeAction(const char* name, const char* caption,
                                 const QList<QKeySequence>& keys, void (BufferViews::*act)()) {
    auto* action = new QAction(caption, &area_);
    action->setObjectName(name);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, act);
    area_.addAction(action);
    return action;
}

void BufferViews::MakeActions() {
    const auto key = [](const char* keys) { return QKeySequence(keys); };
    goTo_ = MakeAction("ViewGoTo", "&Go to Address...", {key("Ctrl+G")}, &BufferViews::GoToAddress);
    letterActions_ = {
        MakeAction("ViewLarger", "&Larger Letters", {key("Ctrl++"), key("Ctrl+=")},
                   &BufferViews::EnlargeLetters),
        MakeAction("ViewSmaller", "&Smaller Letters", {key("Ctrl+-")}, &BufferViews::ReduceLetters),
        MakeAction("ViewNormal", "&Normal Letters", {key("Ctrl+0")}, &BufferViews::RestoreLetters)};
    MakeAction("ViewSystemMenu", "", {key("Alt+-")}, &BufferViews::ShowSystemMenu);
}

void BufferViews::EnlargeLetters() {
    ChangeLetters(letters_ + LettersStep);
}

void BufferViews::ReduceLetters() {
    ChangeLetters(letters_ - LettersStep);
}

void BufferViews::RestoreLetters() {
    ChangeLetters(DesignedLetters);
}

// A view that stands as it was opened grows with its letters; one that the user has moved or sized
// stays.
void BufferViews::ChangeLetters(int percent) {
    letters_ = std::clamp(percent, SmallestLetters, LargestLetters);
    UserMemory().setValue(LettersKey, letters_);
    QList<QMdiSubWindow*> atHome;
    QList<QMdiSubWindow*> open;
    for (QMdiSubWindow* view : {programMemory_.get(), eeprom_.get(), configuration_.get()})
        if (view)
            open.append(view);
    for (QMdiSubWindow* view : open)
        if (view->geometry() == Home(*view))
            atHome.append(view);
    for (QMdiSubWindow* view : open) {
        static_cast<BufferForm*>(view->widget())->ShowLetters(letters_);
        if (atHome.contains(view))
            view->setGeometry(Home(*view));
    }
}

int BufferViews::LastAddress() const {
    const int words = SelectedRecord(program_).ProgramWords;
    const int shown = std::max(ProgramDumpRowsOf(words), ProgramDumpRows) * WordsInRow;
    return std::clamp(words, 1, shown) - 1;
}

void BufferViews::GoTo(int address) {
    BringToFront(ProgramMemoryView());
    static_cast<frmBuffer*>(programMemory_->widget())->GoTo(address);
}

void BufferViews::GoToAddress() {
    BringToFront(ProgramMemoryView());
    if (const auto address = frmGoTo(*area_.window(), LastAddress()).Ask())
        GoTo(*address);
}

void BufferViews::ShowSystemMenu() {
    if (QMdiSubWindow* view = area_.activeSubWindow())
        view->showSystemMenu();
}

// The wheel with Ctrl comes here from whatever is below it, in a view or beside the views.
bool BufferViews::eventFilter(QObject* watched, QEvent* event) {
    if (!ForLetters(*event))
        return QObject::eventFilter(watched, event);
    const int turned = static_cast<QWheelEvent*>(event)->angleDelta().y();
    if (turned != 0)
        ChangeLetters(letters_ + (turned > 0 ? LettersStep : -LettersStep));
    return true;
}

}  // namespace Tamber
