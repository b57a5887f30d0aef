// Dialogs answered from a script.

#include "zelwbr3/headless/ScriptedAnswers.h"
#include "zelwbr3/pages/analyzer/frmDBAnalyzerStart.h"
#include "zelwbr3/pages/main/frmShutdown.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

using Headless::ScriptedAnswer;
using Headless::ScriptedAnswers;

std::string Parsed(const std::string& sText) {
  try {
    const auto oAnswer = ScriptedAnswer::Parse(sText);
    std::string sParsed = oAnswer.Word;
    for (const auto& oEntry : oAnswer.Entries) sParsed += "|" + oEntry.Name + "|" + oEntry.Value;
    return sParsed;
  } catch (const std::invalid_argument& oError) {
    return std::string("error: ") + oError.what();
  }
}

TEST(ScriptedAnswer, ReadsValuesUpToTheNextNameAndSaysWhatIsWrong) {
  for (const auto& [sText, sParsed] : {
           std::pair("ok config=/my dir/x=1 y.cfg number=5", "ok|config|/my dir/x=1 y.cfg|number|5"),
           {"ok number= interval= reconnect=no", "ok|number||interval||reconnect|no"},
           {"ok config= a  number=1", "ok|config| a |number|1"},
           {"maybe", "error: is not one of ok, cancel, yes, no, quick"},
           {"cancel number=1", "error: has values, which only ok takes"},
           {"ok colour=red",
            "error: has \"colour=red\", which starts with none of date=, time=, config=, number=, interval=, delete=, "
            "reconnect="},
           {"ok number=1 number=2", "error: has number= twice"},
           {"ok date=2026-1-2", "error: has date=2026-1-2, but date= takes YYYY-MM-DD"},
           {"ok time=12:00", "error: has time=12:00, but time= takes HH:MM:SS"},
           {"ok delete=maybe", "error: has delete=maybe, but delete= takes yes or no"},
       }) {
    EXPECT_EQ(Parsed(sText), sParsed);
  }
}

struct Asked {
  explicit Asked(const std::vector<std::string>& answers) {
    for (const auto& sAnswer : answers) Answers.Add(sAnswer);
    Unsuitable = Answers.Unsuitable.Connect([this](const std::string& sText) { Wrong = sText; });
  }
  ScriptedAnswers Answers;
  std::string Wrong;
  Connection Unsuitable;
};

// Number fields take digits and backspace only.
TEST(ScriptedAnswers, TypeKeyByKey) {
  Asked o({"ok number=1a2 -.\b\b3/:4é interval=é5 config=Grüße\b!"});
  const auto oOptions = frmDBAnalyzerStart(o.Answers).StartIt();
  ASSERT_TRUE(oOptions);
  EXPECT_EQ(oOptions->Number, 34);
  EXPECT_EQ(oOptions->Interval, 5);
  EXPECT_EQ(oOptions->Config, "Grüß!");
}

TEST(ScriptedAnswers, CancelADialogThatCannotTakeThem) {
  Asked oButton({"yes"});
  EXPECT_TRUE(frmShutdown(oButton.Answers).Shutdown("DEMO").Cancelled);
  EXPECT_EQ(oButton.Wrong, "the dialog frmShutdown does not offer the answer yes");

  Asked oField({"ok number=1"});
  EXPECT_TRUE(frmShutdown(oField.Answers).Shutdown("DEMO").Cancelled);
  EXPECT_EQ(oField.Wrong, "the dialog frmShutdown has no field for number=");

  Asked oLarge({"ok number=99999999999"});
  EXPECT_FALSE(frmDBAnalyzerStart(oLarge.Answers).StartIt());
  EXPECT_EQ(oLarge.Wrong, "the dialog frmDBAnalyzerStart cannot be confirmed: The number 99999999999 is too large.");

  Asked oBox({"ok number=1"});
  EXPECT_EQ(oBox.Answers.Show("Sure?", "Confirm", MessageBox::Buttons::OKCancel, MessageBox::Icon::Question),
            MessageBox::Answer::Cancel);
  EXPECT_EQ(oBox.Wrong, "the box \"Confirm\" does not offer the answer ok number=1");
}

}  // namespace
}  // namespace ZELWbr3::Testing
