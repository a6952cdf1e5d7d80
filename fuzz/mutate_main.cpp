// Usage: fuzz_readers ROUNDS FOLDER. Spoils the files below FOLDER in ROUNDS ways, always the same
// ones, and hands them to the readers. A promise that is broken, or a sanitizer, ends the program;
// the input of that round is then found in the file fuzz_readers.input.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::mt19937 source(1);

std::size_t Below(std::size_t bound) {
    return source() % bound;
}

void Spoil(std::string& text, const std::string& other) {
    constexpr std::string_view likely = "0123456789abcdefABCDEF:,\"+- \t\r\n\x1A\xEF\xBB\xBF";
    const std::string inserted[] = {std::string(1, likely[Below(likely.size())]),
                                    std::string(1, static_cast<char>(Below(256))),
                                    other.substr(Below(other.size() + 1), Below(100)),
                                    {}};
    const std::size_t erased[] = {0, 1, Below(20)};
    text.replace(Below(text.size() + 1), erased[Below(3)], inserted[Below(4)]);
}

}  // namespace

int main(int count, char** arguments) {
    constexpr std::uintmax_t longest = 4096;  // short ones take more rounds in the same time
    std::set<std::string> sorted;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[count - 1]))
        if (entry.is_regular_file() && entry.file_size() <= longest) {
            std::ifstream file(entry.path(), std::ios::binary);
            sorted.emplace(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    const std::vector<std::string> texts(sorted.begin(), sorted.end());
    for (long round = std::stol(arguments[1]); round > 0; --round) {
        std::string input = texts.at(Below(texts.size()));
        for (std::size_t spoils = Below(5); spoils > 0; --spoils)
            Spoil(input, texts[Below(texts.size())]);
        input.insert(0, 1, static_cast<char>(Below(256)));
        std::ofstream("fuzz_readers.input", std::ios::binary) << input;
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
}
