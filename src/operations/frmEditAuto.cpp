#include "operations/frmEditAuto.hpp"

#include <QListWidget>
#include <QPushButton>
#include <algorithm>

#include "StartUp.hpp"
#include "core/AutoSequence.hpp"
#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

constexpr int ClientWidth = 4665;  // twips
constexpr int ClientHeight = 2175;

QString NameOf(std::int16_t code) {
    const std::string_view name = FunctionName(code);
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

}  // namespace

frmEditAuto::frmEditAuto(QWidget& owner, modFunc& program, MessageBoxes& boxes)
    : QDialog(&owner), program_(program), boxes_(boxes) {
    MakeControls();
    Form_Load();
}

void frmEditAuto::ShowModally() {
    ExecuteModal(*this);
}

QPushButton* frmEditAuto::AddButton(const char* name, const char* caption, int left, int top,
                                    int width, int height, void (frmEditAuto::*click)()) {
    QPushButton* button = MakeButton(caption, this);
    Place(*button, name, left, top, width, height);
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

void frmEditAuto::MakeControls() {
    DesignDialog(*this, "frmEditAuto", "Edit Auto", ClientWidth, ClientHeight);
    // Made in the order in which the keyboard goes through them.
    lstIn = new QListWidget(this);
    Place(*lstIn, "lstIn", 120, 120, 1695, 1425);
    lstIn->setAccessibleName("Functions");
    lstOut = new QListWidget(this);
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
    lstIn->setFocus();
}

void frmEditAuto::Form_Load() {
    for (const FunctionCode code : {FunctionErase, FunctionBlank, FunctionProgram, FunctionVerify})
        lstIn->addItem(NameOf(code));
    lstIn->setCurrentRow(0);
    const AutoSequence& series = program_.autoSequence;
    count_ = std::max<int>(series.AutoCount, 0);  // a negative count runs and shows nothing
    for (int entry = 1; entry <= count_; ++entry)
        if (const QString name = NameOf(series.Entries[static_cast<std::size_t>(entry)]);
            !name.isEmpty())
            lstOut->addItem(name);
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
    if (!lstIn->currentItem())
        return;
    lstOut->addItem(lstIn->currentItem()->text());
    lstOut->scrollToBottom();
    ++count_;
    EnableMoves();
}

void frmEditAuto::cmdMoveLeft_Click() {
    if (const QList<QListWidgetItem*> selected = lstOut->selectedItems(); !selected.isEmpty()) {
        delete selected.first();
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
    for (int entry = 1; entry <= count_; ++entry) {
        const QListWidgetItem* row = lstOut->item(entry - 1);
        const auto code = FunctionCodeOf(row ? row->text().toStdString() : std::string());
        if (code)
            series.Entries[static_cast<std::size_t>(entry)] = *code;
    }
    if (const auto failure = SaveAutoSequence(AutoSequenceFile(program_), series))
        boxes_.Show(Describe(*failure), ProgramTitle, BoxIcon::Critical);
    accept();
}

void frmEditAuto::cmdCancel_Click() {
    reject();
}

}  // namespace Tamber
