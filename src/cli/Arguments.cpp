#include "cli/Arguments.hpp"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <numeric>
#include <sstream>

#include "cli/Commands.hpp"

namespace Tamber::Cli {
namespace {

constexpr char Version[] = "tamber-cli " TAMBER_VERSION;

std::string StatusList() {
    std::string text = "Exit status:\n";
    for (const StatusMeaning& meaning : StatusMeanings())
        text += fmt::format("{:>5}  {}\n", static_cast<int>(meaning.Status), meaning.Meaning);
    return text + "\ntamber-cli COMMAND --help describes a command.";
}

Regions RegionsFrom(const std::string& list) {
    Regions regions{false, false, false, false};
    std::istringstream names(list);
    for (std::string name; std::getline(names, name, ',');) {
        if (name == "pm")
            regions.ProgramMemory = true;
        else if (name == "eeprom")
            regions.Eeprom = true;
        else if (name == "id")
            regions.IdLocations = true;
        else if (name == "config")
            regions.ConfigurationWord = true;
        else
            throw CLI::ValidationError(fmt::format(
                "\"{}\" is not a region; the regions are pm, eeprom, id and config", name));
    }
    return regions;
}

PortSetting SettingFrom(const std::string& text) {
    if (text.size() < 3 || text[0] < '1' || text[0] > '4' || text[1] != '=')
        throw CLI::ValidationError(
            fmt::format("--set: \"{}\" is not N=PATH with N from 1 to 4", text));
    return {text[0] - '0', text.substr(2)};
}

// How many letters have to be put in, taken out or changed to make one word of the other.
std::size_t Distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= one.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= other.size(); ++j) {
            const std::size_t changed = diagonal + (one[i - 1] == other[j - 1] ? 0 : 1);
            diagonal = std::exchange(row[j], std::min({row[j] + 1, row[j - 1] + 1, changed}));
        }
    }
    return row.back();
}

// "; did you mean "program"?" for the nearest of `names`, or nothing when none is near.
std::string Nearest(std::string_view word, const std::vector<std::string>& names) {
    constexpr std::size_t near = 3;
    const auto distance = [&](const std::string& name) {
        return name.starts_with(word) ? 1 : Distance(word, name);
    };
    const auto nearest = std::ranges::min_element(names, {}, distance);
    if (nearest == names.end() || distance(*nearest) >= std::min(near, word.size()))
        return ".";
    return fmt::format("; did you mean \"{}\"?", *nearest);
}

// Where the options go before they have their own types.
class CommandLine {
  public:
    CommandLine() : app_("Drives a serial programmer board for PIC microcontrollers.") {
        app_.name("tamber-cli");
        app_.set_version_flag("--version", Version, "Show the version and end");
        app_.set_help_flag("-h,--help", "Show this text and end");
        app_.footer(StatusList());
        app_.require_subcommand(0, 1);  // a wrong one is named better than a missing one
        app_.fallthrough();
        AddOptions();
        for (const CommandForm& form : CommandForms())
            AddCommand(form);
    }

    Arguments Parse(std::vector<std::string> words) {
        std::ranges::reverse(words);
        try {
            app_.parse(words);
        } catch (const CLI::ExtrasError&) {
            RefuseCommand();
            RefuseOption();
            throw;
        }
        if (app_.get_subcommands().empty())
            throw CLI::RequiredError("A command");
        if (!only_.empty())
            arguments_.Only = RegionsFrom(only_);
        if (!set_.empty())
            arguments_.Setting = SettingFrom(set_);
        if (!calibration_.empty())
            TakeCalibration(calibration_);
        TakePort();
        CheckCombinations();
        return arguments_;
    }

    std::string AnswerTo(const CLI::ParseError& error) const {
        std::ostringstream out;
        std::ostringstream errors;
        app_.exit(error, out, errors);
        std::string text = out.str() + errors.str();
        if (error.get_exit_code() != 0)  // the terminal ends the last line of a complaint
            text.erase(text.find_last_not_of('\n') + 1);
        return text;
    }

  private:
    // Reports only the word in the command's place.
    void RefuseCommand() const {
        const std::vector<std::string> unexpected = app_.remaining();
        const auto word = std::ranges::find_if(
            unexpected, [](const std::string& text) { return !text.starts_with('-'); });
        if (app_.get_subcommands().empty() && word != unexpected.end())
            throw CLI::ValidationError(
                fmt::format("There is no command \"{}\"{}", *word, Nearest(*word, CommandNames())));
    }

    void RefuseOption() const {
        const std::vector<std::string> unexpected = app_.remaining(true);
        const auto word = std::ranges::find_if(
            unexpected, [](const std::string& text) { return text.starts_with("--"); });
        if (word == unexpected.end())
            return;
        std::vector<std::string> names;
        const auto add = [&](const CLI::App& app) {
            for (const CLI::Option* option : app.get_options())
                for (const std::string& name : option->get_lnames())
                    names.push_back("--" + name);
        };
        add(app_);
        std::ranges::for_each(app_.get_subcommands(), [&](const CLI::App* app) { add(*app); });
        const std::string name = word->substr(0, word->find('='));
        throw CLI::ValidationError(
            fmt::format("There is no option \"{}\"{}", name, Nearest(name, names)));
    }

    static std::vector<std::string> CommandNames() {
        std::vector<std::string> names;
        for (const CommandForm& form : CommandForms())
            names.emplace_back(form.Name);
        return names;
    }

