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
  oEvent->Connect([&](const std::string& s) {
    sCalls += "1" + s;
    oSecond.Disconnect();
    if (s == "a") oThird = oEvent->Connect([&](const std::string& t) { sCalls += "3" + t; });
  });
  oSecond = oEvent->Connect([&](const std::string& s) { sCalls += "2" + s; });
  oEvent->Raise("a");
  EXPECT_EQ(sCalls, "1a");
  oEvent->Raise("b");
  EXPECT_EQ(sCalls, "1a1b3b");
  oEvent->Connect([&](const std::string&) { oEvent.reset(); });
  oEvent->Raise("c");
  EXPECT_EQ(sCalls, "1a1b3b1c3c");
}

TEST(Event, AHandlerLivesAsLongAsTheEventUnlessItsConnectionIsScoped) {
  auto oEvent = std::make_unique<Event<int&>>();
  const auto oHeld = std::make_shared<int>();
  oEvent->Connect([oHeld](int& i) { i += 1; });
  ScopedConnection oMoved;
  {
    ScopedConnection oScoped = oEvent->Connect([oHeld](int& i) { i += 10; });
    const ScopedConnection oEnds = oEvent->Connect([oHeld](int& i) { i += 100; });
    oMoved = std::move(oScoped);
  }
  int i = 0;
  oEvent->Raise(i);
  EXPECT_EQ(i, 11);
  oMoved.Disconnect();
  oEvent->Raise(i);
  EXPECT_EQ(i, 12);
  EXPECT_EQ(oHeld.use_count(), 2);
  oEvent.reset();
  EXPECT_EQ(oHeld.use_count(), 1);
}

}  // namespace ZELWbr3
