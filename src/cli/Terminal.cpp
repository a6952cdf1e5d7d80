#include "cli/Terminal.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "core/Utf8.hpp"

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
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::string line(text.substr(begin, end - begin));
        std::erase(line, '\r');
        if (begin > 0)
            harmless += '\n';
        harmless += VisibleText(std::move(line));
        begin = end + 1;
    }
    return harmless;
}

}  // namespace Tamber::Cli
