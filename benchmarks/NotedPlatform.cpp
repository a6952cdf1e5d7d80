#include "NotedPlatform.hpp"

#include <utility>

namespace Tamber::Bench {
namespace {

// Costs a counter for each call; the clocks are read at the two noted calls only.
class NotedSerialControl final : public SerialControl {
  public:
    NotedSerialControl(std::unique_ptr<SerialControl> port, Notes& notes)
        : port_(std::move(port)), notes_(notes) {}

    tl::expected<void, std::string> PortOpen(const std::filesystem::path& path) override {
        return port_->PortOpen(path);
    }

    void Output(std::span<const std::uint8_t> bytes) override {
        if (++notes_.Outputs == 1)
            notes_.Begin = Moment::Now();
        port_->Output(bytes);
    }

    int InBufferCount() override { return port_->InBufferCount(); }

    void Input(std::vector<std::uint8_t>& bytes) override {
        port_->Input(bytes);
        if (++notes_.Inputs == notes_.Last)
            notes_.End = Moment::Now();
    }

  private:
    std::unique_ptr<SerialControl> port_;
    Notes& notes_;
};

}  // namespace

void Notes::Arm(int last) {
    *this = Notes();
    Last = last;
}

std::unique_ptr<SerialControl> NotedPlatform::NewSerialControl() {
    return std::make_unique<NotedSerialControl>(platform_.NewSerialControl(), notes_);
}

void NotedPlatform::Show(const std::string& text, const std::string&, BoxIcon) {
    notes_.BoxText = text;
}

}  // namespace Tamber::Bench
