#include "platform/qt/QtViewerStarter.hpp"

#include <unistd.h>

#include <QProcess>
#include <QStringList>
#include <algorithm>

namespace Tamber {

/// A process that outlives its object.
class ViewerProcess final : public QProcess {
  public:
    ViewerProcess() {
        // Its output belongs neither to the program nor to the program's terminal.
        setStandardInputFile(nullDevice());
        setStandardOutputFile(nullDevice());
        setStandardErrorFile(nullDevice());
        // Keys at the program's terminal, such as Ctrl+C, are not meant for it.
        setChildProcessModifier([] { (void)setsid(); });
    }

    // QProcess kills a process that it takes for running.
    ~ViewerProcess() override { setProcessState(QProcess::NotRunning); }

    std::chrono::steady_clock::duration Age() const {
        return std::chrono::steady_clock::now() - started_;
    }

  private:
    std::chrono::steady_clock::time_point started_ = std::chrono::steady_clock::now();
};

QtViewerStarter::QtViewerStarter(std::chrono::milliseconds firstMoments)
    : firstMoments_(firstMoments) {}
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
                         const bool badly = status != 0 || how == QProcess::CrashExit;
                         if (badly && viewer->Age() < firstMoments_)
                             failed();
                     });
    viewer->start(QString::fromStdString(program), list);
}

// Called from the viewer's own signal, so it is deleted later.
void QtViewerStarter::Forget(ViewerProcess* viewer) {
    const auto kept = std::ranges::find(viewers_, viewer, &std::unique_ptr<ViewerProcess>::get);
    kept->release()->deleteLater();
    viewers_.erase(kept);
}

}  // namespace Tamber
