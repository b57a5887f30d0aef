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

  EXPECT_TRUE(oDatabase->Online());
  EXPECT_EQ("5 Online (warm)", State(*oDatabase)) << "it was in that state already";
  const auto oRead = oDatabase->StateInfo();
  EXPECT_TRUE(oDatabase->Shutdown());
  EXPECT_EQ("2 Offline", State(*oDatabase));
  EXPECT_EQ(2, oRead->Status()) << "objects read before share the state";
  EXPECT_TRUE(oDatabase->Admin());
  EXPECT_EQ("3 Admin", State(*oDatabase));
  EXPECT_TRUE(oDatabase->RestartUntil({2026, 1, 2, 3, 4, 5}));
  EXPECT_EQ("5 Online", State(*oDatabase));
  EXPECT_TRUE(oDatabase->ShutdownQuick());
  EXPECT_EQ("2 Offline", State(*oDatabase));
  EXPECT_TRUE(oDatabase->StateInfo()->AutoLog());
  EXPECT_TRUE(oDatabase->AutoLogOff());
  EXPECT_FALSE(oDatabase->StateInfo()->AutoLog());

  EXPECT_EQ(sBefore, oFile.Text());
  EXPECT_EQ("5 Online (warm)", State(*OpenRecording(oFile.Path())));
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
  EXPECT_TRUE(oAnalyzer->DeleteProtocols("99991231"));
  EXPECT_EQ(0u, Sets());

  // A recording that says nothing about sets has none to delete.
  const auto oSilent = OpenRecording(File(std::string(R"({"Database": {"Analyzer": {"State": 2}}})")).Path());
  EXPECT_TRUE(oSilent->Analyzer()->DeleteProtocols("20260301"));
  EXPECT_EQ(0u, oSilent->Analyzer()->ProtocolSets().value().size());
}

TEST(RecordedOperations, EveryOperationIsReportedWithItsArguments) {
  Calls oCalls;
  const auto oDatabase = OpenRecording(SamplePath("demo"), oCalls.Observer());
  oDatabase->StateInfo()->Status();
  EXPECT_EQ(Texts{}, oCalls.Take()) << "a property is no operation";

  oDatabase->Shutdown();
  oDatabase->RestartUntil({2026, 1, 2, 3, 4, 5});
  oDatabase->Analyzer()->Start({"my.cfg", 3, 60, true, false});
  oDatabase->Analyzer()->DeleteProtocols("20260301");
  EXPECT_EQ((Texts{"!Shutdown[]", "!RestartUntil[\"2026-01-02T03:04:05\"]",
                   "!Analyzer.Start[\"my.cfg\",3,60,true,false]", "!Analyzer.DeleteProtocols[\"20260301\"]"}),
            oCalls.Take());

  oDatabase->DataArea()->Refresh();
  oDatabase->Parameters()->Load();
  oDatabase->Parameters()->Read();
  oDatabase->SysInfos()->Item(1)->Open();
  oDatabase->SQLTables()->NewTable()->Open();
  oDatabase->History()->ReadMore();
  oDatabase->ParameterHistory()->MoveNext();
  EXPECT_EQ((Texts{"DataArea.Refresh[]", "Parameters.Load[]", "Parameters.Read[]", "SysInfo.Open[]",
                   "SQLTables.NewTable[]", "SQLTable.Open[]", "History.ReadMore[]", "ParameterHistory.MoveNext[]"}),
            oCalls.Take());
}

TEST(RecordedOperations, AnOperationInFailsIsReportedAndChangesNothing) {
  const Json oFails = {"Shutdown",      "AutoLogOff",           "DataArea.Refresh",
                       "SysInfo.Open",  "Parameters.Read",      "Analyzer.ProtocolSets",
                       "Analyzer.Stop", "ParameterHistory.Open"};
  Calls oCalls;
  const auto oDatabase = OpenWith(
      {{"StateInfo", {{"Status", 5}, {"AutoLog", true}}},
       {"Analyzer", {{"State", 1}, {"ProtocolSets", {{{"Texts", {"a"}}}}}}},
       {"ParameterHistory", {{{"Parameter", "A"}}}},
       {"SysInfos", {{{"Columns", {{{"Name", "A"}}}}, {"Rows", {{"1"}}}}}}},
      {{"fails", oFails}, {"LastError", {{"ErrorCode", -24988}, {"ErrorText", "SQL error"}}}}, oCalls.Observer());
  EXPECT_FALSE(oDatabase->Shutdown());
  EXPECT_FALSE(oDatabase->AutoLogOff());
  EXPECT_FALSE(oDatabase->DataArea()->Refresh());
  EXPECT_TRUE(oDatabase->LogArea()->Refresh());
  EXPECT_EQ((Texts{"!Shutdown[]", "!AutoLogOff[]", "DataArea.Refresh[]", "LogArea.Refresh[]"}), oCalls.Take());
  EXPECT_EQ(5, oDatabase->StateInfo()->Status());
  EXPECT_TRUE(oDatabase->StateInfo()->AutoLog());
  EXPECT_EQ(-24988, oDatabase->LastError().ErrorCode);
  EXPECT_EQ("SQL error", oDatabase->LastError().ErrorText);

  EXPECT_TRUE(oDatabase->Parameters()->Load());
  EXPECT_FALSE(oDatabase->Parameters()->Read());
  EXPECT_FALSE(oDatabase->Analyzer()->ProtocolSets().has_value());
  EXPECT_FALSE(oDatabase->Analyzer()->Stop());
  EXPECT_EQ(1, oDatabase->Analyzer()->State());
  const auto oChanges = oDatabase->ParameterHistory();
  EXPECT_FALSE(oChanges->Open() || oChanges->HasEntry() || oChanges->MoveNext());
  const auto oView = oDatabase->SysInfos()->Item(1);
  EXPECT_FALSE(oView->Open());
  EXPECT_TRUE(oView->EndOfBlock());
  EXPECT_FALSE(oView->HasMore() || oView->NextRow());
  EXPECT_EQ(0, oView->RowCount());
}

