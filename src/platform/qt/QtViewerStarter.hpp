#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "platform/ViewerStarter.hpp"

namespace Tamber {

class ViewerProcess;

/// Viewers as child processes. A failure counts only in their first moments: a viewer that has
/// lasted longer has shown something.
class QtViewerStarter final : public ViewerStarter {
  public:
    explicit QtViewerStarter(std::chrono::milliseconds firstMoments = std::chrono::seconds(2));
    ~QtViewerStarter() override;

    void Start(const std::string& program, const std::vector<std::string>& arguments,
               std::function<void()> failed) override;

  private:
    void Forget(ViewerProcess* viewer);

    std::chrono::milliseconds firstMoments_;
    std::vector<std::unique_ptr<ViewerProcess>> viewers_;
};

}  // namespace Tamber
