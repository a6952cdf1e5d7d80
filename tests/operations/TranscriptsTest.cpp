#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <sstream>

#include "core/HexText.hpp"
#include "operations/DeviceFunctions.hpp"
#include "support/FunctionBench.hpp"

namespace Tamber {
namespace {

using Lines = std::vector<std::string>;

// The scenarios of a file: a device, what is done to it, runs and what they must record. The form
// is described in tests/data/README.md.
class Transcript {
  public:
    explicit Transcript(const std::filesystem::path& file) : file_(file.filename().string()) {
        std::ifstream text(file);
        for (std::string line; std::getline(text, line);)
            lines_.push_back(line);
    }

    void Perform() {
        for (next_ = 0; next_ < lines_.size();) {
            const std::string line = lines_[next_++];
            if (line.empty() || line.starts_with('#'))
                continue;
            const testing::ScopedTrace trace(file_.c_str(), static_cast<int>(next_), line);
            std::istringstream words(line);
            Obey(words);
        }
    }

  private:
    void Obey(std::istringstream& words) {
        const std::string verb = Word(words);
        if (verb == "device") {
            device_ = {Word(words), Short(words), Number(words), Short(words), Short(words)};
            faults_ = {};
            bench_.reset();
        } else if (verb == "silent-from") {
            faults_.silentFrom = Number(words);
        } else if (verb == "refuse") {
            faults_.refusedWrite = {static_cast<std::uint16_t>(Hex(words)), HexAsByte(words)};
        } else if (verb == "reply-length") {
            faults_.replyLength = {Number(words), static_cast<std::size_t>(Number(words))};
        } else if (verb == "reply-byte") {
            faults_.alteredByte = {Number(words), static_cast<std::size_t>(Number(words)),
                                   HexAsByte(words)};
        } else if (verb == "run") {
            Run(words);
        } else {
            Prepare(verb, words);
        }
    }

    // What is done to the bench, which is made when it is first needed.
    void Prepare(const std::string& verb, std::istringstream& words) {
        FunctionBench& bench = Bench();
        if (verb == "image") {
            bench.FillImage();
        } else if (verb == "same") {
            bench.FillImage();
            bench.CopyImageToSocket();
        } else if (verb == "erased") {
            bench.Socket().EraseProgram();
        } else if (verb == "socket") {
            const int address = Hex(words);
            EXPECT_TRUE(bench.Socket().SetByte(std::uint32_t(address), HexAsByte(words)));
        } else if (verb == "flip") {
            while (words >> std::ws, !words.eof()) {
                const auto address = static_cast<std::uint32_t>(Hex(words));
                bench.Socket().SetByte(address, bench.Socket().ByteAt(address) ^ 0x01);
            }
        } else if (verb == "series") {
            bench.series = {};
            while (words >> std::ws, !words.eof())
                bench.series.Entries[std::size_t(++bench.series.AutoCount)] = Short(words);
        } else if (verb == "stop-after") {
            bench.display.looksBeforeStop = Number(words);
        } else {
            ADD_FAILURE() << "no such verb";
        }
    }

    // run FUNCTION [REGION...], and "-" before what is not to be shown.
    void Run(std::istringstream& words) {
        const std::string command = Word(words);
        const auto functions = DeviceFunctions();
        const auto function = std::ranges::find(functions, command, &DeviceFunction::Command);
        ASSERT_NE(function, functions.end());
        Regions regions{false, false, false, false};
        Lines hidden;
        for (std::string word; words >> word;) {
            regions.ProgramMemory |= word == "pm" || word == "all";
            regions.Eeprom |= word == "eeprom" || word == "all";
            regions.IdLocations |= word == "id" || word == "all";
            regions.ConfigurationWord |= word == "config" || word == "all";
            if (word == "quietly")
                hidden = {"progress", "cleared"};
            if (word == "ends")
                hidden = {"progress", "cleared", "line", ">", "tick", "box", "views", "closes"};
        }
        Lines record = Bench().Run(function->Code, regions);
        Count(record);
        std::erase_if(record, [&](const std::string& entry) {
            return std::ranges::any_of(hidden,
                                       [&](const auto& kind) { return entry.starts_with(kind); });
        });
        Compare(record);
    }

    // Lines "  = N BYTES" after a run: N frames of the run begin with these bytes.
    void Count(const Lines& record) {
        for (; next_ < lines_.size() && lines_[next_].starts_with("  = "); ++next_) {
            std::istringstream words(lines_[next_].substr(4));
            const int expected = Number(words);
            std::string frame;
            std::getline(words >> std::ws, frame);
            EXPECT_EQ(expected, std::ranges::count_if(record,
                                                      [&](const std::string& entry) {
                                                          return entry.starts_with("> " + frame);
                                                      }))
                << frame;
        }
    }

    // The indented lines that follow; "..." stands for any number of entries, at the beginning.
    void Compare(Lines record) {
        Lines expected;
        for (; next_ < lines_.size() && lines_[next_].starts_with("  "); ++next_)
            expected.push_back(WithImage(lines_[next_].substr(2)));
        if (!expected.empty() && expected.front() == "...") {
            expected.erase(expected.begin());
            if (record.size() > expected.size())
                record.erase(record.begin(), record.end() - std::ssize(expected));
        }
        EXPECT_EQ(record, expected);
    }

    // "[4200]" stands for the image's sixteen bytes there.
    std::string WithImage(const std::string& line) {
        const auto bracket = line.find('[');
        if (!line.starts_with("> ") || bracket == std::string::npos)
            return line;
        const int address = std::stoi(line.substr(bracket + 1), nullptr, 16);
        return line.substr(0, bracket) + HexBytes(Bench().image.Bytes(address, 16));
    }

    FunctionBench& Bench() {
        if (!bench_)
            bench_.emplace(device_, faults_);
        return *bench_;
    }

    static std::string Word(std::istringstream& words) {
        std::string word;
        words >> word;
        return word;
    }
    static int Number(std::istringstream& words) { return std::stoi(Word(words)); }
    static std::int16_t Short(std::istringstream& words) {
        return static_cast<std::int16_t>(Number(words));
    }
    static int Hex(std::istringstream& words) { return std::stoi(Word(words), nullptr, 16); }
    static std::uint8_t HexAsByte(std::istringstream& words) {
        return static_cast<std::uint8_t>(Hex(words));
    }

    std::string file_;
    Lines lines_;
    std::size_t next_ = 0;
    DeviceRecord device_;
    Simulator::FaultPlan faults_;
    std::optional<FunctionBench> bench_;
};

class Transcripts : public testing::TestWithParam<const char*> {};

TEST_P(Transcripts, AreWhatWireAndScreenRecord) {
    Transcript(std::filesystem::path(TEST_DATA "/functions") / GetParam()).Perform();
}

INSTANTIATE_TEST_SUITE_P(Functions, Transcripts,
                         testing::Values("blank.txt", "erase.txt", "program.txt", "read.txt",
                                         "verify.txt", "auto.txt"));

}  // namespace
}  // namespace Tamber
