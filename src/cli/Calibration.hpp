#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "cli/BoardSession.hpp"
#include "cli/CalibrationLog.hpp"

namespace Tamber::Cli {

/// Sees to it that what the factory wrote into a device outlives an erase: the calibration word and
/// the kept bits of the configuration word, as far as the facts say that it has them. A log in the
/// working folder has them before anything is erased; nothing is logged for a simulated board.
class Calibration {
  public:
    Calibration(Context& context, BoardSession& session);

    /// Whether the device can have the word that the arguments give it.
    [[nodiscard]] static Outcome Check(const Context& context);

    /// Before a run: reads and logs what must be kept and puts it into the image. Fails when it
    /// cannot be read or logged, or when there is no calibration word to write and the arguments do
    /// not force it; nothing has been erased then.
    [[nodiscard]] Outcome Keep(const Regions& regions);

    /// After it: writes back what has been erased and not been programmed. Returns how the job
    /// ends.
    [[nodiscard]] Outcome GiveBack(const Regions& regions, Outcome ran);

  private:
    bool HasWord() const { return context_.Fact().HasCalibrationWord.value_or(false); }
    std::uint16_t KeepMask() const { return context_.Fact().KeepMask.value_or(0); }
    int LastWord() const;

    bool Runs(FunctionCode function) const;
    void KeepBits();
    [[nodiscard]] Outcome Log(std::optional<std::uint16_t> word);
    [[nodiscard]] Outcome Choose(std::optional<std::uint16_t> fromDevice);
    [[nodiscard]] Outcome ReportMissing() const;
    Regions Lost() const;
    [[nodiscard]] Outcome Write(const Regions& regions, const Regions& lost);

    Context& context_;
    BoardSession& session_;
    bool kept_ = false;
    bool keepsWord_ = false;  // not only bits of the configuration word
    bool logged_ = false;
    MemoryImage device_;                 // as it was read
    std::optional<std::uint16_t> word_;  // that the device is to have
    std::uint16_t bits_ = 0;             // of its configuration word
};

}  // namespace Tamber::Cli
