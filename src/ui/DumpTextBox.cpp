#include "ui/DumpTextBox.hpp"

#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

// Seventeen lines, including the heading, fit into the 241 pixels of a view's text box.
constexpr double LinePixels = 14;

}  // namespace

DumpTextBox::DumpTextBox(QWidget* parent) : QTextEdit(parent) {
    setFont(CourierFont(9.75, true));
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(QTextEdit::NoWrap);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::Box);
    setFrameShadow(QFrame::Plain);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    document()->setDocumentMargin(0);
    setViewportMargins(2, 0, 0, 0);
}

void DumpTextBox::ShowDump(const std::string& dump) {
    QTextBlockFormat lines;
    lines.setLineHeight(LinePixels, QTextBlockFormat::FixedHeight);
    QString text = QString::fromLatin1(dump.data(), static_cast<qsizetype>(dump.size()));
    text.remove('\r');
    if (text.endsWith('\n'))
        text.chop(1);
    clear();
    QTextCursor cursor(document());
    cursor.setBlockFormat(lines);
    cursor.insertText(text);
    moveCursor(QTextCursor::Start);
}

}  // namespace Tamber
