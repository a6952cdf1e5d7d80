#include "cli/DescriptorInput.hpp"

#include <unistd.h>

#include <cerrno>

namespace Tamber::Cli {

DescriptorInput::int_type DescriptorInput::underflow() {
    ssize_t count = -1;
    do {
        if (!machine_.AwaitInput(descriptor_))
            return traits_type::eof();
        count = read(descriptor_, piece_.data(), piece_.size());
    } while (count < 0 && (errno == EINTR || errno == EAGAIN));
    if (count <= 0)
        return traits_type::eof();
    setg(piece_.data(), piece_.data(), piece_.data() + count);
    return traits_type::to_int_type(piece_.front());
}

}  // namespace Tamber::Cli
