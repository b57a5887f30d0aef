#include "tests/instances/RecordingFiles.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"
#include "zelwbr3/instances/recorded/format/Schema.h"

using namespace RecordingFiles;
using ZELWbr3::Recorded::Interface;
using ZELWbr3::Recorded::Type;
using ZELWbr3::Recorded::WriteRecording;

namespace {

/// A key by itself: where it stands and a value that no absent key reads as.
struct Key {
  Json::json_pointer oPath;
  Json oValue;
};

Json SampleOf(const Type& oType) {
  switch (oType.eKind) {
    case Type::Kind::Text:
      return "text";
    case Type::Kind::Whole:
      return 3;
    case Type::Kind::Number:
      return 0.5;
    case Type::Kind::Flag:
      return true;
    case Type::Kind::Date:
      return "2026-12-31T23:59:58";
    case Type::Kind::List:
      return Json::array({SampleOf(*oType.pEntry)});
    case Type::Kind::Object:
      return Json::object();
  }
  return {};
}

/// Every key that stands for a value or a list of values.
void Collect(const Interface& oInterface, const Json::json_pointer& oPath, std::vector<Key>& oKeys) {
  for (const auto& oMember : oInterface.oMembers) {
    // What is read in blocks depends on several keys at a time; it has tests
    // of its own.
    const auto bBlocks = oMember.sName == "BlockSize" || oMember.sName == "Rows";
    if (oMember.pType == nullptr || bBlocks || oMember.sName == "Count" || oMember.sName == "HistoryCount") continue;
    const Type* pType = oMember.pType;
    const bool bArray = oInterface.eForm == Interface::Form::Array || oInterface.eForm == Interface::Form::List;
    auto oKey = bArray ? oPath : oPath / oMember.sName;
    if (pType->eKind == Type::Kind::List && pType->pEntry->eKind == Type::Kind::Object) {
      pType = pType->pEntry;
      oKey = oKey / 0;
    }
    if (pType->eKind == Type::Kind::Object) {
      Collect(*pType->pInterface, oKey, oKeys);
    } else {
      oKeys.push_back({oKey, SampleOf(*pType)});
    }
  }
}

Json Recorded(const Json& oFile) {
  const File oOut;
  WriteRecording(*OpenRecording(File(oFile).Path()), oOut.Path());
  return oOut.Content()["Database"];
}

}  // namespace

// A member that answers another one's value, or that the writer forgets, shows
// as a key that does not come back or comes back elsewhere.
TEST(RecordedMembers, EachKeyReachesItsOwnMemberAndNoOther) {
  std::vector<Key> oKeys;
  Collect(ZELWbr3::Recorded::InterfaceOf<ZELLib3::Database>(), Json::json_pointer("/Database"), oKeys);
  ASSERT_GT(oKeys.size(), 180u);
  std::map<Json, Json> oBases;  // what is recorded without the key, mostly the same for neighbours
  for (const Key& oKey : oKeys) {
    SCOPED_TRACE(oKey.oPath.to_string());
    Json oFile = Json::object();
    oFile[oKey.oPath] = oKey.oValue;
    Json oWithout = oFile;
    oWithout[oKey.oPath.parent_pointer()].erase(oKey.oPath.back());

    if (!oBases.contains(oWithout)) oBases[oWithout] = Recorded(oWithout);
    const Json& oBase = oBases[oWithout];

    const std::string sKey = oKey.oPath.to_string().substr(std::string("/Database").size());
    const Json oChanges = Json::diff(oBase, Recorded(oFile));
    ASSERT_EQ(1u, oChanges.size()) << oChanges;
    const std::string sChanged = oChanges[0]["path"];
    const bool bWhole = sChanged == sKey;
    ASSERT_TRUE(bWhole || sChanged == sKey + "/0" || sChanged == sKey + "/-") << oChanges;
    Json oExpected = oKey.oValue;
    if (oExpected.is_array() && !bWhole) oExpected = oExpected[0];
    EXPECT_EQ(oExpected, oChanges[0]["value"]);
  }
}

