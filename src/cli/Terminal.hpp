#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <string_view>

namespace Tamber::Cli {

/// The program's three streams and what is known about them.
struct Streams {
    std::istream& In;
    std::ostream& Out;
    std::ostream& Errors;
    bool OutIsTerminal = false;
    bool ErrorsIsTerminal = false;
    bool Colour = false;  ///< wanted where a stream is a terminal
};

enum class Tone { Plain, Good, Bad };

/// What goes where: what was asked for to standard output, everything else to standard error. The
/// progress bar has a line of its own on standard error, and is there only when that is a terminal.
class Terminal {
  public:
    /// With `json`, nothing but the object goes to standard output. With `quiet`, what went well is
    /// not reported.
    Terminal(const Streams& streams, bool json, bool quiet);

    /// Standard output is taken by data: results go to standard error.
    void KeepOutputForData() { outputIsData_ = true; }

    /// A line of results.
    void Result(std::string_view line, Tone tone = Tone::Plain);

    /// A line of what was asked for, shown even when quiet.
    void Asked(std::string_view line);

    /// A line that helps but was not asked for.
    void Note(std::string_view line);

    /// A line that must be known, shown even when quiet.
    void Warn(std::string_view line);

    /// Lines on what went wrong.
    void Complain(std::string_view lines);

    /// Data as they are; false when they could not be written.
    [[nodiscard]] bool Data(std::string_view data);

    /// Draws the bar, again where it is there, with `percent` after `heading`.
    void ShowBar(std::string_view heading, int percent);
    void EraseBar();

    std::istream& In() { return streams_.In; }
    bool Json() const { return json_; }

  private:
    std::ostream& ResultStream() { return outputIsData_ ? streams_.Errors : streams_.Out; }
    void Write(std::ostream& stream, bool terminal, std::string_view line, Tone tone);

    Streams streams_;
    bool json_;
    bool quiet_;
    bool outputIsData_ = false;
    std::string bar_;  // as it stands on the screen; empty: there is none
};

/// `text` with a visible sign for every control character but the line feed and for every mark that
/// turns text round, so that nothing a board or a file says can steer a terminal. CR LF becomes LF.
std::string Harmless(std::string_view text);

}  // namespace Tamber::Cli
