#include "WindowBench.hpp"

#include <fstream>

#include "StartUp.hpp"
#include "ui/StatusBar.hpp"

namespace Tamber {
namespace {

std::filesystem::path MakeFolder(const DeviceRecord& device) {
    const std::filesystem::path folder =
        testing::TempDir() + "tamber-windows-" + std::to_string(QCoreApplication::applicationPid());
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "tamber.cfg") << "1\r\n2\r\n1\r\n";
    std::ofstream(folder / "auto.cfg") << "2\r\n3\r\n4\r\n";
    std::ofstream(folder / "tamber.dev")
        << '"' << device.Name << "\"," << device.TypeCode << ',' << device.ProgramWords << ','
        << device.EepromBytes << ',' << device.EraseSupported << "\r\n\"A&B\",3,512,0,1\r\n";
    return folder;
}

// There is something of the control to be seen; views keep what they hide below their lower edge.
bool Shows(const QWidget& control) {
    const auto* label = qobject_cast<const QLabel*>(&control);
    return control.isVisible() && control.width() > 0 &&
           control.y() < control.parentWidget()->height() &&
           (!label || !label->text().isEmpty() || !label->pixmap().isNull());
}

// The area of a control that must stay free of others: of a label, that of its text.
QRect Taken(const QWidget& control) {
    const auto* label = qobject_cast<const QLabel*>(&control);
    if (!label || label->text().isEmpty())
        return control.geometry();
    return label->fontMetrics()
        .boundingRect(label->contentsRect(), static_cast<int>(label->alignment()), label->text())
        .translated(label->pos());
}

int WidthNeeded(const QAbstractButton& button) {
    const int mark = button.isCheckable() ? 20 : 0;  // with the gap after it
    return mark + button.fontMetrics().horizontalAdvance(button.text());
}

// Shapes and scroll bars are meant to lie over other things.
bool MayOverlap(const QWidget& control) {
    return control.objectName().contains(QRegularExpression("^(shp|lin|vsc)"));
}

}  // namespace

void WindowDesktop::DeliverEvents() {
    Settle();
    FakeDesktop::DeliverEvents();
}

void Settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();  // a window that is shown is painted
    QCoreApplication::processEvents();  // and has come on the screen
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

WindowBench::WindowBench(const DeviceRecord& device, Simulator::FaultPlan faults)
    : engine(desktop.Clock(), {device.TypeCode, device.ProgramWords, device.EepromBytes}),
      board(engine, desktop.Clock(), std::move(faults)) {
    // A main window that was closed has told the application to end; running it once takes that
    // back.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
    const auto started = StartUp(MakeFolder(device), program);
    EXPECT_TRUE(started) << Describe(started.error());
    desktop.board = &board;
}

void WindowBench::Start() {
    window = std::make_unique<mdiMain>(program, desktop);
    window->MDIForm_Load();
    window->show();
    Settle();
    startRecord = std::exchange(desktop.record, {});
}

std::string WindowBench::Panels() {
    const auto* bar = Find<StatusBar>("sbar");
    return QStringList{bar->Panel(1), bar->Panel(2), bar->Panel(3), bar->Panel(4)}
        .join(" | ")
        .toStdString();
}

void WindowBench::Choose(const char* item) {
    Find<QAction>(item)->trigger();
    Settle();
}

void WindowBench::InDialog(const char* item, const std::function<void()>& use) {
    QTimer::singleShot(0, qApp, [&] {
        dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr) << item << " opened no dialog";
        Settle();
        use();
        if (dialog && dialog->isVisible())
            dialog->close();
    });
    Choose(item);
}

std::string WindowBench::Contents(const char* file) const {
    std::ifstream stream(program.AppPath / file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void ExpectNothingCutOff(QWidget& window) {
    for (const QWidget* control : window.findChildren<QWidget*>()) {
        const QWidget* parent = control->parentWidget();
        if (!Shows(*control) || (parent != &window && !qobject_cast<const QGroupBox*>(parent)))
            continue;
        SCOPED_TRACE((window.objectName() + " " + control->objectName()).toStdString());
        EXPECT_TRUE(parent->rect().contains(control->geometry()));
        EXPECT_TRUE(control->geometry().adjusted(-1, -1, 1, 1).contains(Taken(*control)));
        const auto* button = qobject_cast<const QAbstractButton*>(control);
        EXPECT_TRUE(!button || WidthNeeded(*button) <= button->width());
        for (const QWidget* other :
             parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            EXPECT_FALSE(other != control && Shows(*other) && !MayOverlap(*control) &&
                         !MayOverlap(*other) &&
                         Taken(*other).intersects(Taken(*control).adjusted(1, 1, -1, -1)))
                << "covers " << other->objectName().toStdString();
    }
}

}  // namespace Tamber

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
