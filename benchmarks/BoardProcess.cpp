#include "BoardProcess.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

#include "Measure.hpp"

namespace Tamber::Bench {
namespace {

std::filesystem::path MakeWorkingFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "tamber-bench-XXXXXX";
    Require(::mkdtemp(pattern.data()) != nullptr, "cannot make a working folder");
    const std::filesystem::path folder = pattern;
    std::ofstream(folder / "tamber.cfg") << "1\r\n1\r\n1\r\n";
    std::ofstream(folder / "tamber.dev") << "\"PIC16F877A\",10,8192,256,1\r\n";
    std::ofstream(folder / "auto.cfg") << "0\r\n";
    return folder;
}

std::vector<std::string> BoardCommand(std::vector<std::string> options) {
    UseCore(1);
    options.insert(options.begin(), {BOARD_PROGRAM, "--link", "com1", "--type", "10", "--words",
                                     "8192", "--eeprom", "256"});
    return options;
}

}  // namespace

Process::Process(std::vector<std::string> words, const std::filesystem::path& folder)
    : name_(words[0]) {
    std::vector<char*> values;
    for (std::string& word : words)
        values.push_back(word.data());
    values.push_back(nullptr);
    int pipe[2];
    Require(::pipe2(pipe, O_CLOEXEC) == 0, "no pipe");
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
    ::posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    Require(::posix_spawnp(&id_, values[0], &actions, nullptr, values.data(), environ) == 0,
            "cannot start " + name_);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(pipe[1]);
    output_ = ::fdopen(pipe[0], "r");
}

Process::~Process() {
    std::fclose(output_);
    if (id_ < 0)
        return;
    ::kill(id_, SIGTERM);
    ::waitpid(id_, nullptr, 0);
}

std::string Process::Line() {
    char line[256];
    Require(std::fgets(line, sizeof line, output_) != nullptr, name_ + " ends without output");
    return line;
}

rusage Process::Wait() {
    while (std::fgetc(output_) != EOF) {
    }
    int status = -1;
    rusage used{};
    Require(::wait4(id_, &status, 0, &used) == id_ && status == 0, name_ + " fails");
    id_ = -1;
    return used;
}

BoardProcess::BoardProcess(const std::vector<std::string>& options)
    : folder_(MakeWorkingFolder()), process_(BoardCommand(options), folder_) {
    UseCore(0);
    process_.Line();  // the board is ready
}

BoardProcess::~BoardProcess() {
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
}

void FillProgramMemory(MemoryImage& image) {
    for (int index = 0; index < 2 * MemoryImage::ProgramWordsMax; ++index)
        image.SetByte(index, static_cast<std::uint8_t>(index * 37 >> 3 & 0x3F));
}

}  // namespace Tamber::Bench
