// What the dialogs say, take and hand back, seen from the platform that draws
// them, and answered from a script.

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/headless/ScriptedAnswers.h"
#include "zelwbr3/pages/analyzer/frmDBAnalyzerDelete.h"
#include "zelwbr3/pages/analyzer/frmDBAnalyzerStart.h"
#include "zelwbr3/pages/main/frmOnlineUntil.h"
#include "zelwbr3/pages/main/frmShutdown.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

using Answer = Dialog::Answer;

/// A platform whose user does something with a dialog and presses a button.
struct User : DialogBox {
  std::function<Answer(Dialog&)> Does;
  explicit User(std::function<Answer(Dialog&)> oDoes) : Does(std::move(oDoes)) {}
  Answer Show(Dialog& oDialog) override { return Does(oDialog); }
};

TEST(Dialogs, StartAtTheCurrentTime) {
  const Date dBefore = Calendar::Now();
  Date dOffered, dToday;
  User oUser([&](Dialog& oDialog) {
    (oDialog.Name == "frmOnlineUntil" ? dOffered : dToday) = oDialog.Fields[0].When;
    return Answer::OK;
  });
  EXPECT_EQ(frmOnlineUntil(oUser).OnlineUntil("DEMO"), dOffered);
  frmDBAnalyzerDelete(oUser).DeleteProtSets();
  EXPECT_LE(dBefore, dOffered);
  EXPECT_LE(dOffered, Calendar::Now());
  EXPECT_LE(Calendar::CompactDay(dBefore), Calendar::CompactDay(dToday));
}

TEST(Dialogs, JoinTheDayOfOneInputAndTheTimeOfTheOther) {
  User oUser([](Dialog& oDialog) {
    oDialog.Fields[0].When = {2024, 2, 29, 23, 59, 59};
    oDialog.Fields[1].When = {1999, 12, 31, 1, 2, 3};
    return Answer::OK;
  });
  EXPECT_EQ(frmOnlineUntil(oUser).OnlineUntil("DEMO"), (Date{2024, 2, 29, 1, 2, 3}));
}

TEST(Dialogs, RefuseDatesThatDoNotExist) {
  for (const auto& [dEntered, sComplaint] : {std::pair(Date{2024, 2, 29, 0, 0, 0}, ""),
                                             {Date{9999, 12, 31, 23, 59, 59}, ""},
                                             {Date{1900, 2, 29, 0, 0, 0}, "There is no 1900-02-29 00:00:00."},
                                             {Date{2026, 13, 1, 0, 0, 0}, "There is no 2026-13-01 00:00:00."},
                                             {Date{0, 1, 1, 0, 0, 0}, "There is no 0000-01-01 00:00:00."},
                                             {Date{2026, 1, 1, 24, 0, 0}, "There is no 2026-01-01 24:00:00."}}) {
    User oUser([&](Dialog& oDialog) {
      for (auto& oField : oDialog.Fields) oField.When = dEntered;
      EXPECT_EQ(oDialog.Complaint(), sComplaint);
      return Answer::Cancel;
    });
    frmOnlineUntil(oUser).OnlineUntil("DEMO");
  }
}

Dialog::Field& NumberField(Dialog& oDialog) { return oDialog.Fields[1]; }

TEST(StartDialog, CountsPastedTextByItsLeadingNumber) {
  for (const auto& [sPasted, sNumber] : {std::pair(std::string("often"), "0"),
                                         {" 12 times", "12"},
                                         {"2.5", "2"},
                                         {"3.5", "4"},
                                         {"-7", "-7"},
                                         {"2147483647", "2147483647"},
                                         {"2147483648", "refused"},
                                         {std::string(400, '9'), "refused"},
                                         {"1e999", "refused"},
                                         {"0." + std::string(400, '0') + "1", "0"}}) {
    User oUser([&](Dialog& oDialog) {
      NumberField(oDialog).Text = sPasted;
      return oDialog.Complaint().empty() ? Answer::OK : Answer::Cancel;
    });
    const auto oOptions = frmDBAnalyzerStart(oUser).StartIt();
    EXPECT_EQ(oOptions ? std::to_string(oOptions->Number) : "refused", sNumber) << sPasted;
  }
}

TEST(StartDialog, SelectsTheTextOfAFieldThatIsEntered) {
  struct Box : TextBox {
    Long start = -1, length = -1;
    std::string Text() const override { return "Grüße"; }
    void SelStart(Long l) override { start = l; }
    void SelLength(Long l) override { length = l; }
  };
  User oUser([](Dialog& oDialog) {
    for (const auto& oField : oDialog.Fields) {
      if (oField.What != Dialog::Field::Kind::TextBox) continue;
      Box oBox;
      oField.Entered(oBox);
      EXPECT_EQ(oBox.start, 0);
      EXPECT_EQ(oBox.length, 5);
    }
    return Answer::Cancel;
  });
  frmDBAnalyzerStart(oUser).StartIt();
}

std::string Parsed(const std::string& sText) {
  try {
    const auto oAnswer = Headless::ScriptedAnswer::Parse(sText);
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
  Headless::ScriptedAnswers Answers;
  std::string Wrong;
  ScopedConnection Unsuitable;
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
