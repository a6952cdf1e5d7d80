#include "ui/ManualWindow.hpp"

#include <QAccessibleWidget>
#include <QEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>
#include <array>

#include "platform/qt/Contrast.hpp"

namespace Tamber {
namespace {

constexpr QSize Room(760, 620);
constexpr int PageMargin = 14;
constexpr char KeeperName[] = "manual";

// In reading order.
constexpr std::array Pages{"index.html", "windows.html", "functions.html", "messages.html",
                           "files.html", "board.html",   "protocol.html",  "cli.html"};

QUrl Address(const char* page) {
    return QUrl(QString("qrc:/manual/") + page);
}

bool Mentions(const char* page, const QString& text) {
    QFile file(QString(":/manual/") + page);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QTextDocument document;
    document.setHtml(QString::fromUtf8(file.readAll()));
    return !document.find(text).isNull();
}

QAccessibleInterface* AsWindow(const QString&, QObject* object) {
    auto* manual = dynamic_cast<ManualWindow*>(object);
    return manual ? new QAccessibleWidget(manual, QAccessible::Window) : nullptr;
}

/// Owns the manual on behalf of a main window, which owns the keeper.
class ManualKeeper final : public QObject {
  public:
    explicit ManualKeeper(QWidget& mainWindow) : QObject(&mainWindow) {
        setObjectName(KeeperName);
        mainWindow.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        // A window that the desktop hides, for example by minimising it, comes back.
        if (event->type() == QEvent::Hide && !event->spontaneous())
            window.hide();
        return false;
    }

    ManualWindow window;
};

}  // namespace

void ManualWindow::ShowBeside(QWidget& mainWindow, const char* page) {
    auto* keeper = static_cast<ManualKeeper*>(
        mainWindow.findChild<QObject*>(KeeperName, Qt::FindDirectChildrenOnly));
    if (!keeper)
        keeper = new ManualKeeper(mainWindow);
    ManualWindow& manual = keeper->window;
    if (page)
        manual.txtManual->setSource(Address(page));
    if (manual.isMinimized())
        manual.showNormal();
    manual.show();
    manual.raise();
    manual.activateWindow();
}

ManualWindow::ManualWindow() {
    QAccessible::installFactory(AsWindow);
    setObjectName("ManualWindow");
    setWindowTitle("Tamber Manual");
    MakeControls();
    MakeKeys();
    resize(Room.boundedTo(screen()->availableSize() - QSize(0, 40)));
    UseReadableLinks();
    ShowContents();
    txtManual->setFocus();
}

QPushButton* ManualWindow::MakeButton(const char* name, const char* caption, const char* key) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setToolTip(key);
    return button;
}

void ManualWindow::MakeControls() {
    cmdBack = MakeButton("cmdBack", "Back", "Alt+Left");
    cmdForward = MakeButton("cmdForward", "Forward", "Alt+Right");
    cmdContents = MakeButton("cmdContents", "Contents", "Alt+Home");
    txtFind = new QLineEdit(this);
    txtFind->setObjectName("txtFind");
    txtFind->setToolTip("Ctrl+F; Enter or F3 finds the next place, on any page");
    txtFind->setClearButtonEnabled(true);
    lblFind = new QLabel("Find:", this);
    lblFind->setBuddy(txtFind);
    lblFound = new QLabel(this);
    lblFound->setObjectName("lblFound");
    txtManual = new QTextBrowser(this);
    txtManual->setObjectName("txtManual");
    txtManual->setAccessibleName("Manual page");
    txtManual->document()->setDocumentMargin(PageMargin);

    auto* line = new QHBoxLayout;
    for (QWidget* control : {static_cast<QWidget*>(cmdBack), static_cast<QWidget*>(cmdForward),
                             static_cast<QWidget*>(cmdContents)})
        line->addWidget(control);
    line->addStretch(1);
    line->addWidget(lblFound);
    line->addWidget(lblFind);
    line->addWidget(txtFind, 2);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(line);
    layout->addWidget(txtManual, 1);
}

