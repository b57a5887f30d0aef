#pragma once

#include "zelwbr3/ZELLib3/Database.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

/// What the fuzzers of files do with an input. What they do not expect, they do
/// not catch: the process then ends, and the input is kept.
namespace Fuzz {

/// A folder of the process's own in memory, where inputs become files.
const std::filesystem::path& Folder();

/// The input as a file there, replacing the last one.
std::string Write(const std::string& sName, std::string_view sBytes);

/// Shows the main page of an instance and one more, with a click on one of its
/// elements; of some inputs reads every member. The choice is made by lChoice.
void Exercise(const std::shared_ptr<ZELLib3::Database>& oInstance, std::size_t lChoice);

}  // namespace Fuzz

/// One input. The fuzzing library calls it as well as Replay.cpp.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t lBytes);
