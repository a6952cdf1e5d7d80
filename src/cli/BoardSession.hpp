#pragma once

#include <memory>
#include <optional>

#include "cli/BoardPort.hpp"
#include "cli/Context.hpp"
#include "cli/TerminalDisplay.hpp"
#include "link/ProgrammerLink.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber::Cli {

/// One visit to a board: the port is opened, the board identified, functions run. The port closes
/// and the trace ends with the session.
class BoardSession {
  public:
    explicit BoardSession(Context& context);

    /// Opens what the arguments ask for and has the board identify itself.
    [[nodiscard]] Outcome Open();

    /// Tells the board the device type, then runs a function of the dialog's list and shows it.
    [[nodiscard]] Outcome Run(std::int16_t functionCode, const Regions& regions);

    /// Reads the device into `image`, with nothing but a bar behind `heading`.
    [[nodiscard]] Outcome ReadQuietly(const Regions& regions, MemoryImage& image,
                                      const std::string& heading);

    /// Puts the socket's contents where the arguments want them. To be called when all is done.
    [[nodiscard]] Outcome Close() const { return port_.SaveSocket(); }

    /// True when the function that ran last was `function`.
    bool RanLast(FunctionCode function) const;

  private:
    bool StopRequested() const;

    // The user wants an end, or the port has gone away.
    bool Ended() const;

    [[nodiscard]] Outcome OpenPort();
    [[nodiscard]] Outcome Identify();
    [[nodiscard]] Outcome OutcomeOf(const FunctionRun& run) const;
    [[nodiscard]] Outcome Silent() const;
    void TellReports();

    Context& context_;
    TerminalDisplay display_;
    TerminalBoxes boxes_;
    BoardPort port_;
    std::unique_ptr<WindowTimer> totmr_;
    std::unique_ptr<WindowTimer> tmrWait_;
    std::optional<ProgrammerLink> link_;
    const FunctionRun* running_ = nullptr;
};

}  // namespace Tamber::Cli
