#pragma once

#include <filesystem>

#include "core/DeviceCatalogue.hpp"
#include "core/MemoryImage.hpp"
#include "platform/SerialControl.hpp"
#include "simulator/BoardEngine.hpp"

namespace Tamber::Cli {

/// A simulated board inside the program, where a port would be. It answers at once.
class SimulatedSerialControl final : public SerialControl {
  public:
    /// The board has `device` in its socket. `clock` is the board's time.
    SimulatedSerialControl(const DeviceRecord& device, Simulator::BoardClock clock);

    /// Puts what a HEX file holds into the device; a file that does not exist leaves it blank.
    [[nodiscard]] tl::expected<void, std::string> LoadSocket(const std::filesystem::path& file);

    /// Writes what the device holds to a HEX file.
    [[nodiscard]] tl::expected<void, std::string> SaveSocket(
        const std::filesystem::path& file) const;

    [[nodiscard]] tl::expected<void, std::string> PortOpen(
        const std::filesystem::path& path) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    int InBufferCount() override;
    void Input(std::vector<std::uint8_t>& bytes) override;

  private:
    Simulator::BoardEngine engine_;
    std::vector<std::uint8_t> received_;
};

}  // namespace Tamber::Cli