TEST(RecordedOperations, AMemberInRaisesRaises) {
  const Json oPaths = {"StateInfo.DataTotal",
                       "Shutdown",
                       "SysInfo.Value",
                       "Volume.Size",
                       "Snapshot",
                       "Parameters.Item",
                       "DataArea.Volumes.Items.Name",
                       "Volumes.MaxCount",
                       "Caches.AWEParam.Group",
                       "Activity.IOCounter",
                       "Session.Name",
                       "Analyzer.ProtocolSets",
                       "Parameter.HistoryDate",
                       "Caches.Refresh"};
  Calls oCalls;
  const Json oVolumes = Json::array({{{"Name", "V"}}});
  const auto oDatabase = OpenWith({{"DataArea", {{"Volumes", oVolumes}}},
                                   {"LogArea", {{"Volumes", oVolumes}}},
                                   {"Sessions", {Json::object()}},
                                   {"SysInfos", {{{"Columns", {{{"Name", "A"}}}}, {"Rows", {{"1"}}}}}},
                                   {"Analyzer", Json::object()}},
                                  {{"raises", oPaths}}, oCalls.Observer());
  EXPECT_EQ("0 StateInfo.DataTotal raised an error", RaisedBy([&] { oDatabase->StateInfo()->DataTotal(); }));
  EXPECT_EQ("nothing", RaisedBy([&] { oDatabase->StateInfo()->DataUsed(); }));
  EXPECT_EQ("0 Shutdown raised an error", RaisedBy([&] { oDatabase->Shutdown(); }));
  EXPECT_EQ("0 Caches.Refresh raised an error", RaisedBy([&] { oDatabase->Caches()->Refresh(); }));
  EXPECT_EQ((Texts{"!Shutdown[]", "Caches.Refresh[]"}), oCalls.Take());
  EXPECT_NE("nothing", RaisedBy([&] { oDatabase->Snapshot(); }));
  EXPECT_NE("nothing", RaisedBy([&] { oDatabase->Parameters()->Item("A"); }));
  EXPECT_NE("nothing", RaisedBy([&] { oDatabase->Activity()->IOCounter(0); }));
  EXPECT_NE("nothing", RaisedBy([&] { oDatabase->Sessions()->Item(1)->Name(); }));
  EXPECT_NE("nothing", RaisedBy([&] { oDatabase->Analyzer()->ProtocolSets(); }));
  const auto oView = oDatabase->SysInfos()->Item(1);
  EXPECT_TRUE(oView->Open() && oView->NextRow());
  EXPECT_NE("nothing", RaisedBy([&] { oView->Value(0); }));

  // An interface's name stands for all its objects, a path for those below it.
  const auto oData = oDatabase->DataArea()->Volumes();
  const auto oLog = oDatabase->LogArea()->Volumes();
  EXPECT_NE("nothing", RaisedBy([&] { oData->Item(1)->Size(); }));
  EXPECT_NE("nothing", RaisedBy([&] { oLog->Item(1)->Size(); }));
  EXPECT_NE("nothing", RaisedBy([&] { oData->MaxCount(); }));
  EXPECT_NE("nothing", RaisedBy([&] { oLog->MaxCount(); }));
  EXPECT_NE("nothing", RaisedBy([&] { oData->Item(1)->Name(); }));
  EXPECT_EQ("V", oLog->Item(1)->Name());
  EXPECT_NE("nothing", RaisedBy([&] { oDatabase->Caches()->AWEParam()->Group(); }));
  EXPECT_EQ("nothing", RaisedBy([&] { oDatabase->Caches()->DataCacheParam()->Group(); }));
}

TEST(RecordedOperations, WhatIsRaisedIsTheRecordedError) {
  const auto oDatabase = OpenWith(
      Json::object(), {{"raises", {"Version.Number"}}, {"LastError", {{"ErrorCode", -7}, {"ErrorText", "gone"}}}});
  EXPECT_EQ("-7 gone", RaisedBy([&] { oDatabase->Version()->Number(); }));
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
  const auto oDatabase =
      OpenWith({{"SQLTables",
                 {{{"Owner", "A"}, {"Name", "T"}, {"Columns", {{{"Name", "C"}}}}, {"Rows", {{"of A"}}}},
                  {{"Owner", "B"}, {"Name", "T"}, {"Columns", {{{"Name", "C"}}}}, {"Rows", {{"of B"}}}}}}});
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
  EXPECT_EQ(0, oTable->ColumnCount());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("C.T"));
}

// 50 rows make a block where the recording does not say it.
TEST(RecordedOperations, TheUsualBlockSize) {
  const Json oRows = Json::array_t(51, Json::array());
  const Json oItems = Json::array_t(51, Json::object());
  const auto oDatabase = OpenWith({{"SysInfos", {{{"Rows", oRows}}}}, {"History", {{"Items", oItems}}}});
  const auto oView = oDatabase->SysInfos()->Item(1);
  const auto oHistory = oDatabase->History();
  ASSERT_TRUE(oView->Open() && oHistory->Open());
  EXPECT_EQ(50, oView->RowCount());
  EXPECT_EQ(50, oHistory->RowCount());
  EXPECT_TRUE(oView->HasMore() && oHistory->HasMore());
  ASSERT_TRUE(oHistory->ReadMore());
  EXPECT_EQ(51, oHistory->RowCount());
}
