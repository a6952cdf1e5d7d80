#include <unistd.h>

#include <QCoreApplication>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "cli/Commands.hpp"
#include "cli/DescriptorInput.hpp"
#include "cli/QtMachine.hpp"

namespace {

using namespace Tamber::Cli;

bool Set(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

// `in` is what standard input is read through. A dumb terminal can neither be coloured nor have a
// line drawn anew.
Streams StandardStreams(std::istream& in = std::cin) {
    const char* const kind = std::getenv("TERM");
    const bool able = kind != nullptr && std::string_view(kind) != "dumb";
    return {in,
            std::cout,
            std::cerr,
            able && isatty(STDOUT_FILENO) == 1,
            able && isatty(STDERR_FILENO) == 1,
            !Set("NO_COLOR")};
}

int Run(const Arguments& arguments, char** words) {
    int count = 1;  // the program's options are its own; Qt gets none
    QCoreApplication application(count, words);
    QtMachine machine;
    DescriptorInput input(STDIN_FILENO, machine);
    std::istream in(&input);
    return static_cast<int>(RunCommand(arguments, machine, StandardStreams(in)));
}

// Output may be on its way until now: that it cannot be written may show only here.
int AfterOutput(int status) {
    if (std::cout.flush() || status != static_cast<int>(ExitStatus::Done))
        return status;
    std::cerr << "tamber-cli: standard output cannot be written.\n";
    return static_cast<int>(ExitStatus::FileUnusable);
}

}  // namespace

int main(int count, char** words) {
    const auto parsed = ParseArguments({words + 1, words + count});
    return AfterOutput(parsed ? Run(*parsed, words)
                              : static_cast<int>(Give(parsed.error(), StandardStreams())));
}
