#pragma once

#include <cstdint>
#include <string>

namespace Tamber {

/// A text that came from outside the program (a device name, a file name) as UTF-8. Bytes that are
/// no UTF-8 are taken as Latin-1, so that every text can be shown.
std::string Utf8From(std::string bytes);

/// The same with a visible sign for each character that is none or that turns the text after it
/// round: line breaks and other control characters, and the marks for the direction of writing.
std::string VisibleText(std::string bytes);

/// Adds the Latin-1 character `code` to a text in UTF-8.
void AppendLatin1(std::string& text, std::uint8_t code);

}  // namespace Tamber
