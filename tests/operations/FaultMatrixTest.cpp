#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <sstream>

#include "operations/DeviceFunctions.hpp"
#include "simulator/BoardOptions.hpp"
#include "support/FunctionBench.hpp"

namespace Tamber {
namespace {

using Simulator::FaultPlan;

const DeviceRecord Device{"PIC16F84A", 7, 64, 16, 1};

// As tamber-board takes them; K stands for the request.
constexpr const char* Faults[] = {"--silent-from K",
                                  "--reply-length K:0",
                                  "--reply-length K:2",
                                  "--extra-front K:3",
                                  "--extra-inside K:3",
                                  "--extra-after K:3",
                                  "--extra-later K:3:15",
                                  "--extra-later K:3:3000",
                                  "--delay K:500",
                                  "--delay K:1100",
                                  "--flip-data K:1",
                                  "--flip-count K",
                                  "--repeat-reply K",
                                  "--damage-request K",
                                  "--reset K",
                                  "--not-read K:500",
                                  "--not-read K:1500",
                                  "--hang-up K",
                                  "--hang-up-in-reply K",
                                  "--flip-data K:1 --extra-after K:3"};

FaultPlan PlanOf(std::string fault, int request) {
    for (auto at = fault.find('K'); at != std::string::npos; at = fault.find('K'))
        fault.replace(at, 1, std::to_string(request));
    std::istringstream stream(fault + " --count-erases");
    return Simulator::ParseBoardOptions({std::istream_iterator<std::string>(stream), {}})
        .value()
        .Faults;
}

// A device function with something to do on a board with a fault, and what is so about what it
// says.
class Session {
  public:
    Session(FunctionCode function, FaultPlan plan)
        : function_(function), bench_(Device, std::move(plan)) {
        bench_.series = {4, {0, FunctionErase, FunctionBlank, FunctionProgram, FunctionVerify}};
    }

    // F: the box "Communication Error!" was shown. E: a line says what is wrong. N: the lines say
    // OK, which is not so, and the notice that they cannot be trusted is shown; n: it is so. "-":
    // the lines say OK, which is not so, and nothing shows it. ".": OK, and it is so.
    char Run() {
        Prepare();
        bench_.Run(function_);
        bench_.link.FindLeftOver();
        const bool found = bench_.link.TakeFinding().has_value();
        if (bench_.run.DeviceFault)
            return 'F';
        if (bench_.run.ErrorFlag)
            return 'E';
        return found ? (IsSo() ? 'n' : 'N') : (IsSo() ? '.' : '-');
    }

    int Requests() const {
        return static_cast<int>(std::ranges::count_if(bench_.desktop.record, [](const auto& entry) {
            return entry.starts_with("> 04") || entry.starts_with("> 14") ||
                   (entry >= "> 01 45" && entry <= "> 01 48");
        }));
    }

  private:
    void Prepare() {
        bench_.BlankImage();
        if (function_ != FunctionProgram && function_ != FunctionBlank)
            bench_.FillImage();
        bench_.CopyImageToSocket();
        if (function_ == FunctionRead)
            bench_.BlankImage();
        if (function_ == FunctionProgram || function_ == FunctionAuto)
            bench_.FillImage(2);
    }

    bool IsSo() {
        const bool blank = function_ == FunctionBlank || function_ == FunctionErase;
        return std::ranges::all_of(bench_.Places(), [&](int place) {
            constexpr int idEnd = MemoryImage::IdLocations + 8;
            if ((place >= idEnd && place < MemoryImage::ConfigurationWord) ||
                (place > MemoryImage::Eeprom && place % 2 == 1))
                return true;  // no function looks at these
            const auto address = static_cast<std::uint32_t>(place);
            return bench_.Socket().ByteAt(address) ==
                   (blank ? blank_.ByteAt(address) : bench_.image.Byte(place));
        });
    }

    FunctionCode function_;
    FunctionBench bench_;
    Simulator::DeviceMemory blank_{{Device.TypeCode, Device.ProgramWords, Device.EepromBytes}};
};

// The two letters of a cell: of the function with the fault and of the same one, run again.
std::string Letters(FunctionCode function, const FaultPlan& plan) {
    Session session(function, plan);
    const char first = session.Run();
    return {' ', first, session.Run()};
}

std::string Table() {
    std::ostringstream table;
    for (const char* const fault : Faults)
        for (const DeviceFunction& function : DeviceFunctions()) {
            Session sound(function.Code, {});
            EXPECT_EQ(sound.Run(), '.') << function.Name;
            const int requests = sound.Requests();
            table << std::left << std::setw(34) << fault << std::setw(8) << function.Command;
            for (const int request : {1, (requests + 1) / 2, requests})
                table << Letters(function.Code, PlanOf(fault, request));
            table << '\n';
        }
    return table.str();
}

// TAMBER_PRINT_MATRIX=1 prints the table for the file.
TEST(FaultMatrix, IsAsWritten) {
    const std::string table = Table();
    if (std::getenv("TAMBER_PRINT_MATRIX") != nullptr)
        std::cout << table;
    std::ifstream file(TEST_DATA "/matrix.txt");
    std::string expected;
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && line.front() != '#')
            expected += line + '\n';
    EXPECT_EQ(table, expected);
}

}  // namespace
}  // namespace Tamber
