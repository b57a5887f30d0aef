#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/testing/TempFolder.h"
#include "zelwbr3/web/Doorkeeper.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Web {
namespace {

using namespace std::chrono_literals;

class DoorkeeperTest : public testing::Test {
 protected:
  DoorkeeperTest() { Keeper.ServedAt({"http://127.0.0.1:8080", "https://db.example.org"}, 8080); }

  static Request Get(const std::string& sTarget) {
    return {.Method = "GET", .Target = sTarget, .Host = "127.0.0.1:8080", .Address = "127.0.0.1"};
  }
  /// A request with the cookie that the token was exchanged for.
  Request Visit(const std::string& sTarget = "/") {
    Request o = Get(sTarget);
    const std::string sSet = Keeper.Enter(Get("/?token=right-token")).SetCookie;
    o.Cookie = "other=1; " + sSet.substr(0, sSet.find(';'));
    return o;
  }

  Doorkeeper::Clock::time_point Now{};
  Doorkeeper Keeper{{.Token = "right-token", .MetricsToken = "metrics-token"}, [this] { return Now; }};
};

TEST_F(DoorkeeperTest, AnswersToOurNamesAndOurPagesOnly) {
  EXPECT_FALSE(Keeper.Refusal(Get("/")));
  for (const char* sHost : {"", "evil.example", "127.0.0.1", "127.0.0.1:8081", "127.0.0.1:8080.evil.example"}) {
    Request o = Get("/");
    o.Host = sHost;
    EXPECT_EQ(Keeper.Refusal(o)->Status, 421) << sHost;
  }
  for (const char* sOrigin : {"null", "http://evil.example", "https://127.0.0.1:8080", "http://127.0.0.1:8081"}) {
    Request o = Get("/");
    o.Origin = sOrigin;
    EXPECT_EQ(Keeper.Refusal(o)->Status, 403) << sOrigin;
  }
  // From elsewhere, only the address with the token may be opened.
  Request oLink = Get("/?token=right-token");
  oLink.FetchSite = "cross-site";
  EXPECT_FALSE(Keeper.Refusal(oLink));
  oLink.Target = "/p/x/Main.htm";
  EXPECT_EQ(Keeper.Refusal(oLink)->Status, 403);
}

TEST_F(DoorkeeperTest, ExchangesTheTokenForACookieThatEnds) {
  const Request oVisit = Visit();
  const std::string sCookie = Keeper.CookieOf(oVisit);
  EXPECT_EQ(sCookie.size(), 43U);
  EXPECT_EQ(sCookie.find("right-token"), std::string::npos);
  EXPECT_NE(Keeper.CookieOf(Visit()), sCookie);

  // A browser that comes by TLS sends it over nothing else, also when a proxy does that.
  Request oEntry = Get("/?token=right-token");
  EXPECT_EQ(Keeper.Enter(oEntry).SetCookie.find("Secure"), std::string::npos);
  oEntry.Host = "db.example.org";
  EXPECT_NE(Keeper.Enter(oEntry).SetCookie.find("; Secure"), std::string::npos);

  Now += 11h;
  EXPECT_EQ(Keeper.CookieOf(oVisit), sCookie);  // was used, and counts anew
  Now += 13h;
  EXPECT_EQ(Keeper.CookieOf(oVisit), "");

  const Request oBusy = Visit();
  for (int i = 0; i < 7 * 24 / 8; ++i, Now += 8h) EXPECT_NE(Keeper.CookieOf(oBusy), "");
  Now += 1s;
  EXPECT_EQ(Keeper.CookieOf(oBusy), "");

  const Request oLeaving = Visit();
  Keeper.Leave(oLeaving);
  EXPECT_EQ(Keeper.CookieOf(oLeaving), "");
}

TEST_F(DoorkeeperTest, RemembersVisitsOverARestartWithTheSameToken) {
  const Testing::TempFolder oFolder;
  const Doorkeeper::Options oOptions{
      .Token = "right-token", .MetricsToken = "metrics-token", .VisitsFile = oFolder.Path("visits")};
  Request oVisit = Get("/");
  Request oLeft = Get("/");
  {
    Doorkeeper oFirst(oOptions, [this] { return Now; });
    oFirst.ServedAt({"http://127.0.0.1:8080"}, 8080);
    for (Request* o : {&oVisit, &oLeft}) o->Cookie = oFirst.Enter(Get("/?token=right-token")).SetCookie;
    oFirst.Leave(oLeft);
  }
  Doorkeeper oAgain(oOptions, [this] { return Now; });
  oAgain.ServedAt({"http://127.0.0.1:8080"}, 8080);
  EXPECT_NE(oAgain.CookieOf(oVisit), "");
  EXPECT_EQ(oAgain.CookieOf(oLeft), "");
  Request oKey = Get("/");
  oKey.Cookie = "zelweb-8080=" + ReadFile(oOptions.VisitsFile).substr(0, 32);  // what the file holds opens nothing
  EXPECT_EQ(oAgain.CookieOf(oKey), "");
  Doorkeeper oOther({.Token = "other-token", .MetricsToken = "", .VisitsFile = oOptions.VisitsFile},
                    [this] { return Now; });
  oOther.ServedAt({"http://127.0.0.1:8080"}, 8080);
  EXPECT_EQ(oOther.CookieOf(oVisit), "");
  Now += 13h;
  EXPECT_EQ(oAgain.CookieOf(oVisit), "");
}

TEST_F(DoorkeeperTest, GuessingIsSlowAndAsksNothingOfThoseInside) {
  const Request oInside = Visit();
  for (int i = 0; i < 10; ++i) EXPECT_EQ(Keeper.Enter(Get("/?token=wrong-token")).Refused, 401);
  EXPECT_EQ(Keeper.Enter(Get("/?token=right-token")).Refused, 429);
  EXPECT_NE(Keeper.CookieOf(oInside), "");
  Request oOther = Get("/?token=right-token");
  oOther.Address = "127.0.0.2";
  EXPECT_EQ(Keeper.Enter(oOther).Refused, 0);
  Now += 61s;
  EXPECT_EQ(Keeper.Enter(Get("/?token=right-token")).Refused, 0);
}

TEST_F(DoorkeeperTest, EachTokenOpensItsOwnDoor) {
  Request o = Visit("/metrics");
  EXPECT_EQ(Keeper.MayReadFigures(o).Refused, 401);  // a cookie is no token
  o.Authorization = "Bearer right-token";
  EXPECT_EQ(Keeper.MayReadFigures(o).Refused, 401);
  o.Authorization = "Bearer metrics-token";
  EXPECT_EQ(Keeper.MayReadFigures(o).Refused, 0);
  EXPECT_EQ(Keeper.Enter(Get("/?token=metrics-token")).Refused, 401);
}

}  // namespace
}  // namespace ZELWbr3::Web
