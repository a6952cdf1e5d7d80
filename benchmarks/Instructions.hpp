#pragma once

#include <functional>
#include <optional>
#include <string>

namespace Tamber::Bench {

/// The instructions that `work` takes outside the system, by the processor's own counter. Nothing
/// where the machine does not let us count.
std::optional<double> CountedByProcessor(const std::function<void()>& work);

/// The same under valgrind: this program is started again with `argument`, and what the functions
/// do whose names match `functionPattern` is counted. Nothing where valgrind cannot be run.
std::optional<double> CountedByValgrind(const std::string& argument,
                                        const std::string& functionPattern);

}  // namespace Tamber::Bench
