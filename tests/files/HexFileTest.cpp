#include <gtest/gtest.h>

#include "core/TestFolder.hpp"
#include "files/HexFile.hpp"
#include "files/HexInspect.hpp"

namespace Tamber {
namespace {

namespace fs = std::filesystem;

const fs::path Data = fs::path(TEST_DATA) / "hex";
const std::string EndRecord = ":00000001FF\r\n";
const DeviceRecord Device{"device", 7, 1024, 64, 1};

MemoryImage OldImage() {
    MemoryImage image;
    for (int index = 0; index < MemoryImage::Size; ++index)
        image.SetByte(index, 0xA5);
    return image;
}

// Inspects a text; the loader refuses it at the same line or reads the same image from it.
HexInspection Inspect(const std::string& text) {
    HexInspection inspection = InspectHexText(text, Device);
    const auto records = ReadHexRecords(text);
    EXPECT_NE(records.has_value(), inspection.Refusal.has_value()) << text;
    if (!records && inspection.Refusal) {
        const auto& [fault, finding] = *inspection.Refusal;
        EXPECT_EQ(records.error(), (HexFailure{fault, finding.Line, {}})) << text;
    } else if (records) {
        MemoryImage image = BlankImage(Device);
        CopyRecords(*records, image);
        EXPECT_TRUE(image == inspection.Image) << text;
    }
    return inspection;
}

TEST(HexLoad, StoresExactlyTheBytesThatTheFileCarriesHoweverOften) {
    for (auto row : Expectations(Data / "well-formed")) {
        row.resize(2);
        MemoryImage image = OldImage();
        MemoryImage expected = image;
        std::istringstream stored(row[1]);
        for (std::string address, bytes; stored >> address >> bytes;)
            for (std::size_t byte = 0; 2 * byte < bytes.size(); ++byte)
                expected.SetByte(
                    std::stoi(address, nullptr, 16) + static_cast<int>(byte),
                    static_cast<std::uint8_t>(std::stoi(bytes.substr(2 * byte, 2), nullptr, 16)));
        for (int time = 1; time <= 2; ++time) {
            EXPECT_TRUE(LoadHexFile(Data / "well-formed" / row[0], image)) << row[0];
            EXPECT_TRUE(image == expected) << row[0] << ", time " << time;
        }
        Inspect(FileText(Data / "well-formed" / row[0]));
    }
}

TEST(HexLoad, ABrokenFileChangesNothingAndIsRefusedAtItsLine) {
    const std::map<std::string, HexFault> faults{{"ChecksumError", HexFault::ChecksumError},
                                                 {"NoEndRecord", HexFault::NoEndRecord},
                                                 {"AddressError", HexFault::AddressError},
                                                 {"TooManyBytes", HexFault::TooManyBytes}};
    const MemoryImage before = OldImage();
    MemoryImage image = before;
    for (const auto& row : Expectations(Data)) {
        const auto loaded = LoadHexFile(Data / row[0], image);
        ASSERT_FALSE(loaded) << row[0];
        EXPECT_EQ(loaded.error().Fault, faults.at(row[1])) << row[0];
        EXPECT_EQ("line " + std::to_string(loaded.error().Line), row[2]) << row[0];
        Inspect(FileText(Data / row[0]));
    }
    for (const fs::path& unreadable : {fs::path(), Data, Data / "none.hex"}) {
        const auto loaded = LoadHexFile(unreadable, image);
        ASSERT_FALSE(loaded) << unreadable;
        EXPECT_EQ(loaded.error().Fault, HexFault::FileUnreadable) << unreadable;
    }
    EXPECT_TRUE(image == before);
}

TEST(HexLoad, TenThousandLinesAreTakenAndOneMoreIsNot) {
    std::string lines;
    for (int line = 1; line <= 9'999; ++line)
        lines += ":00000000" + std::string(line % 2 == 0 ? "00\r\n" : "00\n");
    const auto records = ReadHexRecords(lines + EndRecord);
    ASSERT_TRUE(records);
    EXPECT_EQ(records->size(), 9'999u);
    lines += ":0000000000\n";
    EXPECT_EQ(ReadHexRecords(lines), tl::unexpected(HexFailure{HexFault::NoEndRecord, 10'001, {}}));
    const HexInspection inspection = Inspect(lines + lines + EndRecord);
    EXPECT_EQ(inspection.Refusal.value().Fault, HexFault::TooManyLines);
    EXPECT_EQ(inspection.Lines, 10'001);
    EXPECT_EQ(inspection.LinesAfterEnd, 0);
    const HexInspection ended = Inspect(EndRecord + ("\n" + lines) + lines);
    EXPECT_EQ(HexFindingText(ended.Findings.Kept().back()),
              "More than 10000 lines after the end record are ignored.");
}

// Each row of the table: a text with "/" for its line ends, and all that is found in it.
TEST(HexInspect, FindsEveryKindOfFinding) {
    const char* severities[] = {"note: ", "malformed: ", "harmful: ", "refused: "};
    std::set<HexFindingKind> kinds{HexFindingKind::TooManyLines};
    for (auto row : Expectations(Data / "findings")) {
        std::ranges::replace(row[0], '/', '\n');
        std::vector<std::string> found{row[0]};
        const HexInspection inspection = Inspect(row[0]);
        for (const HexFinding& finding : inspection.Findings.Kept()) {
            kinds.insert(finding.Kind);
            found.push_back(severities[static_cast<int>(finding.Severity)] +
                            HexFindingText(finding));
        }
        EXPECT_EQ(found, row);
    }
    EXPECT_EQ(kinds.size(), static_cast<std::size_t>(HexFindingKind::LinesAfterEnd) + 1);
}

TEST(HexInspect, KeepsTheFirstHundredOfAKindAndStillNamesTheRefusal) {
    std::string text;
    for (int line = 0; line < 250; ++line)
        text += "x0000000000\n";
    const HexInspection inspection = Inspect(text + "x0000000001\n" + EndRecord);
    EXPECT_EQ(inspection.Findings.Kept().size(), 100u);
    EXPECT_EQ(inspection.Findings.Total(), 251);
    EXPECT_EQ(inspection.Refusal.value().Finding.Line, 251);
}

}  // namespace
}  // namespace Tamber
