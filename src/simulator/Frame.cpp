#include "simulator/Frame.hpp"

#include <utility>

namespace Tamber::Simulator {

bool Frame::IsCommand(char letter) const {
    return IsCommand() && Bytes[1] == static_cast<std::uint8_t>(letter);
}

std::uint16_t Frame::Address() const {
    return static_cast<std::uint16_t>(Bytes.at(1) << 8 | Bytes.at(2));
}

std::vector<Frame> FrameReader::Feed(std::span<const std::uint8_t> bytes,
                                     std::chrono::microseconds now) {
    std::vector<Frame> frames;
    if (bytes.empty())
        return frames;
    if (!partial_.empty() && now - lastByte_ >= Patience)
        frames.push_back(Finish(true));
    lastByte_ = now;
    for (const auto byte : bytes) {
        partial_.push_back(byte);
        if (partial_.size() == partial_.front() + std::size_t{1})
            frames.push_back(Finish(false));
    }
    return frames;
}

Frame FrameReader::Finish(bool dropped) {
    Frame frame{std::exchange(partial_, {}), dropped, readOpen_};
    readOpen_ = frame.IsCommand('R');
    return frame;
}

}  // namespace Tamber::Simulator
