#include "BoardProcess.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <iostream>
#include <utility>

#include "Measure.hpp"

namespace Tamber::Bench {

void Require(bool good, const std::string& message) {
    if (good)
        return;
    std::cerr << "bench: " << message << std::endl;
    std::exit(EXIT_FAILURE);
}

std::vector<char*> Values(std::vector<std::string>& words) {
    std::vector<char*> values;
    for (std::string& word : words)
        values.push_back(word.data());
    values.push_back(nullptr);
    return values;
}

BoardProcess::BoardProcess(std::vector<std::string> options) {
    MakeFolder();
    std::vector<std::string> arguments{BOARD_PROGRAM, "--link", Port(),     "--type", "10",
                                       "--words",     "8192",   "--eeprom", "256"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const bool apart = UseCore(1);
    Start(std::move(arguments));
    Require(UseCore(0), "cannot choose a processor core");
    if (!apart)
        std::cerr << "bench: one core only; program and board share it" << std::endl;
}

BoardProcess::~BoardProcess() {
    ::kill(process_, SIGTERM);
    ::waitpid(process_, nullptr, 0);
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
}

void BoardProcess::MakeFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "tamber-bench-XXXXXX";
    Require(::mkdtemp(pattern.data()) != nullptr, "cannot make a working folder");
    folder_ = pattern;
    std::ofstream(folder_ / "tamber.cfg") << "1\r\n1\r\n1\r\n";
    std::ofstream(folder_ / "tamber.dev") << "\"PIC16F877A\",10,8192,256,1\r\n";
    std::ofstream(folder_ / "auto.cfg") << "0\r\n";
}

// Returns when the board has said that it is ready.
void BoardProcess::Start(std::vector<std::string> arguments) {
    const std::vector<char*> values = Values(arguments);
    std::array<int, 2> output{};
    Require(::pipe2(output.data(), O_CLOEXEC) == 0, "no pipe");
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    const int failed =
        ::posix_spawn(&process_, values[0], &actions, nullptr, values.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(output[1]);
    char first = 0;
    Require(failed == 0 && ::read(output[0], &first, 1) == 1, "the simulated board does not start");
    ::close(output[0]);
}

}  // namespace Tamber::Bench
