#pragma once

#include <string>

#include "core/MemoryImage.hpp"

namespace Tamber {

/// The texts of the buffer views: ASCII, with CR LF line ends.

constexpr int WordsInRow = 8;        ///< of program memory
constexpr int ProgramDumpRows = 16;  ///< shown at a time in a view of the designed size
constexpr int EepromDumpRowsMax = 16;

/// The column headings, with their line end.
std::string ProgramDumpHeader();
std::string EepromDumpHeader();

/// `rows` rows of program words from row `topRow` on: word address, words, low bytes as characters.
/// Rows past the end of the program-memory region are left out.
std::string ProgramDump(const MemoryImage& image, int topRow, int rows = ProgramDumpRows);

/// How many rows of eight words a device has, of 0..8,192 words, rounded to the nearest number.
int ProgramDumpRowsOf(int programWords);

/// The last value of `topRow` for a device: its last page of `rows` rows, 0 when all fit on one.
int ProgramDumpTopRowMax(int programWords, int rows = ProgramDumpRows);

/// Rows of 16 EEPROM bytes: byte address, bytes, characters; at most 16 rows.
std::string EepromDump(const MemoryImage& image, int eepromBytes);

}  // namespace Tamber
