#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <sstream>

#include "core/TestFolder.hpp"
#include "operations/DeviceFunctions.hpp"
#include "support/FunctionBench.hpp"

namespace Tamber {
namespace {

using Lines = std::vector<std::string>;

// A part's words, taken one by one.
struct Words {
    explicit Words(const std::string& line) : text(line) {}

    std::string Next() {
        std::string word;
        text >> word;
        return word;
    }
    std::int16_t Number() { return static_cast<std::int16_t>(std::stoi(Next())); }
    int Hex() { return std::stoi(Next(), nullptr, 16); }
    std::uint8_t Byte() { return static_cast<std::uint8_t>(Hex()); }
    bool More() { return !(text >> std::ws).eof(); }

    std::istringstream text;
};

// The scenarios of a file: a device, what is done to it, runs and what they must record. The form
// is described in tests/data/README.md.
class Transcript {
  public:
    explicit Transcript(const std::filesystem::path& file) : lines_(Split(FileText(file), "\n")) {}

    void Perform() {
        while (next_ < lines_.size()) {
            const std::string& line = lines_[next_++];
            const testing::ScopedTrace trace("line", static_cast<int>(next_), line);
            if (line.empty() || line.starts_with('#'))
                continue;
            for (const std::string& part : Split(line, " / ")) {
                Words words(part);
                Obey(words.Next(), words);
            }
        }
    }

  private:
    void Obey(const std::string& verb, Words& words) {
        if (verb == "device") {
            device_ = {words.Next(), words.Number(), words.Number(), words.Number(),
                       words.Number()};
            faults_ = {};
            bench_.reset();
        } else if (verb == "silent-from") {
            faults_.SilentFrom = words.Number();
        } else if (verb == "refuse") {
            faults_.RefusedWrite = {static_cast<std::uint16_t>(words.Hex()), words.Byte()};
        } else if (verb == "reply-length") {
            faults_.ReplyLength = {words.Number(), static_cast<std::size_t>(words.Number())};
        } else if (verb == "reply-byte") {
            faults_.AlteredByte = {words.Number(), static_cast<std::size_t>(words.Number()),
                                   words.Byte()};
        } else {
            if (!bench_)
                bench_.emplace(device_, faults_);
            Act(verb, words);
        }
    }

    void Act(const std::string& verb, Words& words) {
        if (verb == "run") {
            Run(words);
        } else if (verb == "image" || verb == "same") {
            bench_->FillImage();
            if (verb == "same")
                bench_->CopyImageToSocket();
        } else if (verb == "socket") {
            const auto address = static_cast<std::uint32_t>(words.Hex());
            EXPECT_TRUE(bench_->Socket().SetByte(address, words.Byte()));
        } else if (verb == "flip") {
            while (words.More()) {
                const auto address = static_cast<std::uint32_t>(words.Hex());
                bench_->Socket().SetByte(address, bench_->Socket().ByteAt(address) ^ 0x01);
            }
        } else if (verb == "series") {
            bench_->series = {};
            while (words.More())
                bench_->series.Entries[std::size_t(++bench_->series.AutoCount)] = words.Number();
        } else if (verb == "stop-after") {
            bench_->display.looksBeforeStop = words.Number();
        } else {
            ADD_FAILURE() << "no such verb";
        }
    }

    void Run(Words& words) {
        const auto functions = DeviceFunctions();
        const auto function = std::ranges::find(functions, words.Next(), &DeviceFunction::Command);
        ASSERT_NE(function, functions.end());
        const std::string rest = words.text.str();
        const auto says = [&](const char* word) { return rest.find(word) != std::string::npos; };
        const bool all = says(" all");
        Lines record = bench_->Run(function->Code, {all || says(" pm"), all || says(" eeprom"),
                                                    all || says(" id"), all || says(" config")});
        CompareCounts(record);
        const bool ends = says(" ends");
        std::erase_if(record, [&](const std::string& entry) {
            const bool quiet = entry.starts_with("progress") || entry == "cleared";
            return ends ? !entry.starts_with("end") && entry != "error" : quiet && says(" quietly");
        });
        Compare(record);
    }

    void CompareCounts(const Lines& record) {
        for (; next_ < lines_.size() && lines_[next_].starts_with("  = "); ++next_) {
            Words words(lines_[next_].substr(4));
            const int expected = words.Number();
            const std::string frame =
                ">" + words.text.str().substr(std::size_t(words.text.tellg()));
            EXPECT_EQ(expected, std::ranges::count_if(record,
                                                      [&](const std::string& entry) {
                                                          return entry.starts_with(frame);
                                                      }))
                << frame;
        }
    }

    void Compare(Lines record) {
        Lines expected;
        for (; next_ < lines_.size() && lines_[next_].starts_with("  "); ++next_)
            for (const std::string& part : Split(lines_[next_].substr(2), " / "))
                expected.push_back(WithImage(part));
        if (!expected.empty() && expected.front() == "...") {
            const auto skipped =
                std::max<std::ptrdiff_t>(std::ssize(record) - std::ssize(expected), 0);
            record.erase(record.begin(), record.begin() + skipped);
            record.front() = "...";
        }
        EXPECT_EQ(record, expected);
    }

    // "[4200]" stands for the image's sixteen bytes there.
    std::string WithImage(const std::string& line) const {
        const auto bracket = line.find('[');
        if (!line.starts_with("> ") || bracket == std::string::npos)
            return line;
        const int address = std::stoi(line.substr(bracket + 1), nullptr, 16);
        return line.substr(0, bracket) + HexBytes(bench_->image.Bytes(address, 16));
    }

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
