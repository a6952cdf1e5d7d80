#include "cli/Arguments.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <sstream>

#include "cli/ArgumentValues.hpp"

namespace Tamber::Cli {
namespace {

constexpr char Version[] = "tamber-cli " TAMBER_VERSION;

enum class FileUse { None, Required, Optional };

struct CommandForm {
    Command Asked;
    const char* Name;
    const char* Meaning;
    FileUse File;
    const char* FileName;
};

constexpr std::array Forms{
    CommandForm{Command::Identify, "identify", "Ask the board who it is", FileUse::None, ""},
    CommandForm{Command::Devices, "devices", "List the devices of the working folder",
                FileUse::None, ""},
    CommandForm{Command::Ports, "ports", "Show what COM1 to COM4 are, and the machine's ports",
                FileUse::None, ""},
    CommandForm{Command::Read, "read", "Read the device into a HEX file", FileUse::Required,
                "OUT.hex"},
    CommandForm{Command::Program, "program", "Write a HEX file into the device", FileUse::Required,
                "IN.hex"},
    CommandForm{Command::Verify, "verify", "Compare the device with a HEX file", FileUse::Required,
                "IN.hex"},
    CommandForm{Command::Erase, "erase", "Erase the device", FileUse::None, ""},
    CommandForm{Command::Blank, "blank", "Check that the device is erased", FileUse::None, ""},
    CommandForm{Command::Auto, "auto", "Run the Auto series of the working folder",
                FileUse::Optional, "IN.hex"},
    CommandForm{Command::Inspect, "inspect", "Look through a HEX file; no board is needed",
                FileUse::Required, "IN.hex"},
};

std::string StatusList() {
    std::string text = "Exit status:\n";
    for (const StatusMeaning& meaning : StatusMeanings()) {
        std::string number = std::to_string(static_cast<int>(meaning.Status));
        number.insert(0, 5 - number.size(), ' ');
        text += number + "  " + std::string(meaning.Meaning) + "\n";
    }
    return text + "\ntamber-cli COMMAND --help tells more about a command.";
}

// Where the options go before they are in their own types.
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
        for (const CommandForm& form : Forms)
            AddCommand(form);
    }

    void Parse(std::vector<std::string> words) {
        std::ranges::reverse(words);
        try {
            app_.parse(words);
        } catch (const CLI::ExtrasError&) {
            RefuseCommand();
            throw;
        }
        if (app_.get_subcommands().empty())
            throw CLI::RequiredError("A command");
        for (const CommandForm& form : Forms)
            if (app_.got_subcommand(form.Name))
                arguments_.Asked = form.Asked;
        Finish();
    }

    std::string AnswerTo(const CLI::ParseError& error) const {
        std::ostringstream out;
        std::ostringstream errors;
        app_.exit(error, out, errors);
        std::string text = out.str() + errors.str();
        if (error.get_exit_code() != 0)  // the line end of a complaint is the terminal's to add
            text.erase(text.find_last_not_of('\n') + 1);
        return text;
    }

    const Arguments& Result() const { return arguments_; }

  private:
    // Of all that was not expected, what stands in the place of a command is told alone.
    void RefuseCommand() const {
        const std::vector<std::string> unexpected = app_.remaining();
        const auto word = std::ranges::find_if(
            unexpected, [](const std::string& text) { return !text.starts_with('-'); });
        if (app_.get_subcommands().empty() && word != unexpected.end())
            throw CLI::ValidationError("There is no command \"" + *word + "\".");
    }

    void AddOptions() {
        app_.add_option("-C", arguments_.Folder, "Working folder, in place of the current one")
            ->type_name("DIR");
        app_.add_option("--device", arguments_.Device, "Device, in place of the selected one")
            ->type_name("NAME");
        app_.add_option("--port", arguments_.Port, "Serial port, in place of the settings' one")
            ->type_name("N|PATH");
        app_.add_option("--only", only_, "Regions that take part: pm, eeprom, id, config")
            ->type_name("LIST");
        app_.add_flag("--simulate", arguments_.Simulate,
                      "Use a simulated board with a blank device, no port");
        app_.add_option("--socket", arguments_.Socket,
                        "HEX file that keeps what is in the simulated board's socket")
            ->type_name("FILE");
        app_.add_option("--trace", arguments_.Trace, "Write every frame and reply to FILE")
            ->type_name("FILE");
        app_.add_flag("--json", arguments_.Json, "One JSON object on standard output");
        app_.add_flag("-q,--quiet", arguments_.Quiet, "Say nothing of what went well");
    }

    void AddCommand(const CommandForm& form) {
        CLI::App& command = *app_.add_subcommand(form.Name, form.Meaning);
        if (form.File != FileUse::None)
            command.add_option(form.FileName, arguments_.File, "HEX file; - is standard in or out")
                ->required(form.File == FileUse::Required)
                ->type_name("");
        if (form.Asked == Command::Ports)
            command.add_option("--set", set_, "Make COMn of the working folder stand for PATH")
                ->type_name("N=PATH");
    }

    void Finish() {
        std::string wrong;
        if (!only_.empty())
            wrong = TakeRegions(only_, arguments_.Only.emplace());
        if (wrong.empty() && !set_.empty())
            wrong = TakeSetting(set_, arguments_.Setting);
        if (wrong.empty() && !arguments_.Socket.empty() && !arguments_.Simulate)
            wrong = "--socket goes with --simulate only";
        if (wrong.empty() && arguments_.Simulate && !arguments_.Port.empty())
            wrong = "--simulate takes no --port";
        if (wrong.empty() && arguments_.Asked == Command::Read && arguments_.File == "-" &&
            arguments_.Json)
            wrong = "--json and the HEX file cannot both go to standard output";
        if (!wrong.empty())
            throw CLI::ValidationError(wrong);
    }

    CLI::App app_;
    Arguments arguments_;
    std::string only_;
    std::string set_;
};

}  // namespace

const char* NameOf(Command command) {
    return std::ranges::find(Forms, command, &CommandForm::Asked)->Name;
}

std::variant<Arguments, Answer> ParseArguments(const std::vector<std::string>& words) {
    CommandLine line;
    try {
        line.Parse(words);
        return line.Result();
    } catch (const CLI::Success& success) {
        return Answer{ExitStatus::Done, line.AnswerTo(success), false};
    } catch (const CLI::ParseError& error) {
        return Answer{ExitStatus::WrongUsage, line.AnswerTo(error),
                      std::ranges::find(words, "--json") != words.end()};
    }
}

}  // namespace Tamber::Cli
