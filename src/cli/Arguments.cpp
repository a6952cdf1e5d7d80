#include "cli/Arguments.hpp"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
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
            throw;
        }
        if (app_.get_subcommands().empty())
            throw CLI::RequiredError("A command");
        if (!only_.empty())
            arguments_.Only = RegionsFrom(only_);
        if (!set_.empty())
            arguments_.Setting = SettingFrom(set_);
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
            throw CLI::ValidationError(fmt::format("There is no command \"{}\".", *word));
    }

    void AddOptions() {
        app_.add_option("-C", arguments_.Folder, "Working folder instead of the current one")
            ->type_name("DIR");
        app_.add_option("--device", arguments_.Device, "Device instead of the selected one")
            ->type_name("NAME");
        app_.add_option("--port", arguments_.Port, "Serial port instead of the settings' one")
            ->type_name("N|PATH");
        app_.add_option("--only", only_, "Regions that take part: pm, eeprom, id, config")
            ->type_name("LIST");
        app_.add_flag("--simulate", arguments_.Simulate,
                      "Use a simulated board with a blank device, no port");
        app_.add_option("--socket", arguments_.Socket,
                        "HEX file that keeps the contents of the simulated board's socket")
            ->type_name("FILE");
        app_.add_option("--trace", arguments_.Trace, "Write every frame and reply to FILE")
            ->type_name("FILE");
        app_.add_flag("--json", arguments_.Json, "Write one JSON object to standard output");
        app_.add_flag("-q,--quiet", arguments_.Quiet, "Do not report what went well");
    }

    void AddCommand(const CommandForm& form) {
        CLI::App& command =
            *app_.add_subcommand(std::string(form.Name), form.Meaning)->callback([this, &form] {
                arguments_.Command = &form;
            });
        if (form.File != FileUse::None)
            command.add_option(form.FileName, arguments_.File, "HEX file; - is standard in or out")
                ->required(form.File == FileUse::Required)
                ->type_name("");
        if (form.SetsPorts)
            command.add_option("--set", set_, "Make COMn of the working folder stand for PATH")
                ->type_name("N=PATH");
    }

    void CheckCombinations() const {
        if (!arguments_.Socket.empty() && !arguments_.Simulate)
            throw CLI::ValidationError("--socket needs --simulate");
        if (arguments_.Simulate && !arguments_.Port.empty())
            throw CLI::ValidationError("--simulate and --port exclude each other");
        const bool fileToOutput =
            arguments_.Command->Function == FunctionRead && arguments_.File == "-";
        if (fileToOutput && arguments_.Json)
            throw CLI::ValidationError("--json and the HEX file cannot both go to standard output");
    }

    CLI::App app_;
    Arguments arguments_;
    std::string only_;
    std::string set_;
};

}  // namespace

tl::expected<Arguments, Answer> ParseArguments(const std::vector<std::string>& words) {
    CommandLine line;
    try {
        return line.Parse(words);
    } catch (const CLI::Success& success) {
        return tl::unexpected(Answer{ExitStatus::Done, line.AnswerTo(success), false});
    } catch (const CLI::ParseError& error) {
        return tl::unexpected(Answer{ExitStatus::WrongUsage, line.AnswerTo(error),
                                     std::ranges::find(words, "--json") != words.end()});
    }
}

}  // namespace Tamber::Cli
