// Usage: fuzz_readers ROUNDS FOLDER. Spoils the files below FOLDER in ROUNDS ways, always the same
// ones, and hands them to the readers. A promise that is broken, or a sanitizer, ends the program;
// the input of that round is then found in the file fuzz_readers.input.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::mt19937 source(1);

std::size_t Below(std::size_t bound) {
    return source() % bound;
}

std::vector<std::string> Texts(const fs::path& folder) {
    constexpr std::uintmax_t longest = 4096;  // short ones take more rounds in the same time
    std::vector<fs::path> paths;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.file_size() <= longest)
            paths.push_back(entry.path());
    std::ranges::sort(paths);
    std::vector<std::string> texts;
    for (const fs::path& path : paths) {
        std::ifstream file(path, std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return texts;
}

void Spoil(std::string& text, const std::string& other) {
    constexpr std::string_view likely = "0123456789abcdefABCDEF:,\"+- \t\r\n\x1A\xEF\xBB\xBF";
    const std::size_t place = Below(text.size() + 1);
    const std::size_t length = std::min(Below(20), text.size() - place);
    switch (Below(5)) {
        case 0:
            text.insert(place, 1, likely[Below(likely.size())]);
            break;
        case 1:
            text.insert(place, 1, static_cast<char>(Below(256)));
            break;
        case 2:
            text.erase(place, length);
            break;
        case 3:
            text.replace(place, std::min<std::size_t>(length, 1), 1, likely[Below(likely.size())]);
            break;
        case 4:
            text.insert(place, other.substr(Below(other.size() + 1), Below(100)));
            break;
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    const long rounds = argumentCount == 3 ? std::atol(arguments[1]) : 0;
    const std::vector<std::string> texts =
        argumentCount == 3 ? Texts(arguments[2]) : std::vector<std::string>();
    if (rounds <= 0 || texts.empty()) {
        std::fprintf(stderr, "usage: fuzz_readers ROUNDS FOLDER-WITH-FILES\n");
        return EXIT_FAILURE;
    }
    for (long round = 0; round < rounds; ++round) {
        std::string input = texts[Below(texts.size())];
        for (std::size_t spoils = Below(5); spoils > 0; --spoils)
            Spoil(input, texts[Below(texts.size())]);
        for (int choice = 0; choice < 2; ++choice)
            input.insert(0, 1, static_cast<char>(Below(256)));
        std::ofstream("fuzz_readers.input", std::ios::binary) << input;
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
    std::printf("%ld rounds over %zu files\n", rounds, texts.size());
    return EXIT_SUCCESS;
}
