#include "operations/RegionResult.hpp"

#include <algorithm>
#include <cstdlib>

#include "core/HexText.hpp"

namespace Tamber {
namespace {

struct RegionTexts {
    FunctionCode Function;
    Region Where;
    const char* Heading;
    const char* Failure;
    bool WithAddress = false;  // the failure is followed by where it was
};

constexpr char ProgramError[] = "Program Error at ";
constexpr char VerifyError[] = "Verify Error at ";

constexpr RegionTexts Texts[] = {
    {FunctionRead, Region::ProgramMemory, "Reading Program Memory...", ""},
    {FunctionRead, Region::Eeprom, "Reading EEPROM...", ""},

    {FunctionErase, Region::ProgramMemory, "Erasing Program Memory...", ""},
    {FunctionErase, Region::Eeprom, "Erasing EEPROM...", ""},
    {FunctionErase, Region::IdLocations, "Erasing ID Locs...", ""},
    {FunctionErase, Region::ConfigurationWord, "Erasing Config Word...", ""},

    {FunctionBlank, Region::ProgramMemory, "Blank Checking Program Memory...", "PM not blank at ",
     true},
    {FunctionBlank, Region::Eeprom, "Blank Checking EEPROM...", "EEPROM not blank at ", true},
    {FunctionBlank, Region::IdAndConfiguration, "Blank Checking Config...",
     "Config. not blank at ID Locs and CW"},
    {FunctionBlank, Region::IdLocations, "", "Config. not blank at ID Locs "},
    {FunctionBlank, Region::ConfigurationWord, "", "Config. not blank at CW "},

    {FunctionProgram, Region::ProgramMemory, "Programming Program Memory...", ProgramError, true},
    {FunctionProgram, Region::Eeprom, "Programming EEPROM...", ProgramError, true},
    {FunctionProgram, Region::IdAndConfiguration, "Programming ID and Config...", ProgramError,
     true},

    {FunctionVerify, Region::ProgramMemory, "Verifying Program Memory...", VerifyError, true},
    {FunctionVerify, Region::Eeprom, "Verifying EEPROM...", VerifyError, true},
    {FunctionVerify, Region::IdLocations, "Verifying ID Locs...", "Verify Error at ID Locs"},
    {FunctionVerify, Region::ConfigurationWord, "Verifying Conig Word...",
     "Verify Error at Config. Word"},
    {FunctionVerify, Region::StreamConfigurationWord, "Verifying CW...", "Verify Error at CW"},
    {FunctionVerify, Region::StreamIdLocations, "Verifying ID Locs...", VerifyError, true},
};

const RegionTexts& TextsOf(FunctionCode function, Region region) {
    const auto found = std::ranges::find_if(Texts, [=](const RegionTexts& texts) {
        return texts.Function == function && texts.Where == region;
    });
    if (found == std::end(Texts))
        std::abort();
    return *found;
}

}  // namespace

std::string HeadingText(FunctionCode function, Region region) {
    return TextsOf(function, region).Heading;
}

std::string FailureText(const RegionResult& result) {
    const RegionTexts& texts = TextsOf(result.Function, result.Where);
    std::string text = texts.Failure;
    if (texts.WithAddress)
        AppendHexWord(text, static_cast<std::uint32_t>(result.Finding.Address));
    return text;
}

}  // namespace Tamber
