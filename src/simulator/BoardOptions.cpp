#include "simulator/BoardOptions.hpp"

#include <algorithm>
#include <array>

#include "simulator/OptionValues.hpp"

namespace Tamber::Simulator {

namespace {

constexpr int Many = 1'000'000;

// One option: its value as the help shows it (empty: it takes none), what the value may be, and
// what to do with it; false when the value will not do.
struct Option {
    std::string_view name;
    std::string_view value;
    std::string_view meaning;
    bool (*store)(BoardOptions&, std::string_view);
};

template <typename Target>
bool StoreNumber(Target& target, std::string_view text, int least, int most) {
    const auto number = NumberFromText(text, least, most);
    if (number)
        target = static_cast<Target>(*number);
    return number.has_value();
}

template <typename Number>
bool StoreNumber(std::optional<Number>& target, std::string_view text, int least, int most) {
    const auto number = NumberFromText(text, least, most);
    if (number)
        target = static_cast<Number>(*number);
    return number.has_value();
}

bool StoreText(std::string& target, std::string_view text) {
    target = text;
    return !text.empty();
}

bool Printable(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

bool StoreName(BoardOptions& options, std::string_view text) {
    options.identification.name = text;
    return !text.empty() && text.size() <= 5 && Printable(text);
}

bool StoreVersion(BoardOptions& options, std::string_view text) {
    if (text.size() != 3 || text[1] != '.' || !Printable(text))
        return false;
    options.identification.major = text[0];
    options.identification.minor = text[2];
    return true;
}

bool StoreReplyLength(BoardOptions& options, std::string_view text) {
    const auto pieces = Pieces(text, ':');
    auto& fault = options.faults.replyLength.emplace();
    return pieces.size() == 2 && StoreNumber(fault.request, pieces[0], 1, Many) &&
           StoreNumber(fault.length, pieces[1], 0, 1024);
}

bool StoreAlteredByte(BoardOptions& options, std::string_view text) {
    const auto pieces = Pieces(text, ':');
    auto& fault = options.faults.alteredByte.emplace();
    return pieces.size() == 3 && StoreNumber(fault.request, pieces[0], 1, Many) &&
           StoreNumber(fault.index, pieces[1], 0, 1023) &&
           StoreNumber(fault.value, pieces[2], 0, 0xFF);
}

bool StoreRefusedWrite(BoardOptions& options, std::string_view text) {
    const auto pieces = Pieces(text, ':');
    auto& fault = options.faults.refusedWrite.emplace();
    return pieces.size() == 2 && StoreNumber(fault.block, pieces[0], 0, 0xFFFF) &&
           StoreNumber(fault.lowByte, pieces[1], 0, 0xFF);
}

bool StoreDelay(BoardOptions& options, std::string_view text) {
    const auto pieces = Pieces(text, ':');
    auto& fault = options.faults.delay.emplace();
    int milliseconds = 0;
    const bool good = pieces.size() <= 2 && StoreNumber(milliseconds, pieces.back(), 0, Many) &&
                      (pieces.size() == 1 || StoreNumber(fault.request, pieces[0], 1, Many));
    fault.time = std::chrono::milliseconds(milliseconds);
    return good;
}

using Text = std::string_view;

constexpr std::array Options{
    Option{"--link", "PATH", "keep a symbolic link to the pseudo-terminal there",
           [](BoardOptions& o, Text t) { return StoreText(o.link, t); }},
    Option{"--type", "N", "device type in the socket, 1 to 26",
           [](BoardOptions& o, Text t) { return StoreNumber(o.device.typeCode, t, 1, 26); }},
    Option{"--words", "N", "program words, 0 to 8192",
           [](BoardOptions& o, Text t) { return StoreNumber(o.device.programWords, t, 0, 8192); }},
    Option{"--eeprom", "N", "EEPROM bytes, 0 to 256",
           [](BoardOptions& o, Text t) { return StoreNumber(o.device.eepromBytes, t, 0, 256); }},
    Option{"--load", "FILE", "HEX file the device starts with",
           [](BoardOptions& o, Text t) { return StoreText(o.loadFile, t); }},
    Option{"--save", "FILE", "HEX file to write on SIGTERM, SIGINT, SIGUSR1 and hang-up",
           [](BoardOptions& o, Text t) { return StoreText(o.saveFile, t); }},
    Option{"--name", "NAME", "the board's name, 1 to 5 printable characters", StoreName},
    Option{"--version", "X.Y", "the board's version, two characters around a point", StoreVersion},
    Option{"--pace", "BAUD", "pace of the line in bits per second, 50 to 4000000; else at once",
           [](BoardOptions& o, Text t) { return StoreNumber(o.pace, t, 50, 4'000'000); }},
    Option{"--trace", "", "a line on standard error for every frame and reply",
           [](BoardOptions& o, Text) { return o.trace = true; }},
    Option{"--silent-from", "K", "no answer from request K on, from 1",
           [](BoardOptions& o, Text t) { return StoreNumber(o.faults.silentFrom, t, 1, Many); }},
    Option{"--reply-length", "K:N", "the reply to request K has N bytes, 0 to 1024",
           StoreReplyLength},
    Option{"--alter-reply", "K:I:V", "byte I (from 0) of the reply to request K has the value V",
           StoreAlteredByte},
    Option{"--refuse-write", "ADDRESS:LOW", "the block there is refused with that low byte",
           StoreRefusedWrite},
    Option{"--identification-length", "N", "identifications have N bytes, 0 to 1024",
           [](BoardOptions& o, Text t) {
               return StoreNumber(o.faults.identificationLength, t, 0, 1024);
           }},
    Option{"--delay", "[K:]MS", "the reply to request K, or every one, is MS milliseconds late",
           StoreDelay},
    Option{
        "--hang-up", "K", "hang up at request K",
        [](BoardOptions& o, Text t) { return StoreNumber(o.faults.hangUpAtRequest, t, 1, Many); }},
    Option{"--hang-up-in-reply", "K", "hang up in the middle of the reply to request K",
           [](BoardOptions& o, Text t) { return StoreNumber(o.faults.hangUpInReply, t, 1, Many); }},
    Option{"--replay", "FILE", "answer as the board in that trace did; no device, no faults",
           [](BoardOptions& o, Text t) { return StoreText(o.replayFile, t); }},
    Option{"--help", "", "show this text", [](BoardOptions& o, Text) { return o.help = true; }},
};

}  // namespace

std::variant<BoardOptions, std::string> ParseOptions(std::span<const std::string_view> arguments) {
    BoardOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string name(arguments[i]);
        const auto* const option =
            std::find_if(Options.begin(), Options.end(),
                         [&](const Option& known) { return known.name == name; });
        if (option == Options.end())
            return name + " is not an option; --help lists them";
        const bool valued = !option->value.empty();
        if (valued && i + 1 == arguments.size())
            return name + " needs a value: " + std::string(option->meaning);
        const auto value = valued ? arguments[++i] : std::string_view();
        if (!option->store(options, value))
            return name + ' ' + std::string(value) +
                   " will not do: " + std::string(option->meaning);
    }
    const bool own =
        !options.faults.Empty() || !options.loadFile.empty() || !options.saveFile.empty();
    if (!options.replayFile.empty() && own)
        return "--replay goes with --link, --pace and --trace only";
    return options;
}

std::string HelpText() {
    std::string text =
        "tamber-board [OPTION]...\n"
        "A simulated programmer board on a pseudo-terminal. Requests are counted from 1:\n"
        "identifications, block reads and block writes. Numbers may be written as 0x1F.\n\n";
    for (const auto& option : Options) {
        std::string line = "  " + std::string(option.name) + ' ' + std::string(option.value);
        line.resize(std::max<std::size_t>(line.size() + 1, 30), ' ');
        text.append(line).append(option.meaning).append("\n");
    }
    return text;
}

}  // namespace Tamber::Simulator
