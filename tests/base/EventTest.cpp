#include "zelwbr3/base/Event.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace ZELWbr3 {

TEST(Event, HandlersComeAndGoWhileItIsRaised) {
  std::string sCalls;
  auto oEvent = std::make_unique<Event<const std::string&>>();
  Connection oSecond;
  Connection oThird;
  const auto oFirst = oEvent->Connect([&](const std::string& s) {
    sCalls += "1" + s;
    oSecond.Disconnect();
    if (s == "a") oThird = oEvent->Connect([&](const std::string& t) { sCalls += "3" + t; });
  });
  oSecond = oEvent->Connect([&](const std::string& s) { sCalls += "2" + s; });
  oEvent->Raise("a");
  EXPECT_EQ(sCalls, "1a");
  oEvent->Raise("b");
  EXPECT_EQ(sCalls, "1a1b3b");
  const auto oLast = oEvent->Connect([&](const std::string&) { oEvent.reset(); });
  oEvent->Raise("c");
  EXPECT_EQ(sCalls, "1a1b3b1c3c");
}

}  // namespace ZELWbr3
