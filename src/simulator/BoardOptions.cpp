#include "simulator/BoardOptions.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>

namespace Tamber::Simulator {
namespace {

using Numbers = std::vector<int>;

struct Range {
    int Least;
    int Most;
};

constexpr Range Request{1, 1'000'000};
constexpr Range Length{0, 1024};
constexpr Range Byte{0, 0xFF};
constexpr Range Milliseconds{0, 1'000'000};

constexpr char FaultGroup[] = "Faults";

// A whole number in decimal, or in hexadecimal after 0x, with no sign or blank.
[[nodiscard]] std::optional<int> NumberFrom(std::string_view text, Range range) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    text.remove_prefix(hexadecimal ? 2 : 0);
    int number = 0;
    const auto* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, hexadecimal ? 16 : 10);
    if (error != std::errc{} || rest != end || text.starts_with('-') || number < range.Least ||
        number > range.Most)
        return std::nullopt;
    return number;
}

// The numbers in `text`, one for each range, with colons between them; empty when it is anything
// else.
[[nodiscard]] Numbers NumbersFrom(std::string text, const std::vector<Range>& ranges) {
    Numbers numbers;
    for (const Range& range : ranges) {
        const auto length = text.find(':');
        const auto number = NumberFrom(text.substr(0, length), range);
        const bool last = numbers.size() + 1 == ranges.size();
        if (!number || last != (length == std::string::npos))
            return {};
        numbers.push_back(*number);
        text.erase(0, length == std::string::npos ? length : length + 1);
    }
    return numbers;
}

