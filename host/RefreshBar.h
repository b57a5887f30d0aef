#pragma once

#include "zelwbr3/base/Event.h"
#include "zelwbr3/desktop/BrowserPanel.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/datetime.h>
#include <wx/modalhook.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/timer.h>
#include <wx/weakref.h>

namespace ZELWbr3::Host {

/// The bar with the command Refresh and the choice how often the page in front is
/// refreshed without being asked. Also knows when what is shown was read.
///
/// A refresh that nobody asked for is left out while another one or an action goes
/// on, a dialog is open, rows have been read beyond the first block, or the user
/// selects text. It never takes more than a tenth of the time: when reading takes
/// long, it comes less often than chosen.
class RefreshBar : public wxPanel, private wxModalDialogHook {
 public:
  /// Runs something that the user asked for, and shows what it throws.
  using Runner = std::function<void(std::function<void()>)>;

  RefreshBar(wxWindow* oParent, Desktop::BrowserPanel& oPanel, Runner oRunner);
  ~RefreshBar() override;

  /// With the icon alone, for narrow windows.
  void Compact(bool bCompact);
  /// Seconds between two refreshes; 0 for none.
  void Interval(int iSeconds);
  int Interval() const { return m_iInterval; }
  /// A page is being shown: reading begins now.
  void Begins();
  /// Refreshes the page in front because the user wants it.
  void RefreshNow();

  /// When the figures of the page in front were read and how long that took, as a
  /// text; empty for a page without figures.
  Event<const std::string&> Read;
  /// A refresh without being asked has been left out or has ended; for tests.
  Event<bool> Ticked;

 private:
  using Clock = std::chrono::steady_clock;
  struct Reading {
    wxDateTime At;
    Clock::duration Took{};
  };

  int Enter(wxDialog*) override;
  void Exit(wxDialog*) override { --m_iDialogs; }

  void OnTick();
  /// Nothing is in the way as far as this side knows.
  bool MayRefresh() const;
  void Refresh(bool bAsked);
  void PageShown(const std::string& sPage);
  /// Waits for the next time.
  void Schedule();

  Desktop::BrowserPanel& m_oPanel;
  Runner m_oRunner;
  wxButton* m_oButton;
  wxStaticText* m_oEvery;
  wxChoice* m_oChoice;
  wxTimer m_oTimer;
  int m_iInterval = 0;
  int m_iDialogs = 0;
  bool m_bActing = false;
  Clock::duration m_oLast{};
  /// When the reading that goes on has begun.
  std::optional<Clock::time_point> m_oBegin;
  /// By page: a page that comes to the front again is as old as it was.
  std::map<std::string, Reading> m_readings;
  std::vector<ScopedConnection> m_connections;
};

}  // namespace ZELWbr3::Host
