#pragma once

#include <memory>
#include <vector>

#include "platform/ViewerStarter.hpp"

namespace Tamber {

class ViewerProcess;

/// Viewers as child processes. They are watched for a failure only while they start.
class QtViewerStarter final : public ViewerStarter {
  public:
    QtViewerStarter();
    ~QtViewerStarter() override;

    void Start(const std::string& program, const std::vector<std::string>& arguments,
               std::function<void()> failed) override;

  private:
    void Forget(ViewerProcess* viewer);

    std::vector<std::unique_ptr<ViewerProcess>> viewers_;
};

}  // namespace Tamber
