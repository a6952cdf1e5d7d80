#include "operations/DeviceFunctions.hpp"

#include <algorithm>

namespace Tamber {
namespace {

constexpr DeviceFunction Functions[] = {
    {FunctionRead, "Read", "read", false, false, ReadDevice},
    {FunctionErase, "Erase", "erase", true, false, EraseDevice},
    {FunctionBlank, "Blank", "blank", true, false, BlankCheckDevice},
    {FunctionProgram, "Program", "program", true, true, ProgramDevice},
    {FunctionVerify, "Verify", "verify", true, true, VerifyDevice},
    {FunctionAuto, "Auto", "auto", false, false, RunAuto},
};

}  // namespace

std::span<const DeviceFunction> DeviceFunctions() {
    return Functions;
}

const DeviceFunction* FindFunction(std::int16_t code) {
    const auto* const found = std::ranges::find(Functions, code, &DeviceFunction::Code);
    return found != std::end(Functions) ? found : nullptr;
}

const DeviceFunction* FindSeriesFunction(std::int16_t code) {
    return code == FunctionAuto ? nullptr : FindFunction(code);
}

}  // namespace Tamber