    // An option, or a file, with a value; an empty one would be taken for none at all.
    template <typename Value>
    static CLI::Option& Add(CLI::App& app, const char* name, Value& value, const char* meaning,
                            const char* type) {
        return *app.add_option(name, value, meaning)
                    ->type_name(type)
                    ->check(CLI::Validator(
                        [](const std::string& text) {
                            return text.empty() ? "must not be empty" : std::string();
                        },
                        ""));
    }

    void AddOptions() {
        Add(app_, "-C", arguments_.Folder, "Working folder instead of the current one", "DIR");
        Add(app_, "--device", arguments_.Device, "Device instead of the selected one", "NAME");
        Add(app_, "--port", arguments_.Port, "Serial port instead of the settings' one", "N|PATH");
        Add(app_, "--only", only_, "Regions that take part: pm, eeprom, id, config", "LIST");
        app_.add_flag("--simulate", arguments_.Simulate,
                      "Use a simulated board with a blank device, no port");
        Add(app_, "--socket", arguments_.Socket,
            "HEX file that keeps the contents of the simulated board's socket", "FILE");
        Add(app_, "--trace", arguments_.Trace, "Write every frame and reply to FILE", "FILE");
        app_.add_flag("--json", arguments_.Json, "Write one JSON object to standard output");
        app_.add_flag("-q,--quiet", arguments_.Quiet, "Do not report what went well");
    }

    void AddCommand(const CommandForm& form) {
        CLI::App& command =
            *app_.add_subcommand(std::string(form.Name), form.Meaning)->callback([this, &form] {
                arguments_.Command = &form;
            });
        if (form.File != FileUse::None)
            Add(command, form.FileName, arguments_.File, "HEX file; - is standard in or out", "")
                .required(form.File == FileUse::Required);
        if (*form.OutputName != '\0')
            Add(command, form.OutputName, arguments_.Output, "HEX file; - is standard output", "")
                .required();
        if (form.RefusesFiles)
            command.add_flag("--force", arguments_.Force,
                             "Take a file that is not for the device as well");
        if (form.RefusesFiles && form.Function)
            command.add_flag("--as-is", arguments_.AsIs,
                             "Leave configuration word and IDs of 12-bit devices in the file's "
                             "places");
        if (form.KeepsCalibration)
            Add(command, "--calibration", calibration_,
                "What becomes of a calibration word: keep (the default), file, drop, or a word to "
                "write, hexadecimal",
                "USE");
        if (form.Compares)
            command.add_flag("--exact", arguments_.Exact,
                             "Compare every bit, also those that the device does not implement");
        if (form.Strict)
            command.add_flag("--strict", arguments_.Strict,
                             "Fail when a line is malformed or the file is not for the device");
        if (form.SetsPorts)
            Add(command, "--set", set_, "Make COMn of the working folder stand for PATH", "N=PATH");
    }

    void TakeCalibration(const std::string& text) {
        const char* const end = text.data() + text.size();
        const auto [rest, error] =
            std::from_chars(text.data(), end, arguments_.CalibrationWord, 16);
        if (text == "keep")
            arguments_.Calibration = CalibrationUse::Keep;
        else if (text == "file")
            arguments_.Calibration = CalibrationUse::File;
        else if (text == "drop")
            arguments_.Calibration = CalibrationUse::Drop;
        else if (error == std::errc() && rest == end)
            arguments_.Calibration = CalibrationUse::Given;
        else
            throw CLI::ValidationError(fmt::format(
                "--calibration: \"{}\" is not keep, file, drop or a hexadecimal word", text));
    }

    // "COM2" is another way to say 2.
    void TakePort() {
        constexpr int comPorts = 4;
        std::string& port = arguments_.Port;
        const bool named = port.size() > 3 && (port.starts_with("COM") || port.starts_with("com"));
        const std::string number = named ? port.substr(3) : port;
        if (number.find_first_not_of("0123456789") != std::string::npos)
            return;
        port = number;
        if (!port.empty() && (port.size() > 1 || port[0] < '1' || port[0] > '0' + comPorts))
            throw CLI::ValidationError(fmt::format(
                "--port: there is no COM{}; COM1 to COM{} or a path can be given", port, comPorts));
    }

    void CheckCombinations() const {
        if (!arguments_.Socket.empty() && !arguments_.Simulate)
            throw CLI::ValidationError("--socket needs --simulate");
        if (arguments_.Simulate && !arguments_.Port.empty())
            throw CLI::ValidationError("--simulate and --port exclude each other");
        const bool fileToOutput =
            arguments_.Output == "-" ||
            (arguments_.Command->Function == FunctionRead && arguments_.File == "-");
        if (fileToOutput && arguments_.Json)
            throw CLI::ValidationError("--json and the HEX file cannot both go to standard output");
    }

    CLI::App app_;
    Arguments arguments_;
    std::string only_;
    std::string set_;
    std::string calibration_;
};

}  // namespace

tl::expected<Arguments, Answer> ParseArguments(const std::vector<std::string>& words) {
    CommandLine line;
    try {
        if (!words.empty() && words.front() == "help")  // of a command, or of them all
            return line.Parse({words.size() > 1 ? words[1] : "--help", "--help"});
        return line.Parse(words);
    } catch (const CLI::Success& success) {
        return tl::unexpected(Answer{ExitStatus::Done, line.AnswerTo(success), false});
    } catch (const CLI::ParseError& error) {
        return tl::unexpected(Answer{ExitStatus::WrongUsage, line.AnswerTo(error),
                                     std::ranges::find(words, "--json") != words.end()});
    }
}

}  // namespace Tamber::Cli
