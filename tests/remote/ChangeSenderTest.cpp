#include "zelwbr3/remote/ChangeSender.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace ZELWbr3::Remote {
namespace {

class ChangeSenderTest : public testing::Test {
 protected:
  /// A change that fills a batch of its own.
  void RecordBatch() {
    const std::string sText(ChangeSender::BatchSize, 'x');
    Sender.Record({Change::Kind::Text, 1, 0, {}, sText});
  }

  std::vector<std::uint32_t> Sent;
  std::vector<std::string> Lists;
  ChangeSender Sender{[this](std::uint32_t iBatch, std::string sList) {
    Sent.push_back(iBatch);
    Lists.push_back(std::move(sList));
  }};
};

TEST_F(ChangeSenderTest, SendsAFewBatchesAheadAndTheRestAsTheyAreAcknowledged) {
  for (int i = 0; i < 7; ++i) RecordBatch();
  EXPECT_EQ(Sent, (std::vector<std::uint32_t>{1, 2, 3, 4}));
  Sender.Acknowledge(1);
  EXPECT_EQ(Sent.size(), 5u);
  // The acknowledgements of 2 to 4 were lost: that of 5 stands for them.
  Sender.Acknowledge(5);
  EXPECT_EQ(Sent.size(), 7u);
  EXPECT_FALSE(Sender.Settled());
  Sender.Acknowledge(7);
  EXPECT_TRUE(Sender.Settled());
}

TEST_F(ChangeSenderTest, SmallChangesWaitForTheBrowserAndGoTogether) {
  const auto RecordSmall = [this](const char* sText) {
    Sender.Record({Change::Kind::Text, 1, 0, {}, sText});
    Sender.Flush();
  };
  RecordSmall("a");
  RecordSmall("b");
  RecordSmall("c");
  Sender.Record({Change::Kind::Text, 1, 0, {}, "d"});
  EXPECT_EQ(Lists, std::vector<std::string>{"[1,1,\"a\"]"});
  EXPECT_FALSE(Sender.Settled());
  Sender.Acknowledge(1);
  EXPECT_EQ(Lists.back(), "[1,1,\"b\",1,1,\"c\",1,1,\"d\"]");
  Sender.Acknowledge(99);  // what was never sent cannot be acknowledged
  EXPECT_TRUE(Sender.Settled());
  RecordBatch();
  EXPECT_FALSE(Sender.Settled());
}

TEST_F(ChangeSenderTest, RowsThatFollowEachOtherAreOneRecord) {
  NodeNumber iNext = 10;
  const auto AddRow = [&](NodeNumber iTemplate, const char* sTexts, const char* sColumns = "") {
    Sender.Record({Change::Kind::Row, iTemplate, iNext, sColumns, sTexts});
    iNext += 3;
  };
  AddRow(7,
         "a\x7f"
         "bcd");
  AddRow(7,
         "\x7f"
         "e");
  Sender.Record({Change::Kind::Text, 1, 0, {}, "between"});
  AddRow(7, "f\x7fg");
  AddRow(8, "h\x7fi");
  AddRow(8, "j\x7fk", "1 1@id");
  EXPECT_FALSE(Sender.Settled());
  Sender.Flush();
  std::string sExpected =
      R"([10,7,"10;2;;a;bcd;a;bcd;;e",1,1,"between",10,7,"16;1;;f;g;f;g",10,8,"19;1;;h;i;h;i",10,8,"22;1;1 1@id;j;k;j;k"])";
  std::ranges::replace(sExpected, ';', Change::Separator);
  EXPECT_EQ(Lists, std::vector<std::string>{sExpected});

  // The first rows of a table go at once, further ones when there are many.
  for (std::uint32_t i = 0; i < ChangeSender::FirstRecordRows; ++i) AddRow(9, "x\x7fy");
  EXPECT_EQ(Lists.size(), 2u);
  for (std::uint32_t i = 0; i < 2 * ChangeSender::RecordRows - 1; ++i) AddRow(9, "x\x7fy");
  EXPECT_EQ(Lists.size(), 3u);
  // A column is no wider for a text of more than it can show.
  const std::string sLong = "l\x7f" + std::string(199, 'm') + "\xC3\xA4" + std::string(1'000'000, 'n');
  AddRow(6, sLong.c_str());
  EXPECT_EQ(Lists.size(), 4u);  // and is sent by itself
  EXPECT_LT(Lists.back().size(), 1'000'600u + ChangeSender::RecordRows * 4);
}

}  // namespace
}  // namespace ZELWbr3::Remote
