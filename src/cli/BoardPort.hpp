#pragma once

#include <chrono>
#include <fstream>
#include <memory>
#include <optional>

#include "cli/Context.hpp"
#include "platform/SerialControl.hpp"
#include "simulator/BoardEngine.hpp"

namespace Tamber::Cli {

/// The port that the arguments ask for, or the simulated board in its place, and its trace.
class BoardPort {
  public:
    explicit BoardPort(Context& context);

    /// Makes the control. Nothing is opened yet but the files of trace and socket.
    [[nodiscard]] Outcome Make();

    /// Only once it is made.
    SerialControl& Control() { return *control_; }
    const SerialControl& Control() const { return *control_; }

    /// The port's number; none when it was given as a path.
    std::optional<int> CommPort() const { return commPort_; }
    const std::string& Name() const { return name_; }
    const std::filesystem::path& Path() const { return path_; }

    /// Writes the contents of the simulated socket where the arguments want them.
    [[nodiscard]] Outcome SaveSocket() const;

  private:
    void ChoosePort();
    [[nodiscard]] Outcome MakeSimulated();
    [[nodiscard]] Outcome LoadSocket();
    [[nodiscard]] Outcome AddTrace();
    std::chrono::microseconds SinceStart() const { return context_.Host.Now() - start_; }

    Context& context_;
    std::chrono::microseconds start_;
    std::string name_;
    std::filesystem::path path_;
    std::optional<int> commPort_;
    std::ofstream trace_;
    std::optional<Simulator::BoardEngine> simulated_;
    std::unique_ptr<SerialControl> control_;
};

}  // namespace Tamber::Cli
