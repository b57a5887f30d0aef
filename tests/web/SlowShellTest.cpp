// A long list for a shell that is slow, or gone.

#include "tests/web/PlayedShell.h"
#include "zelwbr3/pages/monitor/PageSysInfo.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/web/WebCommandlist.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Web {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t MostWaiting = std::size_t{4} << 20;

/// Rows of 200 bytes and more, in blocks of 2,500.
class LongView : public ZELLib3::SysInfo {
 public:
  explicit LongView(int iRows) : m_iRows(iRows) {}

  std::string Name() const override { return "LONG"; }
  bool IsEmpty() const override { return false; }
  Long RowCount() const override { return int{Delivered}; }
  Long ColumnCount() const override { return 1; }
  std::string ColumnName(Long) const override { return "N"; }
  std::string ColumnTitle(Long) const override { return "(null)"; }
  bool Open() override { return ReadMore(); }
  bool ReadMore() override {
    Delivered = std::min(Delivered + 2500, m_iRows);
    return true;
  }
  bool NextRow() override { return m_iRow < Delivered && ++m_iRow > 0; }
  std::string Value(Long) const override { return RowText(m_iRow); }
  bool EndOfBlock() const override { return m_iRow >= Delivered; }
  bool HasMore() const override { return Delivered < m_iRows; }

  static std::string RowText(int iRow) { return "row " + std::to_string(iRow) + std::string(200, '.'); }

  std::atomic<int> Delivered = 0;

 private:
  int m_iRows;
  int m_iRow = 0;
};

/// A session that shows such a view, and its shell.
class SlowShell {
 public:
  explicit SlowShell(int iRows) : View(std::make_shared<LongView>(iRows)) {
    Shell->Connect(Cookie);
    Shell->Await(R"(["shown")");
  }
  ~SlowShell() { Shell->Disconnect(); }

  void ReadAll() { Shell->Say(R"(["item","3"])"); }
  /// Until reading does not go on between questions that the session answers.
  void AwaitStandstill() {
    int iBefore = -1;
    for (int i = 0; std::exchange(iBefore, int{View->Delivered}) != View->Delivered || i < 20; ++i) {
      Shell->Say(R"(["show","question"])");
      Shell->Await(R"(["answer")");
    }
  }

  std::shared_ptr<LongView> View;
  Served Site{{.Absence = 50ms, .Program = [this](WebPlatform& o) { Show(o); }}};
  const std::string Cookie = Site.Cookie();
  std::shared_ptr<PlayedShell> Shell = std::make_shared<PlayedShell>(Site);

 private:
  void Show(WebPlatform& oPlatform) {
    ZELWbr3::Browser oBrowser(oPlatform);
    oBrowser.HTMLPaths(oPlatform.Files().Folders());
    oBrowser.Commandlist(std::make_shared<WebCommandlist>(oPlatform));
    const auto oConnection =
        oPlatform.PageAsked.Connect([&](const std::string& sQuestion) { oPlatform.Send("answer", sQuestion); });
    oBrowser.PageSysInfo()->Show(std::make_shared<ZELLib3::Database>(), View);
    oPlatform.Send("shown");
    oPlatform.Run();
  }
};

TEST(SlowShellTest, ReadAllGetsNotFarAheadAndLosesNothing) {
  constexpr int Rows = 50'000;
  SlowShell o(Rows);
  o.Shell->Hold();
  o.ReadAll();
  o.AwaitStandstill();
  EXPECT_LT(o.View->Delivered * LongView::RowText(1).size(), MostWaiting);
  EXPECT_LT(o.Shell->Batches.size(), MostWaiting);

  o.Shell->Acknowledge();
  o.Shell->Await(R"(["batch")");
  const auto oBefore = o.Shell;
  o.Shell = oBefore->ComeBack(o.Cookie);
  oBefore->Disconnect();
  while (o.Shell->Await(R"(["batch")").find("Rows: " + std::to_string(Rows)) == std::string::npos) {
  }
  std::size_t iAt = 0;
  for (int i = 1; i <= Rows && iAt != std::string::npos; ++i) iAt = o.Shell->Batches.find(LongView::RowText(i), iAt);
  EXPECT_NE(iAt, std::string::npos);
}

TEST(SlowShellTest, ReadingStopsWithItsSession) {
  const std::vector<std::function<void(SlowShell&)>> ends = {
      [](SlowShell& o) { o.Shell->Disconnect(); },
      [](SlowShell& o) { EXPECT_EQ(o.Site.Ask("POST", "/logout", o.Cookie).Status, 200); },
      [](SlowShell& o) { o.Site.Do([&] { o.Site.TheSessions().End("The server is stopping"); }); },
  };
  for (const auto& End : ends) {
    SlowShell o(10'000'000);
    o.Shell->Hold();
    o.ReadAll();
    o.AwaitStandstill();
    End(o);
    o.Site.AwaitSessions(0);
    EXPECT_EQ(o.View.use_count(), 1);
  }
}

}  // namespace
}  // namespace ZELWbr3::Web
