#pragma once

#include <array>
#include <streambuf>

#include "cli/Machine.hpp"

namespace Tamber::Cli {

/// Input from a file descriptor, which ends as well when the user wants the program to end.
class DescriptorInput : public std::streambuf {
  public:
    /// Neither closes `descriptor` nor outlives `machine`.
    DescriptorInput(int descriptor, Machine& machine)
        : descriptor_(descriptor), machine_(machine) {}

  protected:
    int_type underflow() override;

  private:
    int descriptor_;
    Machine& machine_;
    std::array<char, 1 << 16> piece_{};
};

}  // namespace Tamber::Cli
