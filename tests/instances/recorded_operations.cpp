#include "tests/instances/RecordingFiles.h"

using namespace RecordingFiles;
using ZELWbr3::Recorded::Call;

namespace {

/// Keeps every call as "Name(arguments)", with "!" before one that changes the
/// instance.
class Calls {
 public:
  ZELWbr3::Recorded::CallObserver Observer() {
    return [this](const Call& oCall) {
      Json oArguments = Json::array();
      for (const auto& oArgument : oCall.Arguments) std::visit([&](auto o) { oArguments.push_back(o); }, oArgument);
      m_oCalls.push_back((oCall.Changes ? "!" : "") + oCall.Name + oArguments.dump());
    };
  }
  std::vector<std::string> Take() { return std::exchange(m_oCalls, {}); }

 private:
  std::vector<std::string> m_oCalls;
};

using Texts = std::vector<std::string>;

std::string State(ZELLib3::Database& oDatabase) {
  const auto oState = oDatabase.StateInfo();
  return std::to_string(oState->Status()) + " " + oState->StateText();
}

std::string RaisedBy(const std::function<void()>& fnRead) {
  try {
    fnRead();
  } catch (const ZELLib3::InstanceError& oError) {
    return std::to_string(oError.ErrorObject().ErrorCode) + " " + oError.what();
  }
  return "nothing";
}

}  // namespace

TEST(RecordedOperations, StateOperationsChangeTheOpenedCopy) {
  const Json oRecorded = {{"StateInfo", {{"Status", 5}, {"StateText", "Online (warm)"}, {"AutoLog", true}}}};
  const File oFile(Json{{"Database", oRecorded}});
  const std::string sBefore = oFile.Text();
  const auto oDatabase = OpenRecording(oFile.Path());
  const auto oRead = oDatabase->StateInfo();
  EXPECT_TRUE(oDatabase->Online());
  EXPECT_EQ("5 Online (warm)", State(*oDatabase)) << "it was in that state already";
  const std::pair<std::function<bool()>, const char*> operations[] = {
      {[&] { return oDatabase->Shutdown(); }, "2 Offline"},
      {[&] { return oDatabase->Admin(); }, "3 Admin"},
      {[&] {
         return oDatabase->RestartUntil({2026, 1, 2, 3, 4, 5});
       },
       "5 Online"},
      {[&] { return oDatabase->ShutdownQuick(); }, "2 Offline"}};
  for (const auto& [oOperation, sState] : operations) {
    EXPECT_TRUE(oOperation());
    EXPECT_EQ(sState, State(*oDatabase));
  }
  EXPECT_EQ(2, oRead->Status()) << "objects read before share the state";
  EXPECT_TRUE(oRead->AutoLog());
  EXPECT_TRUE(oDatabase->AutoLogOff());
  EXPECT_FALSE(oRead->AutoLog());
  EXPECT_EQ(sBefore, oFile.Text());
  // A recording that says nothing about its state takes one on all the same.
  const auto oEmpty = OpenRecording(File(std::string("{}")).Path());
  EXPECT_TRUE(oEmpty->Admin() && oEmpty->AutoLogOff());
  EXPECT_EQ("3 Admin", State(*oEmpty));
}

TEST(RecordedOperations, TheAnalyzerIsRunAndCleanedUp) {
  const auto oDatabase = OpenRecording(SamplePath("demo"));
  const auto oAnalyzer = oDatabase->Analyzer();
  EXPECT_TRUE(oAnalyzer->Stop());
  EXPECT_EQ(2, oDatabase->Analyzer()->State());
  EXPECT_TRUE(oAnalyzer->Start({}));
  EXPECT_EQ(1, oDatabase->Analyzer()->State());

  const auto Sets = [&] { return oDatabase->Analyzer()->ProtocolSets()->size(); };
  ASSERT_EQ(3u, Sets());
  EXPECT_TRUE(oAnalyzer->DeleteProtocols("20260226"));
  EXPECT_EQ(3u, Sets());
  EXPECT_TRUE(oAnalyzer->DeleteProtocols("20260301"));
  ASSERT_EQ(1u, Sets()) << "the sets of that day go too";
  EXPECT_EQ(2, oAnalyzer->ProtocolSets()->front().Date.Day);
  EXPECT_FALSE(oAnalyzer->DeleteProtocols("tomorrow"));
  EXPECT_EQ(1u, Sets()) << "what is no date deletes nothing";
}

