#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "files/HexInspect.hpp"

namespace Tamber {

/// What a HEX file can show against a device, the worst first.
enum class DeviceFindingKind {
    // Harmful: the device would not become what the file is meant for.
    WordAddressed,  ///< INHX16
    MovedData,      ///< data behind an extended address other than 0
    NamesOther,     ///< a comment after the end record names a device of another type code
    WideWords,      ///< program words of more bits than the device's; Value: the first
    BeyondProgramMemory,
    BeyondEeprom,
    BeyondRegions,
    GivenTwice,  ///< records disagree about a byte; OtherLine: the earlier one
    TwoPlaces,   ///< a word at Address is also given at OtherAddress, in OtherLine, and they differ
    // Notes.
    NamesSibling,         ///< the comment names a device of the same type code, or a near relative
    SameInTwoPlaces,      ///< as TwoPlaces, but equal
    ElsewhereInFile,      ///< Address holds what the image keeps at OtherAddress
    NoConfigurationWord,  ///< Value: what is written instead
    UnimplementedBits,    ///< Value: the configuration word; OtherValue: the bits that count
    NoCalibrationWord,    ///< Value: what stands in its place
    SecondConfigurationWord,
    StartRecord,
    LinesAfterEnd,
};

/// Harmful or Note.
constexpr HexSeverity SeverityOf(DeviceFindingKind kind) {
    return kind <= DeviceFindingKind::TwoPlaces ? HexSeverity::Harmful : HexSeverity::Note;
}

/// All that a file shows of one kind, by the first of it.
struct DeviceFinding {
    DeviceFindingKind Kind = DeviceFindingKind::WordAddressed;
    int Line = 0;               ///< 1-based; 0 when no line is meant
    int Column = 0;             ///< 1-based; 0 when no column is meant
    std::int64_t Address = -1;  ///< byte address; -1 when none is meant
    int Count = 1;              ///< how many there are: words, records or lines
    int Value = 0;
    std::int64_t OtherAddress = -1;
    int OtherValue = 0;
    int OtherLine = 0;
    std::string Named = {};   ///< the device that the comment names
    std::string Better = {};  ///< a listed device that the file fits; empty when none is sure
};

/// Holds a file against a device: all that there is to say, each kind once, the worst first. What
/// `facts` do not say is not assumed. The Better device is the one that the comment names, or the
/// only one in slots 1..`deviceCount` that the file's words and addresses fit.
std::vector<DeviceFinding> CheckForDevice(const HexInspection& inspection,
                                          const DeviceRecord& device, const DeviceFacts& facts,
                                          const DeviceCatalogue& catalogue, int deviceCount);

/// One of the findings is harmful.
bool AnyHarmful(const std::vector<DeviceFinding>& findings);

/// A finding in one sentence on the cause and one on the remedy.
HexFindingWords WordsOf(const DeviceFinding& finding, const DeviceRecord& device);

}  // namespace Tamber
