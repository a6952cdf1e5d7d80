#include "Instructions.hpp"

#include <linux/perf_event.h>
#include <stdio.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace Tamber::Bench {

std::optional<double> CountedByProcessor(const std::function<void()>& work) {
    perf_event_attr wanted{};
    wanted.type = PERF_TYPE_HARDWARE;
    wanted.size = sizeof wanted;
    wanted.config = PERF_COUNT_HW_INSTRUCTIONS;
    wanted.disabled = 1;
    wanted.exclude_kernel = 1;
    const int counter = static_cast<int>(::syscall(SYS_perf_event_open, &wanted, 0, -1, -1, 0UL));
    if (counter < 0)
        return std::nullopt;
    ::ioctl(counter, PERF_EVENT_IOC_ENABLE, 0);
    work();
    ::ioctl(counter, PERF_EVENT_IOC_DISABLE, 0);
    std::uint64_t count = 0;
    const bool good = ::read(counter, &count, sizeof count) == sizeof count && count > 0;
    ::close(counter);
    return good ? std::optional<double>(static_cast<double>(count)) : std::nullopt;
}

// "==123== Collected : 456" is what valgrind says in the end.
std::optional<double> CountedByValgrind(const std::string& argument,
                                        const std::string& functionPattern) {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    const std::string command =
        "valgrind --tool=callgrind --callgrind-out-file=/dev/null --toggle-collect='" +
        functionPattern + "' '" + self + "' " + argument + " 2>&1";
    FILE* const output = ::popen(command.c_str(), "r");
    if (output == nullptr)
        return std::nullopt;
    constexpr char Mark[] = "Collected :";
    double count = 0;
    char line[512];
    while (std::fgets(line, sizeof line, output) != nullptr)
        if (const char* found = std::strstr(line, Mark))
            count = std::atof(found + sizeof Mark - 1);
    const bool good = ::pclose(output) == 0 && count > 0;
    return good ? std::optional<double>(count) : std::nullopt;
}

}  // namespace Tamber::Bench
