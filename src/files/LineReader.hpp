#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Tamber {

/// Takes a text apart into its lines, which end in CR LF, LF or CR. The next line feed and the next
/// carriage return are looked for again only once they have been passed, so that a text without one
/// of them is searched once.
class LineReader {
  public:
    explicit LineReader(std::string_view text)
        : text_(text),
          lineFeed_(std::min(text.find('\n'), text.size())),
          carriageReturn_(std::min(text.find('\r'), text.size())) {}

    bool AtEnd() const { return next_ >= text_.size(); }

    /// The number of the line read last, from 1; 0 before the first.
    int Number() const { return number_; }

    std::string_view Next() {
        lineFeed_ = Find('\n', lineFeed_);
        carriageReturn_ = Find('\r', carriageReturn_);
        const std::size_t end = std::min(lineFeed_, carriageReturn_);
        const std::string_view line = text_.substr(next_, end - next_);
        ++number_;
        next_ = end + (text_.substr(end).starts_with("\r\n") ? 2 : 1);
        return line;
    }

  private:
    std::size_t Find(char lineEnd, std::size_t found) const {
        return found >= next_ ? found : std::min(text_.find(lineEnd, next_), text_.size());
    }

    std::string_view text_;
    std::size_t next_ = 0;
    std::size_t lineFeed_;
    std::size_t carriageReturn_;
    int number_ = 0;
};

}  // namespace Tamber
