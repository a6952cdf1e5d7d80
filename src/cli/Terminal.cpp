#include "cli/Terminal.hpp"

#include <fmt/format.h>

namespace Tamber::Cli {
namespace {

constexpr int BarLength = 30;

const char* Colour(Tone tone) {
    return tone == Tone::Good ? "\x1B[32m" : "\x1B[31m";
}

}  // namespace

Terminal::Terminal(const Streams& streams, bool json, bool quiet)
    : streams_(streams), json_(json), quiet_(quiet) {}

void Terminal::Write(std::ostream& stream, bool terminal, std::string_view line, Tone tone) {
    EraseBar();
    const bool coloured = terminal && streams_.Colour && tone != Tone::Plain;
    stream << (coloured ? Colour(tone) : "") << Harmless(line) << (coloured ? "\x1B[0m" : "")
           << std::endl;
}

void Terminal::Result(std::string_view line, Tone tone) {
    if (json_ || (quiet_ && tone != Tone::Bad))
        return;
    const bool terminal = outputIsData_ ? streams_.ErrorsIsTerminal : streams_.OutIsTerminal;
    Write(ResultStream(), terminal, line, tone);
}

void Terminal::Asked(std::string_view line) {
    if (!json_)
        Write(ResultStream(), false, line, Tone::Plain);
}

void Terminal::Note(std::string_view line) {
    if (!quiet_)
        Write(streams_.Errors, false, line, Tone::Plain);
}

void Terminal::Warn(std::string_view line) {
    Write(streams_.Errors, false, line, Tone::Plain);
}

void Terminal::Complain(std::string_view lines) {
    Write(streams_.Errors, streams_.ErrorsIsTerminal, lines, Tone::Bad);
}

bool Terminal::Data(std::string_view data) {
    EraseBar();
    streams_.Out.write(data.data(), static_cast<std::streamsize>(data.size()));
    streams_.Out.flush();
    return streams_.Out.good();
}

void Terminal::ShowBar(std::string_view heading, int percent) {
    if (!streams_.ErrorsIsTerminal || quiet_)
        return;
    const int filled = percent * BarLength / 100;
    const std::string line = fmt::format("{:<34}[{:#<{}}{:-<{}}] {}%", heading, "", filled, "",
                                         BarLength - filled, percent);
    if (line == bar_)
        return;
    streams_.Errors << '\r' << line << "\x1B[K" << std::flush;
    bar_ = line;
}

void Terminal::EraseBar() {
    if (!bar_.empty())
        streams_.Errors << "\r\x1B[K" << std::flush;
    bar_.clear();
}

std::string Harmless(std::string_view text) {
    std::string harmless;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const auto code = static_cast<unsigned char>(text[index]);
        const auto next = static_cast<unsigned char>(index + 1 < text.size() ? text[index + 1] : 0);
        const bool secondSet = code == 0xC2 && next >= 0x80 && next < 0xA0;  // U+0080 to U+009F
        if (code == '\r')
            continue;
        if ((code < ' ' && code != '\n') || code == 0x7F || secondSet)
            harmless += '?';
        else
            harmless += text[index];
        index += secondSet ? 1 : 0;
    }
    return harmless;
}

}  // namespace Tamber::Cli