void ManualWindow::MakeKeys() {
    const auto onKey = [this](const QKeySequence& key, auto* receiver, auto action) {
        connect(new QShortcut(key, this), &QShortcut::activated, receiver, action);
    };
    onKey(QKeySequence("Alt+Left"), txtManual, &QTextBrowser::backward);
    onKey(QKeySequence("Alt+Right"), txtManual, &QTextBrowser::forward);
    onKey(QKeySequence("Alt+Home"), this, &ManualWindow::ShowContents);
    onKey(QKeySequence("F3"), this, &ManualWindow::Find);
    onKey(QKeySequence("Escape"), this, &QWidget::close);
    onKey(QKeySequence("Ctrl+W"), this, &QWidget::close);
    for (const char* key : {"Ctrl++", "Ctrl+="})
        onKey(QKeySequence(key), this, [this] { txtManual->zoomIn(); });
    onKey(QKeySequence("Ctrl+-"), this, [this] { txtManual->zoomOut(); });
    onKey(QKeySequence("Ctrl+0"), this, [this] { txtManual->setFont(font()); });
    onKey(QKeySequence("Ctrl+F"), txtFind, [this] {
        txtFind->setFocus();
        txtFind->selectAll();
    });
    connect(txtFind, &QLineEdit::returnPressed, this, &ManualWindow::Find);
    connect(cmdBack, &QPushButton::clicked, txtManual, &QTextBrowser::backward);
    connect(cmdForward, &QPushButton::clicked, txtManual, &QTextBrowser::forward);
    connect(cmdContents, &QPushButton::clicked, this, &ManualWindow::ShowContents);
    connect(txtManual, &QTextBrowser::backwardAvailable, cmdBack, &QWidget::setEnabled);
    connect(txtManual, &QTextBrowser::forwardAvailable, cmdForward, &QWidget::setEnabled);
    connect(txtManual, &QTextBrowser::sourceChanged, lblFound, &QLabel::clear);
}

void ManualWindow::ShowContents() {
    txtManual->setSource(Address(Pages.front()));
}

// Palettes often come with the dark blue that is meant for paper. Links get their colour when a
// page is loaded, so the page is loaded again.
void ManualWindow::UseReadableLinks() {
    const int position = txtManual->verticalScrollBar()->value();
    constexpr double contrastOfText = 4.5;
    const QColor link =
        Readable(palette().color(QPalette::Link), palette().color(QPalette::Base), contrastOfText);
    txtManual->document()->setDefaultStyleSheet("a { color: " + link.name() + " }");
    if (!txtManual->source().isEmpty())
        txtManual->reload();
    txtManual->verticalScrollBar()->setValue(position);
}

void ManualWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        UseReadableLinks();
}

void ManualWindow::Find() {
    const QString text = txtFind->text();
    if (text.isEmpty())
        return;
    const bool found = txtManual->find(text) || FindOnOtherPages(text);
    lblFound->setText(found ? "" : "Not found");
    // Higher than the lower edge, so that what follows can be read as well.
    if (found)
        if (const int below = txtManual->cursorRect().top() - txtManual->viewport()->height() / 3;
            below > 0)
            txtManual->verticalScrollBar()->setValue(txtManual->verticalScrollBar()->value() +
                                                     below);
}

// Goes on page by page and ends at the beginning of the page it started from.
bool ManualWindow::FindOnOtherPages(const QString& text) {
    const QString name = txtManual->source().fileName();
    std::size_t here = 0;
    while (here < Pages.size() - 1 && Pages[here] != name)
        ++here;
    for (std::size_t step = 1; step <= Pages.size(); ++step) {
        const char* page = Pages[(here + step) % Pages.size()];
        if (!Mentions(page, text))
            continue;
        if (page != name)
            txtManual->setSource(Address(page));
        txtManual->moveCursor(QTextCursor::Start);
        return txtManual->find(text);
    }
    return false;
}

}  // namespace Tamber
