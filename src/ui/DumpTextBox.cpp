#include "ui/DumpTextBox.hpp"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "ui/BufferForm.hpp"
#include "ui/DumpText.hpp"

namespace Tamber {
namespace {

QString Lines(const std::string& dump) {
    QString text = QString::fromLatin1(dump.data(), static_cast<qsizetype>(dump.size()));
    text.remove('\r');
    if (text.endsWith('\n'))
        text.chop(1);
    return text;
}

void Copy(const QString& text) {
    QApplication::clipboard()->setText(text);
}

}  // namespace

DumpTextBox::DumpTextBox(QWidget* parent) : QTextEdit(parent) {
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(QTextEdit::NoWrap);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::Box);
    setFrameShadow(QFrame::Plain);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    document()->setDocumentMargin(0);
    LeaveRight(0);
}

void DumpTextBox::LeaveRight(int width) {
    setViewportMargins(2, 0, width, 0);
}

void DumpTextBox::ShowDump(const std::string& dump) {
    clear();
    QTextCursor(document()).insertText(Lines(dump));
    SetLineHeight();
    moveCursor(QTextCursor::Start);
}

void DumpTextBox::ShowLetters(const QFont& font, int height) {
    const int line = (height - 2 * frameWidth()) / (1 + ProgramDumpRows);
    if (line == linePixels_ && font == this->font())
        return;
    linePixels_ = line;
    setFont(font);
    SetLineHeight();
}

void DumpTextBox::SetLineHeight() {
    QTextBlockFormat lines;
    lines.setLineHeight(linePixels_, QTextBlockFormat::FixedHeight);
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    all.mergeBlockFormat(lines);
}

int DumpTextBox::RowsThatFit(int height) const {
    const int more = viewport()->height() - (height - 2 * frameWidth());
    const int line = std::max(linePixels_, 1);
    return std::max(1, ProgramDumpRows + (more >= 0 ? more : more - line + 1) / line);
}

void DumpTextBox::Select(int line, int column, int length) {
    QTextCursor cursor(document()->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, column);
    cursor.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor, length);
    setTextCursor(cursor);
}

void DumpTextBox::OfferCopies(std::function<std::string()> wholeMemory) {
    setContextMenuPolicy(Qt::ActionsContextMenu);
    const auto offer = [this](const char* name, const char* caption, auto act) {
        auto* action = new QAction(caption, this);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, act);
        addAction(action);
        return action;
    };
    QAction* selection = offer("CopySelection", "&Copy\tCtrl+C", [this] { copy(); });
    selection->setEnabled(false);
    connect(this, &QTextEdit::copyAvailable, selection, &QAction::setEnabled);
    offer("CopyView", "Copy &View", [this] { Copy(toPlainText()); });
    offer("CopyMemory", "Copy Whole &Memory",
          [whole = std::move(wholeMemory)] { Copy(Lines(whole())); });
}

// A text box keeps the colours of the moment when it was made or enabled, even those of an inactive
// window.
bool DumpTextBox::event(QEvent* event) {
    const bool handled = QTextEdit::event(event);
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate) {
        QEvent palette(QEvent::PaletteChange);
        changeEvent(&palette);
    }
    return handled;
}

void DumpTextBox::wheelEvent(QWheelEvent* event) {
    if (ForLetters(*event))
        event->ignore();
    else
        QTextEdit::wheelEvent(event);
}

}  // namespace Tamber
