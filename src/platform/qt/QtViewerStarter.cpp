#include "platform/qt/QtViewerStarter.hpp"

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <algorithm>
#include <chrono>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace Tamber {
namespace {

using namespace std::chrono_literals;

// A viewer that has lasted this long has shown something.
constexpr std::chrono::milliseconds FirstMoments = 2s;

}  // namespace

/// A process that goes on when its object goes.
class ViewerProcess final : public QProcess {
  public:
    ViewerProcess() {
        // What it has to say belongs neither to the program nor to the terminal behind it.
        setStandardInputFile(nullDevice());
        setStandardOutputFile(nullDevice());
        setStandardErrorFile(nullDevice());
#ifdef Q_OS_UNIX
        setChildProcessModifier([] { (void)setsid(); });  // Ctrl+C at the program's terminal
#endif
    }

    // QProcess ends a process that it takes for running.
    ~ViewerProcess() override { setProcessState(QProcess::NotRunning); }

    void Start(const QString& program, const QStringList& arguments) {
        sinceStart_.start();
        start(program, arguments);
    }

    bool EndedBadly(int status, ExitStatus how) const {
        return (how == CrashExit || status != 0) && !sinceStart_.hasExpired(FirstMoments.count());
    }

  private:
    QElapsedTimer sinceStart_;
};

QtViewerStarter::QtViewerStarter() = default;
QtViewerStarter::~QtViewerStarter() = default;

void QtViewerStarter::Start(const std::string& program, const std::vector<std::string>& arguments,
                            std::function<void()> failed) {
    QStringList list;
    for (const std::string& argument : arguments)
        list.append(QString::fromStdString(argument));

    ViewerProcess* viewer = viewers_.emplace_back(std::make_unique<ViewerProcess>()).get();
    QObject::connect(viewer, &QProcess::errorOccurred, viewer,
                     [this, viewer, failed](QProcess::ProcessError error) {
                         if (error != QProcess::FailedToStart)
                             return;
                         Forget(viewer);
                         failed();
                     });
    QObject::connect(viewer, &QProcess::finished, viewer,
                     [this, viewer, failed](int status, QProcess::ExitStatus how) {
                         Forget(viewer);
                         if (viewer->EndedBadly(status, how))
                             failed();
                     });
    viewer->Start(QString::fromStdString(program), list);
}

// Called in the middle of the viewer's own signal: it goes away after that.
void QtViewerStarter::Forget(ViewerProcess* viewer) {
    const auto kept = std::ranges::find(viewers_, viewer, &std::unique_ptr<ViewerProcess>::get);
    kept->release()->deleteLater();
    viewers_.erase(kept);
}

}  // namespace Tamber
