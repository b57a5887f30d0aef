#include "zelwbr3/desktop/ChangeSender.h"

#include <gtest/gtest.h>

#include <vector>

namespace ZELWbr3::Desktop {
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

}  // namespace
}  // namespace ZELWbr3::Desktop
