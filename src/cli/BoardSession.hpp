#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/BoardPort.hpp"
#include "link/ProgrammerLink.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber::Cli {

/// What blank checks and verifies leave out of account, by the facts and the arguments.
LeftOut LeftOutBy(const Context& context);

/// One visit to a board: the port is opened, the board identified, functions run. A run shows a
/// line for each region, and a bar while it lasts. It begins with an empty line; a sign that the
/// line is out of step ends it, and nothing that came of it is called good. The port closes and the
/// trace ends with the session.
class BoardSession : private FunctionDisplay, private MessageBoxes {
  public:
    explicit BoardSession(Context& context);

    /// Opens what the arguments ask for and has the board identify itself.
    [[nodiscard]] Outcome Open();

    /// Runs a function of the dialog's list. The device type is named to the board before the first
    /// run of a session.
    [[nodiscard]] Outcome Run(FunctionCode function, const Regions& regions);

    /// Reads the device into `image`; shows nothing but a bar after `heading`.
    [[nodiscard]] Outcome ReadQuietly(const Regions& regions, MemoryImage& image,
                                      const std::string& heading);

    /// Writes `image` in the same way, even when the user wants to end.
    [[nodiscard]] Outcome WriteUndisturbed(const Regions& regions, MemoryImage& image,
                                           const std::string& heading);

    /// Blank has found what the factory wrote, and left it out.
    bool SparedAny() const { return sparedAny_; }
    /// Bits that the device does not implement made a difference, and were left out.
    bool SparedBits() const { return sparedBits_; }

    /// What Run has done to regions, in running order.
    const std::vector<RegionResult>& Results() const { return results_; }

    /// Writes the contents of the simulated socket where the arguments want them. The last call.
    [[nodiscard]] Outcome Close() const { return port_.SaveSocket(); }

    /// True when Run has run a verify, as its last function.
    bool Verified() const {
        return !reports_.empty() && reports_.back().Function == FunctionVerify;
    }

  private:
    // What one device function has shown.
    struct FunctionReport {
        FunctionCode Function = FunctionRead;
        std::vector<std::string> Lines;
    };

    void RunEnds() override { context_.Screen.EraseBar(); }
    void FunctionBegins(FunctionCode function) override;
    void LineBegins(int line, const std::string& text) override;
    void LineEnds(int line, const std::string& text, const RegionResult& result) override;
    void ProgressMoves(std::int16_t percent) override;
    bool StopRequested() override;

    // Nobody needs to close a box; it is a line on standard error.
    void Show(const std::string& text, const std::string& title, BoxIcon icon) override;

    // What a good line ends with in place of its OK, because the line did not stay silent or the
    // port is gone; empty: neither.
    [[nodiscard]] std::string Doubt();

    // The user wants to end, or the port has gone away.
    bool Ended() const;

    [[nodiscard]] Outcome OpenPort();
    [[nodiscard]] Outcome Identify();
    [[nodiscard]] Outcome RunInto(MemoryImage& image, FunctionCode function,
                                  const Regions& regions);
    [[nodiscard]] Outcome RunQuietly(MemoryImage& image, FunctionCode function,
                                     const Regions& regions, const std::string& heading);
    [[nodiscard]] Outcome OutcomeOf(const FunctionRun& run);

    Context& context_;
    BoardPort port_;
    std::unique_ptr<WindowTimer> totmr_;
    std::unique_ptr<WindowTimer> tmrWait_;
    std::unique_ptr<WindowTimer> silence_;
    std::optional<ProgrammerLink> link_;
    const FunctionRun* running_ = nullptr;
    bool typeNamed_ = false;
    bool quiet_ = false;        // nothing of the run is shown but its bar
    bool undisturbed_ = false;  // the run goes on though the user wants to end
    std::string heading_;       // of the bar; empty: there is none
    bool sparedAny_ = false;
    bool sparedBits_ = false;
    std::vector<RegionResult> results_;
    std::vector<FunctionReport> reports_;
    std::optional<FunctionCode> failed_;  // the first function with a failure in the data
};

}  // namespace Tamber::Cli
