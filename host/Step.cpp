#include "host/Step.h"

#include "host/HostPages.h"
#include "zelwbr3/headless/ScriptedAnswer.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

enum class Needs { Nothing, Text, Number };

struct Form {
  const char* Word;
  Step::Kind What;
  Needs Argument;
};

constexpr Form Forms[] = {
    {"click", Step::Kind::Click, Needs::Text},       {"key", Step::Kind::Key, Needs::Number},
    {"focus", Step::Kind::Focus, Needs::Text},       {"item", Step::Kind::Item, Needs::Number},
    {"show", Step::Kind::Show, Needs::Text},         {"answer", Step::Kind::Answer, Needs::Text},
    {"command", Step::Kind::Command, Needs::Number}, {"print", Step::Kind::Print, Needs::Nothing},
};

[[noreturn]] void Fail(const std::string& sStep, const std::string& sWhat) {
  throw std::invalid_argument("The step \"" + sStep + "\" " + sWhat);
}

}  // namespace

Step Step::Parse(const std::string& sStep) {
  const auto iBlank = sStep.find(' ');
  const std::string sWord = sStep.substr(0, iBlank);
  const std::string sArgument = iBlank == std::string::npos ? std::string() : sStep.substr(iBlank + 1);
  const auto oForm = std::ranges::find(Forms, sWord, &Form::Word);
  if (oForm == std::end(Forms)) {
    Fail(sStep, "is not one of click, key, focus, item, show, answer, command, print");
  }

  Step oStep{oForm->What, sArgument, 0};
  switch (oForm->Argument) {
    case Needs::Nothing:
      if (!sArgument.empty()) Fail(sStep, "takes no argument");
      break;
    case Needs::Text:
      if (sArgument.empty()) Fail(sStep, "needs an argument");
      break;
    case Needs::Number: {
      std::int32_t lNumber = 0;
      const char* pEnd = sArgument.data() + sArgument.size();
      const auto oResult = std::from_chars(sArgument.data(), pEnd, lNumber);
      if (sArgument.empty() || oResult.ec != std::errc() || oResult.ptr != pEnd) {
        Fail(sStep, "needs a whole number from -2147483648 to 2147483647");
      }
      oStep.Number = lNumber;
      break;
    }
  }
  if (oStep.What == Kind::Show) HostPages::Find(sArgument);
  if (oStep.What == Kind::Answer) {
    try {
      Headless::ScriptedAnswer::Parse(sArgument);
    } catch (const std::invalid_argument& oError) {
      Fail(sStep, oError.what());
    }
  }
  return oStep;
}

}  // namespace ZELWbr3::Host