TEST(RecordedOperations, EveryOperationIsReportedWithItsArguments) {
  Calls oCalls;
  const auto oDatabase = OpenRecording(SamplePath("demo"), oCalls.Observer());
  oDatabase->StateInfo()->Status();  // a property is no operation
  oDatabase->Shutdown();
  oDatabase->RestartUntil({2026, 1, 2, 3, 4, 5});
  oDatabase->Analyzer()->Start({"my.cfg", 3, 60, true, false});
  oDatabase->Analyzer()->DeleteProtocols("20260301");
  oDatabase->Parameters()->Load();
  oDatabase->SysInfos()->Item(1)->Open();
  oDatabase->SQLTables()->NewTable()->Open();
  oDatabase->History()->ReadMore();
  oDatabase->ParameterHistory()->MoveNext();
  EXPECT_EQ(
      (Texts{"!Shutdown[]", "!RestartUntil[\"2026-01-02T03:04:05\"]", "!Analyzer.Start[\"my.cfg\",3,60,true,false]",
             "!Analyzer.DeleteProtocols[\"20260301\"]", "Parameters.Load[]", "SysInfo.Open[]", "SQLTables.NewTable[]",
             "SQLTable.Open[]", "History.ReadMore[]", "ParameterHistory.MoveNext[]"}),
      oCalls.Take());
}

TEST(RecordedOperations, AnOperationInFailsIsReportedAndChangesNothing) {
  const Json oFails = {"Shutdown",
                       "AutoLogOff",
                       "DataArea.Refresh",
                       "SysInfo.Open",
                       "Analyzer.Stop",
                       "ParameterHistory.Open",
                       "Analyzer.ProtocolSets"};
  Calls oCalls;
  const auto oDatabase = OpenWith(
      {{"StateInfo", {{"Status", 5}, {"AutoLog", true}}},
       {"Analyzer", {{"State", 1}, {"ProtocolSets", {{{"Texts", {"a"}}}}}}},
       {"ParameterHistory", {{{"Parameter", "A"}}}},
       {"SysInfos", {{{"Columns", {{{"Name", "A"}}}}, {"Rows", {{"1"}}}}}}},
      {{"fails", oFails}, {"LastError", {{"ErrorCode", -24988}, {"ErrorText", "SQL error"}}}}, oCalls.Observer());
  EXPECT_FALSE(oDatabase->Shutdown() || oDatabase->AutoLogOff() || oDatabase->DataArea()->Refresh());
  EXPECT_TRUE(oDatabase->LogArea()->Refresh());
  EXPECT_EQ((Texts{"!Shutdown[]", "!AutoLogOff[]", "DataArea.Refresh[]", "LogArea.Refresh[]"}), oCalls.Take());
  EXPECT_EQ(5, oDatabase->StateInfo()->Status());
  EXPECT_TRUE(oDatabase->StateInfo()->AutoLog());
  EXPECT_EQ(-24988, oDatabase->LastError().ErrorCode);
  EXPECT_EQ("SQL error", oDatabase->LastError().ErrorText);

  EXPECT_FALSE(oDatabase->Analyzer()->ProtocolSets().has_value());
  EXPECT_FALSE(oDatabase->Analyzer()->Stop());
  EXPECT_EQ(1, oDatabase->Analyzer()->State());
  const auto oChanges = oDatabase->ParameterHistory();
  EXPECT_FALSE(oChanges->Open() || oChanges->HasEntry() || oChanges->MoveNext());
  const auto oView = oDatabase->SysInfos()->Item(1);
  EXPECT_FALSE(oView->Open() || oView->HasMore() || oView->NextRow());
  EXPECT_TRUE(oView->EndOfBlock());
  EXPECT_EQ(0, oView->RowCount());
}

