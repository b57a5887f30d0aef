#include "tests/instances/RecordingFiles.h"
#include "zelwbr3/testing/Rows.h"

using namespace ZELWbr3::Testing;

using namespace RecordingFiles;

namespace {

/// Keeps every call as "Name[arguments]", with "!" before one that changes the
/// instance.
class Calls {
 public:
  ZELWbr3::Recorded::CallObserver Observer() {
    return [this](const ZELWbr3::Recorded::Call& oCall) {
      Json oArguments = Json::array();
      for (const auto& oArgument : oCall.Arguments) std::visit([&](auto o) { oArguments.push_back(o); }, oArgument);
      m_sCalls +=
          (m_sCalls.empty() ? "" : " ") + std::string(oCall.Changes ? "!" : "") + oCall.Name + oArguments.dump();
    };
  }
  std::string Take() { return std::exchange(m_sCalls, {}); }

 private:
  std::string m_sCalls;
};

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

/// A view or table with one row.
Json WithRow(const std::string& sText, Json oList = Json::object()) {
  oList["Columns"] = {{{"Name", "C"}}};
  oList["Rows"] = {{sText}};
  return oList;
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
  EXPECT_TRUE(oDatabase->Shutdown());
  EXPECT_EQ("2 Offline", State(*oDatabase));
  EXPECT_TRUE(oDatabase->Admin());
  EXPECT_EQ("3 Admin", State(*oDatabase));
  EXPECT_TRUE(oDatabase->RestartUntil({2026, 1, 2, 3, 4, 5}));
  EXPECT_EQ("5 Online", State(*oDatabase));
  EXPECT_TRUE(oDatabase->ShutdownQuick());
  EXPECT_EQ(2, oRead->Status()) << "objects read before share the state";
  EXPECT_TRUE(oRead->AutoLog() && oDatabase->AutoLogOff());
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

  const auto SetsAfter = [&](const char* sUntil, bool bDeletes) {
    EXPECT_EQ(bDeletes, oAnalyzer->DeleteProtocols(sUntil)) << sUntil;
    return oDatabase->Analyzer()->ProtocolSets()->size();
  };
  EXPECT_EQ(3u, SetsAfter("20260226", true));
  ASSERT_EQ(1u, SetsAfter("20260301", true)) << "the sets of that day go too";
  EXPECT_EQ(2, oAnalyzer->ProtocolSets()->front().Date.Day);
  EXPECT_EQ(1u, SetsAfter("tomorrow", false)) << "what is no date deletes nothing";
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
      "!Shutdown[] !RestartUntil[\"2026-01-02T03:04:05\"] !Analyzer.Start[\"my.cfg\",3,60,true,false]"
      " !Analyzer.DeleteProtocols[\"20260301\"] Parameters.Load[] SysInfo.Open[] SQLTables.NewTable[]"
      " SQLTable.Open[] History.ReadMore[] ParameterHistory.MoveNext[]",
      oCalls.Take());
}

TEST(RecordedOperations, AnOperationInFailsIsReportedAndChangesNothing) {
  const Json oBeside = Json::parse(
      R"({"fails": ["Shutdown", "AutoLogOff", "DataArea.Refresh", "SysInfo.Open", "Analyzer.Stop",
          "ParameterHistory.Open", "Analyzer.ProtocolSets"], "LastError": {"ErrorCode": -24988, "ErrorText": "SQL error"}})");
  Calls oCalls;
  const auto oDatabase = OpenWith({{"StateInfo", {{"Status", 5}, {"AutoLog", true}}},
                                   {"Analyzer", {{"State", 1}, {"ProtocolSets", {{{"Texts", {"a"}}}}}}},
                                   {"ParameterHistory", {{{"Parameter", "A"}}}},
                                   {"SysInfos", {WithRow("1")}}},
                                  oBeside, oCalls.Observer());
  EXPECT_FALSE(oDatabase->Shutdown() || oDatabase->AutoLogOff() || oDatabase->DataArea()->Refresh());
  EXPECT_TRUE(oDatabase->LogArea()->Refresh());
  EXPECT_EQ("!Shutdown[] !AutoLogOff[] DataArea.Refresh[] LogArea.Refresh[]", oCalls.Take());
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
  const Json oPaths = Json::parse(R"(["StateInfo.DataTotal", "Shutdown", "SysInfo.Value", "Volume.Size", "Snapshot",
                                      "Parameters.Item", "Caches.AWEParam.Group", "DataArea.Volumes.Items.Name"])");
  Calls oCalls;
  const Json oArea = {{"Volumes", Json::array({{{"Name", "V"}}})}};
  const auto oDatabase = OpenWith({{"DataArea", oArea}, {"LogArea", oArea}, {"SysInfos", {WithRow("1")}}},
                                  {{"raises", oPaths}}, oCalls.Observer());
  EXPECT_EQ("0 StateInfo.DataTotal raised an error", RaisedBy([&] { oDatabase->StateInfo()->DataTotal(); }));
  EXPECT_EQ("nothing", RaisedBy([&] { oDatabase->StateInfo()->DataUsed(); }));
  EXPECT_EQ("0 Shutdown raised an error", RaisedBy([&] { oDatabase->Shutdown(); }));
  EXPECT_EQ("!Shutdown[]", oCalls.Take());
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
  for (const char* sOwner : {"A", "B"}) oTables.push_back(WithRow(sOwner, {{"Owner", sOwner}, {"Name", "T"}}));
  const auto oDatabase = OpenWith({{"SQLTables", oTables}});
  const auto oTable = Table(*oDatabase, "", "T");
  for (const char* sOwner : {"A", "B", "A"}) {
    oTable->Owner(sOwner);
    EXPECT_EQ(Rows{{sOwner}}, OpenAndRead(*oDatabase, *oTable));
  }
  oTable->Owner("C");
  EXPECT_FALSE(oTable->Open());
  EXPECT_TRUE(oTable->IsEmpty()) << "the rows of the table before are gone";
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("C.T"));
}
