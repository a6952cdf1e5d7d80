#include "operations/frmEditAuto.hpp"

#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <algorithm>

#include "StartUp.hpp"
#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRows.hpp"
#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/RowList.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

constexpr int ClientWidth = 4665;  // twips
constexpr int ClientHeight = 2175;

}  // namespace

frmEditAuto::frmEditAuto(QWidget& owner, modFunc& program, MessageBoxes& boxes)
    : QDialog(&owner), program_(program), boxes_(boxes) {
    MakeControls();
    MakeShortWays();
    Form_Load();
}

void frmEditAuto::ShowModally() {
    ExecuteModal(*this);
}

QPushButton* frmEditAuto::AddButton(const char* name, const char* caption, int left, int top,
                                    int width, int height, void (frmEditAuto::*click)()) {
    QPushButton* button = new QPushButton(caption, this);
    Place(*button, name, left, top, width, height);
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

void frmEditAuto::MakeControls() {
    DesignDialog(*this, "frmEditAuto", "Edit Auto", ClientWidth, ClientHeight);
    // Made in the order in which the keyboard goes through them.
    lstIn = new RowList(this);
    Place(*lstIn, "lstIn", 120, 120, 1695, 1425);
    lstIn->setAccessibleName("Functions");
    lstOut = new RowList(this);
    Place(*lstOut, "lstOut", 2760, 120, 1695, 1425);
    lstOut->setAccessibleName("Series");
    cmdOk = AddButton("cmdOk", "OK", 3120, 1680, 975, 375, &frmEditAuto::cmdOk_Click);
    cmdOk->setDefault(true);
    cmdCancel =
        AddButton("cmdCancel", "Cancel", 600, 1680, 975, 375, &frmEditAuto::cmdCancel_Click);
    cmdMoveRight =
        AddButton("cmdMoveRight", ">", 2040, 240, 495, 255, &frmEditAuto::cmdMoveRight_Click);
    cmdMoveLeft =
        AddButton("cmdMoveLeft", "<", 2040, 600, 495, 255, &frmEditAuto::cmdMoveLeft_Click);
    cmdMoveLeftAll =
        AddButton("cmdMoveLeftAll", "<<", 2040, 960, 495, 255, &frmEditAuto::cmdMoveLeftAll_Click);
    cmdMoveRight->setToolTip("Adds the function to the series (double click)");
    cmdMoveLeft->setToolTip("Takes the highlighted function out of the series (Delete)");
    cmdMoveLeftAll->setToolTip("Empties the series");
    lstOut->setToolTip("Alt+Up and Alt+Down move the highlighted function");
    lstIn->setFocus();
}

void frmEditAuto::MakeShortWays() {
    connect(lstIn, &QListWidget::itemDoubleClicked, cmdMoveRight, &QPushButton::click);
    const auto onKey = [this](const QKeySequence& key, const auto& act) {
        connect(new QShortcut(key, lstOut, nullptr, nullptr, Qt::WidgetShortcut),
                &QShortcut::activated, this, act);
    };
    onKey(Qt::Key_Delete, [this] { cmdMoveLeft->click(); });
    onKey(Qt::ALT | Qt::Key_Up, [this] { MoveRow(-1); });
    onKey(Qt::ALT | Qt::Key_Down, [this] { MoveRow(+1); });
}

void frmEditAuto::MoveRow(int by) {
    const int row = HighlightedRow(*lstOut);
    if (row < 0 || row + by < 0 || row + by >= lstOut->count())
        return;
    lstOut->insertItem(row + by, lstOut->takeItem(row));
    lstOut->setCurrentRow(row + by);
}

void frmEditAuto::Form_Load() {
    for (const DeviceFunction& function : DeviceFunctions())
        if (function.Offered)
            AddRow(*lstIn, function.Name, function.Code);
    lstIn->setCurrentRow(0);
    const AutoSequence& series = program_.autoSequence;
    count_ = std::max<int>(series.AutoCount, 0);  // a negative count runs and shows nothing
    for (const std::int16_t code : series.Codes())
        if (const DeviceFunction* function = FindSeriesFunction(code))
            AddRow(*lstOut, function->Name, code);
    EnableMoves();
    if (count_ != 0) {
        cmdMoveLeft->setEnabled(true);
        cmdMoveLeftAll->setEnabled(true);
    }
}

// Something can be taken away while there are rows, and added while the series has room.
void frmEditAuto::EnableMoves() {
    cmdMoveLeft->setEnabled(lstOut->count() > 0);
    cmdMoveLeftAll->setEnabled(lstOut->count() > 0);
    cmdMoveRight->setEnabled(count_ < AutoSequence::LastEntry);
}

void frmEditAuto::cmdMoveRight_Click() {
    const int row = HighlightedRow(*lstIn);
    if (row < 0)
        return;
    lstOut->addItem(lstIn->item(row)->clone());
    lstOut->scrollToBottom();
    ++count_;
    EnableMoves();
}

void frmEditAuto::cmdMoveLeft_Click() {
    if (const int row = HighlightedRow(*lstOut); row >= 0) {
        delete lstOut->takeItem(row);
        --count_;
    }
    EnableMoves();
}

void frmEditAuto::cmdMoveLeftAll_Click() {
    lstOut->clear();
    count_ = 0;
    EnableMoves();
}

void frmEditAuto::cmdOk_Click() {
    AutoSequence& series = program_.autoSequence;
    series.AutoCount = static_cast<std::int16_t>(count_);
    // Entries without a row keep the codes that they had.
    for (int row = 0; row < lstOut->count(); ++row)
        series.Entries[static_cast<std::size_t>(row) + 1] = CodeOf(*lstOut->item(row));
    if (const auto saved = SaveAutoSequence(AutoSequenceFile(program_), series); !saved)
        boxes_.Show(Describe(saved.error()), ProgramTitle, BoxIcon::Critical);
    accept();
}

void frmEditAuto::cmdCancel_Click() {
    reject();
}

}  // namespace Tamber