TEST(RecordedOperations, AMemberInRaisesRaises) {
  const Json oPaths = {"StateInfo.DataTotal",
                       "Shutdown",
                       "SysInfo.Value",
                       "Volume.Size",
                       "Snapshot",
                       "Parameters.Item",
                       "Caches.AWEParam.Group",
                       "DataArea.Volumes.Items.Name"};
  Calls oCalls;
  const Json oVolumes = Json::array({{{"Name", "V"}}});
  const Json oDescribed = {{"DataArea", {{"Volumes", oVolumes}}},
                           {"LogArea", {{"Volumes", oVolumes}}},
                           {"SysInfos", {{{"Columns", {{{"Name", "A"}}}}, {"Rows", {{"1"}}}}}}};
  const auto oDatabase = OpenWith(oDescribed, {{"raises", oPaths}}, oCalls.Observer());
  EXPECT_EQ("0 StateInfo.DataTotal raised an error", RaisedBy([&] { oDatabase->StateInfo()->DataTotal(); }));
  EXPECT_EQ("nothing", RaisedBy([&] { oDatabase->StateInfo()->DataUsed(); }));
  EXPECT_EQ("0 Shutdown raised an error", RaisedBy([&] { oDatabase->Shutdown(); }));
  EXPECT_EQ(Texts{"!Shutdown[]"}, oCalls.Take());
  const auto oView = oDatabase->SysInfos()->Item(1);
  EXPECT_TRUE(oView->Open() && oView->NextRow());
  // An interface's name stands for all its objects, a path for those below it.
  const auto oData = oDatabase->DataArea()->Volumes()->Item(1);
  const auto oLog = oDatabase->LogArea()->Volumes()->Item(1);
  const std::function<void()> raising[] = {
      [&] { oDatabase->Snapshot(); }, [&] { oDatabase->Parameters()->Item("A"); },
      [&] { oView->Value(0); },       [&] { oDatabase->Caches()->AWEParam()->Group(); },
      [&] { oData->Size(); },         [&] { oLog->Size(); },
      [&] { oData->Name(); }};
  for (const auto& oRead : raising) EXPECT_NE("nothing", RaisedBy(oRead)) << &oRead - raising;
  EXPECT_EQ("V", oLog->Name());
  EXPECT_EQ("nothing", RaisedBy([&] { oDatabase->Caches()->DataCacheParam()->Group(); }));

  const Json oError = {{"ErrorCode", -7}, {"ErrorText", "gone"}};
  const auto oGone = OpenWith(Json::object(), {{"raises", {"Version.Number"}}, {"LastError", oError}});
  EXPECT_EQ("-7 gone", RaisedBy([&] { oGone->Version()->Number(); }));
}

// What the contract of all instances leaves open.
TEST(RecordedOperations, RowsAreThereOnceTheyWereSteppedTo) {
  const auto oView = OpenRecording(SamplePath("demo"))->SysInfos()->Item(1);  // 7 rows in blocks of 3
  EXPECT_FALSE(oView->NextRow()) << "not open yet";
  EXPECT_THROW(oView->Value(0), std::out_of_range);
  ASSERT_TRUE(oView->Open());
  EXPECT_EQ(3, oView->RowCount());
  EXPECT_THROW(oView->Value(0), std::out_of_range) << "before the first row";
  // Rows that were not stepped to are not lost when the next block comes.
  ASSERT_TRUE(oView->NextRow() && oView->ReadMore() && oView->NextRow());
  EXPECT_EQ("2", oView->Value(0));
  EXPECT_EQ(6, oView->RowCount());
  ASSERT_TRUE(oView->ReadMore());
  EXPECT_TRUE(oView->ReadMore()) << "nothing is left, which is no failure";
  EXPECT_EQ(7, oView->RowCount());
}

TEST(RecordedOperations, TablesAreFoundByOwnerAndName) {
  Json oTables;
  for (const std::string sOwner : {"A", "B"}) {
    oTables.push_back({{"Owner", sOwner}, {"Name", "T"}, {"Columns", {{{"Name", "C"}}}}, {"Rows", {{"of " + sOwner}}}});
  }
  const auto oDatabase = OpenWith({{"SQLTables", oTables}});
  const auto oTable = oDatabase->SQLTables()->NewTable();
  oTable->Name("T");
  for (const char* sOwner : {"A", "B", "A"}) {
    oTable->Owner(sOwner);
    ASSERT_TRUE(oTable->Open() && oTable->NextRow());
    EXPECT_EQ(std::string("of ") + sOwner, oTable->Value(0));
  }
  oTable->Owner("C");
  EXPECT_FALSE(oTable->Open());
  EXPECT_TRUE(oTable->IsEmpty()) << "the rows of the table before are gone";
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("C.T"));
}