bool Printable(const std::string& text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

// The options of the program; each stores its value in `options`.
class CommandLine {
  public:
    explicit CommandLine(BoardOptions& options) : options_(options), plan_(options.Faults) {
        app_.set_help_flag("--help", "Show this text and end");
        app_.footer(
            "Requests are counted from 1: identifications, block reads and block writes.\n"
            "Numbers may be written in hexadecimal, as 0x1F.");
        AddDevice();
        AddBoard();
        AddFaults();
    }

    void Parse(std::vector<std::string> words) {
        std::ranges::reverse(words);
        app_.parse(words);
        const auto faults = app_.get_options([](const CLI::Option* option) {
            return option->get_group() == FaultGroup && option->count() > 0;
        });
        const bool own =
            !faults.empty() || !options_.LoadFile.empty() || !options_.SaveFile.empty();
        if (!options_.ReplayFile.empty() && own)
            throw CLI::ValidationError("--replay takes no faults, no --load and no --save");
    }

    std::string Help() const { return app_.help(); }

  private:
    // An option whose value `store` takes; it returns false for one that is not valid.
    template <typename Store>
    CLI::Option* Add(const std::string& name, const char* form, const std::string& meaning,
                     Store store) {
        const auto take = [=](const std::string& text) {
            if (!store(text))
                throw CLI::ValidationError(name + ' ' + text + " is not valid: " + meaning);
        };
        return app_.add_option_function<std::string>(name, take, meaning)
            ->type_name(form)
            ->take_last()
            ->group(group_);
    }

    void AddText(const char* name, const char* form, const char* meaning, std::string& target) {
        Add(name, form, meaning, [&](const std::string& text) { return !(target = text).empty(); });
    }

    template <typename Store>
    void AddNumbers(const char* name, const char* form, const std::string& meaning,
                    const std::vector<Range>& ranges, Store store) {
        Add(name, form, meaning, [=](const std::string& text) {
            const Numbers numbers = NumbersFrom(text, ranges);
            if (!numbers.empty())
                store(numbers);
            return !numbers.empty();
        });
    }

    template <typename Target>
    void AddNumber(const char* name, const char* form, const char* meaning, Range range,
                   Target& target) {
        AddNumbers(name, form, meaning, {range}, [&](auto& n) { target = n[0]; });
    }

    void AddDevice() {
        auto& [type, words, eeprom, calibration] = options_.Device;
        AddNumber("--type", "N", "Device type in the socket, 1 to 26", {1, 26}, type);
        AddNumber("--words", "N", "Program words, 0 to 8192", {0, 8192}, words);
        AddNumber("--eeprom", "N", "EEPROM bytes, 0 to 256", {0, 256}, eeprom);
        AddNumber("--calibration", "WORD", "Calibration word from the factory, 0 to 0x3FFF",
                  {0, 0x3FFF}, calibration);
        AddText("--load", "FILE", "HEX file the device starts with", options_.LoadFile);
        AddText("--save", "FILE", "HEX file to write on SIGTERM, SIGINT, SIGUSR1 and hang-up",
                options_.SaveFile);
    }

    void AddBoard() {
        group_ = "Board";
        Add("--name", "NAME", "The board's name, 1 to 5 printable characters",
            [&](const std::string& text) {
                options_.Identity.Name = text;
                return !text.empty() && text.size() <= 5 && Printable(text);
            });
        Add("--version", "X.Y",
            "The board's version, two characters around a point; without them, show the program's",
            [&](const std::string& text) {
                if (text.empty())
                    throw CLI::CallForVersion("tamber-board " TAMBER_VERSION "\n", 0);
                const bool good = text.size() == 3 && text[1] == '.' && Printable(text);
                if (good) {
                    options_.Identity.Major = text.front();
                    options_.Identity.Minor = text.back();
                }
                return good;
            })
            ->expected(0, 1);
        AddText("--link", "PATH", "Keep a symbolic link to the pseudo-terminal there",
                options_.Link);
        AddNumber("--pace", "BAUD",
                  "Bits per second on the line, 50 to 4000000; without it replies come at once",
                  {50, 4'000'000}, options_.Pace);
        app_.add_flag("--trace", options_.Trace,
                      "Write a line to standard error for every frame and reply")
            ->group(group_);
        AddText("--replay", "FILE", "Answer as the board in that trace did; no device, no faults",
                options_.ReplayFile);
    }

    void AddFaults() {
        group_ = FaultGroup;
        AddNumber("--silent-from", "K", "No answer from request K on", Request, plan_.SilentFrom);
        AddNumbers("--reply-length", "K:N", "The reply to request K has N bytes, 0 to 1024",
                   {Request, Length}, [&](auto& n) {
                       plan_.ReplyLength = {n[0], static_cast<std::size_t>(n[1])};
                   });
        AddNumbers("--alter-reply", "K:I:V",
                   "Byte I (from 0) of the reply to request K has the value V",
                   {Request, {0, 1023}, Byte}, [&](auto& n) {
                       plan_.AlteredByte = {n[0], static_cast<std::size_t>(n[1]),
                                            static_cast<std::uint8_t>(n[2])};
                   });
        AddNumbers("--refuse-write", "ADDRESS:LOW",
                   "The block at that byte address is refused with that low byte",
                   {{0, 0xFFFF}, Byte}, [&](auto& n) {
                       plan_.RefusedWrite = {static_cast<std::uint16_t>(n[0]),
                                             static_cast<std::uint8_t>(n[1])};
                   });
        AddNumber("--identification-length", "N", "Identifications have N bytes, 0 to 1024", Length,
                  plan_.IdentificationLength);
        Add("--delay", "[K:]MS", "The reply to request K, or every one, is MS milliseconds late",
            [&](const std::string& text) { return StoreDelay(text); });
        AddExtra("--extra-front", "in front of the reply to", FaultPlan::Place::Front);
        AddExtra("--extra-inside", "in the middle of the reply to", FaultPlan::Place::Inside);
        AddExtra("--extra-after", "right behind the reply to", FaultPlan::Place::After);
        AddNumbers(
            "--extra-later", "K:N:MS",
            "N bytes, 1 to 1024, that nobody asked for come MS milliseconds after request K",
            {Request, {1, 1024}, Milliseconds}, [&](auto& n) {
                plan_.Extra.push_back({n[0], static_cast<std::size_t>(n[1]),
                                       FaultPlan::Place::Later, std::chrono::milliseconds(n[2])});
            });
        AddNumbers("--flip-data", "K:N", "N bits, 1 to 128, of the reply to request K are turned",
                   {Request, {1, 128}}, [&](auto& n) {
                       plan_.FlippedData = {n[0], static_cast<std::size_t>(n[1])};
                   });
        AddNumber("--flip-count", "K", "A bit of the count of the reply to request K is turned",
                  Request, plan_.FlippedCount);
        AddNumber("--repeat-reply", "K", "The reply to request K is the one before again", Request,
                  plan_.RepeatedReply);
        AddNumber("--damage-request", "K", "A bit of request K is turned on its way", Request,
                  plan_.DamagedRequest);
        AddNumber("--reset", "K", "Reset in the middle of the reply to request K", Request,
                  plan_.ResetInReply);
        AddNumbers("--not-read", "K:MS",
                   "The line is not read for MS milliseconds, from request K on",
                   {Request, Milliseconds}, [&](auto& n) {
                       plan_.Unread = {n[0], std::chrono::milliseconds(n[1])};
                   });
        AddNumber("--seed", "N", "What draws the bits that are turned, 0 to 1000000",
                  {0, 1'000'000}, plan_.Seed);
        app_.add_flag("--count-erases", plan_.CountErases, "Erase commands count as requests")
            ->group(group_);
        AddNumber("--hang-up", "K", "Hang up at request K", Request, plan_.HangUpAtRequest);
        AddNumber("--hang-up-in-reply", "K", "Hang up in the middle of the reply to request K",
                  Request, plan_.HangUpInReply);
    }

    void AddExtra(const char* name, const char* where, FaultPlan::Place place) {
        AddNumbers(
            name, "K:N",
            std::string("N bytes, 1 to 1024, that nobody asked for come ") + where + " request K",
            {Request, {1, 1024}}, [this, place](auto& n) {
                plan_.Extra.push_back({n[0], static_cast<std::size_t>(n[1]), place, {}});
            });
    }

    bool StoreDelay(const std::string& text) {
        const bool all = text.find(':') == std::string::npos;
        const Numbers numbers = NumbersFrom(all ? "1:" + text : text, {Request, Milliseconds});
        if (!numbers.empty())
            plan_.Delay = {all ? std::nullopt : std::optional(numbers[0]),
                           std::chrono::milliseconds(numbers[1])};
        return !numbers.empty();
    }

    CLI::App app_{"A simulated programmer board on a pseudo-terminal.", "tamber-board"};
    BoardOptions& options_;
    FaultPlan& plan_;
    const char* group_ = "Device";
};

}  // namespace

tl::expected<BoardOptions, Ending> ParseBoardOptions(std::vector<std::string> words) {
    BoardOptions options;
    CommandLine line(options);
    try {
        line.Parse(std::move(words));
        return options;
    } catch (const CLI::CallForVersion& version) {
        return tl::unexpected(Ending{0, version.what()});
    } catch (const CLI::Success&) {
        return tl::unexpected(Ending{0, line.Help()});
    } catch (const CLI::ParseError& error) {
        return tl::unexpected(Ending{WronglyCalled, error.what()});
    }
}

}  // namespace Tamber::Simulator
