#include "tests/instances/RecordingFiles.h"
#include "zelwbr3/testing/Contract.h"

using namespace ZELWbr3::Testing;

using namespace RecordingFiles;

namespace {

/// The sample with blocks of as many rows: row by row, as it comes, everything
/// in one.
ContractCase Sample(const std::string& sName, int lBlockSize) {
  return {sName,
          [=](const auto&) {
            Json oFile = SampleContent("demo");
            Json& oDatabase = oFile["Database"];
            for (const char* sList : {"SysInfos", "SQLTables"}) {
              for (auto& oEntry : oDatabase[sList]) oEntry["BlockSize"] = lBlockSize;
            }
            oDatabase["History"]["BlockSize"] = lBlockSize;
            return OpenRecording(File(oFile).Path());
          },
          "SYSDD", "TABLES"};
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Recorded, Contract,
                         testing::Values(Sample("RowByRow", 1), Sample("Blocks", 3), Sample("OneBlock", 1000)),
                         ContractCase::Named);
