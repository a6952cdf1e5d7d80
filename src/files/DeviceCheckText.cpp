#include "core/HexText.hpp"
#include "files/DeviceCheck.hpp"

namespace Tamber {
namespace {

using Kind = DeviceFindingKind;

std::string Hex(std::int64_t value) {
    return HexWord(static_cast<std::uint32_t>(value));
}

std::string Place(const DeviceFinding& finding) {
    if (finding.Line == 0)
        return "";
    return "Line " + std::to_string(finding.Line) +
           (finding.Column > 0 ? ", column " + std::to_string(finding.Column) : "") + ": ";
}

std::string AndMore(const DeviceFinding& finding) {
    return finding.Count == 1 ? " is" : " and " + std::to_string(finding.Count - 1) + " more are";
}

// "Line 2, column 10: word 0400 (byte address 0800, 2805) and 3 more are"
std::string Words(const DeviceFinding& finding) {
    return Place(finding) + "word " + Hex(finding.Address / 2) + " (byte address " +
           Hex(finding.Address) + ", " + Hex(finding.Value) + ")" + AndMore(finding);
}

std::string Several(int count, const std::string& one, const std::string& many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string RightDevice(const DeviceFinding& finding) {
    return "Select " + (finding.Better.empty() ? "the right device" : finding.Better) +
           ", or have the right file built.";
}

HexFindingWords MovedWords(const DeviceFinding& finding, const std::string& device) {
    constexpr std::int64_t addressesMax = 0x10000;
    const std::string moves = "Line " + std::to_string(finding.Line) +
                              " moves data to byte address " + Hex(finding.Address) + ": ";
    if (finding.Address < addressesMax)
        return {moves + "they would be loaded at another address.",
                "Have the file written without extended segment addresses."};
    return {moves + "the file is for a processor with more memory than " + device + ".",
            RightDevice(finding)};
}

HexFindingWords BeyondEepromWords(const DeviceFinding& finding, const DeviceRecord& device) {
    const auto number = static_cast<std::uint8_t>((finding.Address - MemoryImage::Eeprom) / 2);
    const auto value = static_cast<std::uint8_t>(finding.Value & 0xFF);
    const std::string bytes = Place(finding) + "EEPROM byte " + HexByte(number) +
                              " (byte address " + Hex(finding.Address) + ", " + HexByte(value) +
                              ")" + AndMore(finding);
    if (device.EepromBytes == 0)
        return {bytes + " for an EEPROM that " + device.Name + " does not have.",
                RightDevice(finding)};
    return {bytes + " beyond the " + Several(device.EepromBytes, "byte", "bytes") + " of " +
                device.Name + ".",
            RightDevice(finding)};
}

std::string TwoPlacesText(const DeviceFinding& finding, const char* relation) {
    const bool configuration = finding.OtherAddress == MemoryImage::ConfigurationWord;
    return Place(finding) + "byte address " + Hex(finding.Address) + " gives " +
           Hex(finding.Value) +
           (configuration ? " for the configuration word" : " for an ID location") + ", " +
           relation + " " + Hex(finding.OtherAddress) + " in line " +
           std::to_string(finding.OtherLine) + " gives " + Hex(finding.OtherValue) + ".";
}

HexFindingWords GivenTwiceWords(const DeviceFinding& finding) {
    const std::string more =
        finding.Count == 1 ? "" : "; " + std::to_string(finding.Count) + " words are given twice";
    return {Place(finding) + "word " + Hex(finding.Address / 2) + " (byte address " +
                Hex(finding.Address) + ") has another value in line " +
                std::to_string(finding.OtherLine) + more + ".",
            "Have the file built again, from one program."};
}

HexFindingWords ElsewhereWords(const DeviceFinding& finding) {
    return {Words(finding) +
                " where assemblers put configuration word and ID locations, and not where they "
                "are programmed from.",
            "Have them moved to byte addresses 400E and 4000."};
}

HexFindingWords CalibrationWords(const DeviceFinding& finding, const DeviceRecord& device) {
    const std::string last = "the last program word of " + device.Name;
    return {finding.Line == 0 ? "The file has no calibration word, " + last + "."
                              : Place(finding) + Hex(finding.Value) +
                                    " is no calibration word and stands in " + last + ".",
            "Keep the one that the device has."};
}

HexFindingWords HarmfulWords(const DeviceFinding& finding, const DeviceRecord& device) {
    const std::string& name = device.Name;
    switch (finding.Kind) {
        case Kind::WordAddressed:
            return {"The file is word-addressed with swapped bytes (INHX16).",
                    "Have the assembler write INHX8M or INHX32."};
        case Kind::MovedData:
            return MovedWords(finding, name);
        case Kind::NamesOther:
            return {Place(finding) + "a comment says that the file is for " + finding.Named +
                        ", which is programmed in another way than " + name + ".",
                    RightDevice(finding)};
        case Kind::WideWords:
            return {Words(finding) + " wider than the " +
                        (HasTwelveBitWords(device.TypeCode) ? "12" : "14") + " bits of a word of " +
                        name + ".",
                    RightDevice(finding)};
        case Kind::BeyondProgramMemory:
            return {Words(finding) + " beyond the " +
                        Several(device.ProgramWords, "word", "words") + " of program memory of " +
                        name + ".",
                    RightDevice(finding)};
        case Kind::BeyondEeprom:
            return BeyondEepromWords(finding, device);
        case Kind::BeyondRegions:
            return {Words(finding) + " outside every memory of " + name + ".",
                    RightDevice(finding)};
        case Kind::GivenTwice:
            return GivenTwiceWords(finding);
        default:
            return {TwoPlacesText(finding, "but"), "Remove one of them from the file."};
    }
}

HexFindingWords NoteWords(const DeviceFinding& finding, const DeviceRecord& device) {
    switch (finding.Kind) {
        case Kind::NamesSibling:
            return {Place(finding) + "a comment says that the file is for " + finding.Named +
                        ", a near relative of " + device.Name + ".",
                    "Make sure that the program suits both."};
        case Kind::SameInTwoPlaces:
            return {TwoPlacesText(finding, "and"), "They mean the same; nothing is to be done."};
        case Kind::ElsewhereInFile:
            return ElsewhereWords(finding);
        case Kind::NoConfigurationWord:
            return {
                "The file has no configuration word; " + Hex(finding.Value) + " takes its place.",
                "Set it in the program's source, or leave the configuration word out."};
        case Kind::UnimplementedBits:
            return {Place(finding) + "the configuration word " + Hex(finding.Value) +
                        " uses bits that " + device.Name + " does not implement.",
                    "Only the bits " + Hex(finding.OtherValue) +
                        " count; a verify may find the others different."};
        case Kind::NoCalibrationWord:
            return CalibrationWords(finding, device);
        case Kind::SecondConfigurationWord:
            return {Place(finding) + "byte address " + Hex(finding.Address) +
                        " holds a second configuration word, which " + device.Name +
                        " does not have.",
                    "Make sure that the file is for " + device.Name + "."};
        case Kind::StartRecord:
            return {Place(finding) + Several(finding.Count, "start record", "start records") +
                        (finding.Count == 1 ? " is ignored." : " are ignored."),
                    "Nothing is to be done."};
        default:
            return {Place(finding) + Several(finding.Count, "line", "lines") +
                        " after the end record " + (finding.Count == 1 ? "is" : "are") +
                        " ignored.",
                    "Make sure that nothing of the program is among them."};
    }
}

}  // namespace

HexFindingWords WordsOf(const DeviceFinding& finding, const DeviceRecord& device) {
    return SeverityOf(finding.Kind) == HexSeverity::Harmful ? HarmfulWords(finding, device)
                                                            : NoteWords(finding, device);
}

}  // namespace Tamber
