#include <gtest/gtest.h>

#include "core/TestFolder.hpp"
#include "files/HexFile.hpp"
#include "files/HexSave.hpp"

namespace Tamber {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

const fs::path Data = fs::path(TEST_DATA) / "hex";
const std::string EndRecord = ":00000001FF\r\n";

MemoryImage OldImage() {
    MemoryImage image;
    for (int index = 0; index < MemoryImage::Size; ++index)
        image.SetByte(index, 0xA5);
    return image;
}

Bytes BytesOf(const std::string& digits) {
    Bytes bytes;
    for (std::size_t place = 0; place < digits.size(); place += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(place, 2), nullptr, 16)));
    return bytes;
}

TEST(HexLoad, StoresExactlyTheBytesThatTheFileCarriesHoweverOften) {
    for (auto row : Expectations(Data / "well-formed")) {
        row.resize(2);
        MemoryImage image = OldImage();
        MemoryImage expected = image;
        std::istringstream stored(row[1]);
        for (std::string address, bytes; stored >> address >> bytes;)
            expected.Store(std::stoi(address, nullptr, 16), BytesOf(bytes));
        for (int time = 1; time <= 2; ++time) {
            EXPECT_TRUE(LoadHexFile(Data / "well-formed" / row[0], image)) << row[0];
            EXPECT_TRUE(image == expected) << row[0] << ", time " << time;
        }
    }
}

TEST(HexLoad, ABrokenFileChangesNothingAndIsRefusedAtItsLine) {
    const std::map<HexFault, std::string> faults{{HexFault::ChecksumError, "ChecksumError"},
                                                 {HexFault::NoEndRecord, "NoEndRecord"},
                                                 {HexFault::AddressError, "AddressError"},
                                                 {HexFault::TooManyBytes, "TooManyBytes"}};
    const MemoryImage before = OldImage();
    MemoryImage image = before;
    for (const auto& row : Expectations(Data)) {
        const auto result = LoadHexFile(Data / row[0], image);
        ASSERT_TRUE(!result && faults.contains(result.error().Fault)) << row[0];
        EXPECT_EQ((std::vector{row[0], faults.at(result.error().Fault),
                               "line " + std::to_string(result.error().Line)}),
                  row);
        EXPECT_TRUE(image == before) << row[0];
    }
    for (const fs::path& unreadable : {fs::path(), Data, Data / "none.hex"})
        EXPECT_EQ(LoadHexFile(unreadable, image).error().Fault, HexFault::FileUnreadable)
            << unreadable;
    EXPECT_TRUE(image == before);
}

TEST(HexLoad, TenThousandLinesAreTakenAndOneMoreIsNot) {
    std::string lines;
    for (int line = 1; line <= 9'999; ++line)
        lines += ":00000000" + std::string(line % 2 == 0 ? "00\r\n" : "00\n");
    EXPECT_EQ(ReadHexRecords(lines + EndRecord).value().size(), 9'999u);
    EXPECT_TRUE(ReadHexRecords(lines + EndRecord + "\r\n\r\n"));
    EXPECT_EQ(ReadHexRecords(lines + ":0000000000\n").error(),
              (HexFailure{HexFault::NoEndRecord, 10'001, ""}));
    EXPECT_EQ(ReadHexRecords(lines + ":0000000000\n" + EndRecord).error(),
              (HexFailure{HexFault::TooManyLines, 10'001, ""}));
}

TEST(HexLoad, EverySingleWrongDigitInARecordIsNoticed) {
    const std::string good = FileText(Data / "well-formed/many-kinds-of-records.hex");
    std::size_t lineBegin = 0;
    for (std::size_t place = 1; place < good.size() - EndRecord.size(); ++place) {
        if (good[place] == ':')
            lineBegin = place;
        if (std::isxdigit(static_cast<unsigned char>(good[place])))
            for (const char digit : std::string("0123456789ABCDEF")) {
                std::string wrong = good;
                wrong[place] = digit;
                const bool endRecord = wrong.substr(lineBegin + 7, 2) == "01";
                ASSERT_EQ(ReadHexRecords(wrong).has_value(), digit == good[place] || endRecord)
                    << digit << " at " << place;
            }
    }
}

TEST(HexLoad, AFileCutOffAnywhereLoadsAsTheWholeOrSaysSo) {
    for (const char* name : {"many-kinds-of-records.hex", "carriage-returns.hex"}) {
        const std::string whole = FileText(Data / "well-formed" / name);
        const std::size_t records = ReadHexRecords(whole).value().size();
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const auto table = ReadHexRecords(whole.substr(0, length));
            EXPECT_TRUE(table ? table->size() == records
                              : table.error().Fault == HexFault::ChecksumError ||
                                    table.error().Fault == HexFault::NoEndRecord)
                << name << " cut at " << length;
        }
    }
}

TEST(HexLoad, TheSampleProgramsLoad) {
    int samples = 0;
    for (const auto& entry : fs::directory_iterator(fs::path(SAMPLE_DATA) / "samples"))
        if (entry.path().extension() == ".hex") {
            MemoryImage image;
            EXPECT_TRUE(LoadHexFile(entry.path(), image)) << entry.path();
            EXPECT_FALSE(image == MemoryImage()) << entry.path();
            ++samples;
        }
    EXPECT_GT(samples, 0);
}

}  // namespace
}  // namespace Tamber
