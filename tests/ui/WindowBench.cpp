#include "WindowBench.hpp"

#include <fstream>

#include "StartUp.hpp"
#include "platform/qt/UserMemory.hpp"
#include "ui/StatusBar.hpp"

namespace Tamber {
namespace {

std::filesystem::path MakeFolder(const DeviceRecord& device) {
    const std::filesystem::path folder =
        testing::TempDir() + "tamber-windows-" + std::to_string(QCoreApplication::applicationPid());
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "tamber.cfg") << "2\r\n2\r\n1\r\n";
    std::ofstream(folder / "auto.cfg") << "2\r\n3\r\n4\r\n";
    std::ofstream(folder / "tamber.dev")
        << '"' << device.Name << "\"," << device.TypeCode << ',' << device.ProgramWords << ','
        << device.EepromBytes << ',' << device.EraseSupported << "\r\n\"A&Ä\",3,512,0,1\r\n";
    return folder;
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

WindowBench::WindowBench(const DeviceRecord& device, Simulator::FaultPlan faults,
                         std::optional<std::string> portFailure)
    : engine(desktop.Clock(), {device.TypeCode, device.ProgramWords, device.EepromBytes}),
      board(engine, desktop.Clock(), std::move(faults)) {
    // A main window that was closed has told the application to end; running it once takes that
    // back.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
    const auto started = StartUp(MakeFolder(device), program);
    EXPECT_TRUE(started) << Describe(started.error());
    UserMemory().clear();
    desktop.board = &board;
    desktop.portFailure = std::move(portFailure);
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

std::string WindowBench::Said() const {
    Settle();
    const QWidget* strip = Find("NoticeStrip");
    return strip->isVisible() ? strip->accessibleName().toStdString() : "";
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

void ExpectNothingCutOff(const QWidget& window) {
    QRegion taken;
    // Shapes and scroll bars are meant to lie over other things; views keep what they hide below
    // their lower edge.
    for (const auto* control : window.findChildren<QWidget*>(QRegularExpression("^(?!shp|lin|vsc)"),
                                                             Qt::FindDirectChildrenOnly)) {
        if (!control->isVisible() || control->y() >= window.height())
            continue;
        SCOPED_TRACE((window.objectName() + " " + control->objectName()).toStdString());
        EXPECT_TRUE(window.rect().contains(control->geometry()));
        const auto* button = qobject_cast<const QAbstractButton*>(control);
        const int mark = button && button->isCheckable() ? 20 : 0;  // with the gap after it
        const QString text = control->property("text").toString();
        EXPECT_LE(control->fontMetrics().horizontalAdvance(text) + mark, control->width());
        if (!qobject_cast<const QLabel*>(control)) {  // labels are larger than their texts
            const QRect inner = control->geometry().adjusted(1, 1, -1, -1);
            EXPECT_FALSE(taken.intersects(inner));
            taken += inner;
        }
        if (qobject_cast<const QGroupBox*>(control))
            ExpectNothingCutOff(*control);
        if (const auto* scrolled = qobject_cast<const QScrollArea*>(control))
            ExpectNothingCutOff(*scrolled->widget());
    }
}

}  // namespace Tamber

int main(int argc, char** argv) {
    const QTemporaryDir memory;  // the user's own is not written to
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(memory.path()));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setFont(QFont(QApplication::font().family(), 9));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
