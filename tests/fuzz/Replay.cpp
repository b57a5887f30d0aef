// Runs a fuzzer's inputs once, for the builds without the fuzzing library: the
// files, and those of the folders, that are named on the command line.

#include "tests/fuzz/FuzzTarget.h"

#include <fstream>
#include <iostream>
#include <iterator>

namespace {

void Run(const std::filesystem::path& oFile) {
  std::ifstream oStream(oFile, std::ios::binary);
  const std::string sBytes{std::istreambuf_iterator<char>(oStream), {}};
  std::cout << oFile.string() << std::endl;  // at once: it may be the last line
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(sBytes.data()), sBytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  int iFiles = 0;
  for (int i = 1; i < argc; ++i) {
    if (!std::filesystem::is_directory(argv[i])) {
      Run(argv[i]);
      ++iFiles;
      continue;
    }
    for (const auto& oEntry : std::filesystem::directory_iterator(argv[i])) {
      Run(oEntry.path());
      ++iFiles;
    }
  }
  return iFiles > 0 ? 0 : 1;  // without an input nothing is shown
}
