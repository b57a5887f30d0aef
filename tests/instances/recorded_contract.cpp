#include "tests/instances/Contract.h"
#include "tests/instances/RecordingFiles.h"

using RecordingFiles::OpenRecording;
using RecordingFiles::SamplePath;

namespace {

ContractCase Sample(const std::string& sName, const std::string& sFile) {
  return {sName, [=] { return OpenRecording(SamplePath(sFile)); }, "SYSDD", "TABLES"};
}

/// Two rows in every block more than there are rows, and one row in a block.
ContractCase Blocks(const std::string& sName, int lBlockSize) {
  return {sName,
          [=] {
            auto oFile = RecordingFiles::Json::parse(std::ifstream(SamplePath("demo")));
            for (const char* sList : {"SysInfos", "SQLTables"}) {
              for (auto& oEntry : oFile["Database"][sList]) oEntry["BlockSize"] = lBlockSize;
            }
            oFile["Database"]["History"]["BlockSize"] = lBlockSize;
            return OpenRecording(RecordingFiles::File(oFile).Path());
          },
          "SYSDD", "TABLES"};
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Recorded, Contract,
                         testing::Values(Sample("Demo", "demo"), Blocks("RowByRow", 1), Blocks("OneBlock", 1000)),
                         ContractCase::Named);
