#include "tests/instances/SQLiteFiles.h"

using namespace SQLiteFiles;

namespace {

int Changes(ZELLib3::Database& oDatabase) {
  const auto oHistory = oDatabase.ParameterHistory();
  if (!oHistory->Open() || !oHistory->HasEntry()) return 0;
  int iChanges = 1;
  while (oHistory->MoveNext()) ++iChanges;
  return iChanges;
}

}  // namespace

// Each of them sees the change; it happened once.
TEST(SQLiteParameters, ProcessesThatObserveTogetherRememberAChangeOnce) {
  Folder oFolder;
  const auto Look = [&] {
    return std::to_string(Changes(*OpenDatabase(oFolder / "a.db", {.StateFolder = oFolder / "s"})));
  };
  { Application(oFolder / "a.db", "PRAGMA user_version=1; CREATE TABLE t(v)"); }
  EXPECT_EQ("0", Look());
  for (const std::string sVersion : {"2", "3"}) {
    { Application(oFolder / "a.db", "PRAGMA user_version=" + sVersion); }
    std::vector<std::unique_ptr<Process>> processes;
    for (int i = 0; i < 6; ++i) processes.push_back(std::make_unique<Process>(Look));
    for (const auto& oProcess : processes) EXPECT_EQ(std::to_string(sVersion[0] - '1'), oProcess->Result());
  }
}