TEST(RecordedMembers, AbsentKeysReadAsNothing) {
  for (const char* sText : {"{}", R"({"Database": {}})", R"({"LastError": null, "Database": {"StateInfo": null}})"}) {
    SCOPED_TRACE(sText);
    const auto oDatabase = OpenRecording(File(std::string(sText)).Path());
    EXPECT_FALSE(oDatabase->Connected());
    EXPECT_EQ(0, oDatabase->LastError().ErrorCode);
    EXPECT_EQ(nullptr, oDatabase->Analyzer());
    EXPECT_EQ(ZELWbr3::Date{}, oDatabase->StateInfo()->StartOn());
    EXPECT_EQ(0, oDatabase->Parameters()->Count() + oDatabase->DataArea()->Volumes()->Count());
    // Counters alone tell "not available" from none.
    EXPECT_EQ(-1, oDatabase->Activity()->SQLCounter(24));
    EXPECT_EQ(0, oDatabase->Caches()->RollbackCacheSize());
    EXPECT_FALSE(oDatabase->Caches()->DataCacheParam()->Exists());
    EXPECT_TRUE(oDatabase->History()->Open() && oDatabase->History()->IsEmpty());
  }
  EXPECT_EQ(nullptr, OpenWith({{"Analyzer", nullptr}})->Analyzer());
  EXPECT_EQ(0u, OpenWith({{"Analyzer", Json::object()}})->Analyzer()->ProtocolSets()->size());
}

TEST(RecordedMembers, AnIndexPastTheEndHasNoValue) {
  const auto oDatabase = OpenWith({{"DataArea", {{"Size", {7, 8}}}},
                                   {"Activity", {{"IOCounter", {1, 2.5}}}},
                                   {"StateInfo", {{"BarThresholds", {70, 80}}}}});
  EXPECT_EQ(8, oDatabase->DataArea()->Size(1));
  EXPECT_EQ(2.5, oDatabase->Activity()->IOCounter(1));
  for (const int lIndex : {2, -1, 2000000000}) {
    EXPECT_EQ(0, oDatabase->DataArea()->Size(lIndex));
    EXPECT_EQ(-1, oDatabase->Activity()->IOCounter(lIndex));
  }
  EXPECT_EQ((ZELLib3::StateInfo::Thresholds{70, 80}), oDatabase->StateInfo()->BarThresholds());
}

TEST(RecordedMembers, ACollectionMaySayAnotherCount) {
  const Json oVolumes = {{{"Name", "A"}}, {{"Name", "B"}}};
  const Json oChanges = {{{"Value", "A"}}, {{"Value", "B"}}};
  for (const int lCount : {1, 2, 3}) {
    const auto oDatabase = OpenWith({{"DataArea", {{"Volumes", {{"Count", lCount}, {"Items", oVolumes}}}}},
                                     {"Parameters", {{{"HistoryCount", lCount}, {"History", oChanges}}}}});
    const auto oListed = oDatabase->DataArea()->Volumes();
    const auto oChanged = oDatabase->Parameters()->Item(1);
    EXPECT_EQ(lCount, oListed->Count());
    EXPECT_EQ(lCount, oChanged->HistoryCount());
    EXPECT_EQ("AA", oListed->Item(1)->Name() + oChanged->HistoryValue(1));
    const int lBeyond = std::min(lCount, 2) + 1;
    EXPECT_THROW(oListed->Item(lBeyond), std::out_of_range);
    EXPECT_THROW(oChanged->HistoryValue(lBeyond), std::out_of_range);
  }
}

TEST(RecordedMembers, AParameterIsFoundWithoutTheBlanksAroundItsName) {
  const Json oListed = {{{"Name", " PADDED  "}, {"Value", "1"}, {"Exists", true}},
                        {{"Name", "PADDED"}, {"Value", "2"}, {"Exists", true}}};
  const auto oParameters = OpenWith({{"Parameters", oListed}})->Parameters();
  EXPECT_EQ("1", oParameters->Item("PADDED")->Value()) << "the first of that name";
  EXPECT_FALSE(oParameters->Item("padded")->Exists());
}
