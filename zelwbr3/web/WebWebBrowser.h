#pragma once

#include "zelwbr3/platform/WebBrowser.h"
#include "zelwbr3/remote/PageOrigin.h"
#include "zelwbr3/remote/RemoteDocument.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3::Web {

class WebPlatform;

/// One frame of the shell.
///
/// A page of which this session has had a snapshot is worked on at once: the
/// changes follow the navigation without waiting for the browser.
class WebWebBrowser : public WebBrowser, private Remote::Channel {
 public:
  WebWebBrowser(WebPlatform& oPlatform, std::uint32_t iFrame, WebBrowserEvents& oEvents);
  ~WebWebBrowser() override;

  void Navigate(const std::string& sURL, NavigateFlags eFlags) override;
  void Refresh(const std::string& sURL) override;
  std::shared_ptr<ZELWbr3::Document> Document() const override { return m_oRemote.Document(); }
  void Flush() override { m_oRemote.Flush(); }
  bool Settled() const override { return m_oRemote.Settled(); }
  bool IsBehind() const override { return m_oRemote.IsBehind(); }
  void Visible(bool bVisible) override;
  /// The shell gives every frame its place.
  void Move(int, int, int, int) override {}

  bool IsVisible() const { return m_bVisible; }
  Remote::RemoteDocument& Remote() { return m_oRemote; }
  /// Asks for the document as the browser shows it, in the form of the agent's
  /// snapshot. For tests and support: it must equal the replica.
  void LiveDocument(std::function<void(const std::string&)> oDone);
  void LiveTold(const std::string& sList);
  /// The load of this number has failed in the browser.
  void Failed(std::uint32_t iSerial);
  /// The document could not begin again under this number.
  void NotAgain(std::uint32_t iSerial);
  /// Shows the page and its place again in a shell that has nothing.
  void ShowAgain();

 private:
  void SendBatch(std::uint32_t iSerial, std::uint32_t iBatch, const std::string& sList) override;
  void Later(std::function<void()> oTask) override;
  void Unexpected() override { Load(false); }
  void Ready() override;

  /// A load of this URL would only give the present document as it was at first.
  bool BeginsAgainAs(const std::string& sURL) const;
  /// Asks the shell for that; the number.
  std::uint32_t Again(const char* sHow);
  /// Navigates to the present URL; bKnown = may count on a known snapshot.
  void Load(bool bKnown);

  /// Loads that may fail, one after the other, before the frame is left as it is.
  static constexpr int Attempts = 3;

  WebPlatform& m_oPlatform;
  std::uint32_t m_iFrame;
  std::string m_sURL;
  bool m_bVisible = false;
  Remote::PageOrigin m_oOrigin;
  std::string m_sLoadTheme;
  std::uint32_t m_iLoads;  ///< since the shell was loaded
  bool m_bLoading = false;
  /// The shell has lost the page.
  bool m_bStale = false;
  int m_iFailures = 0;
  std::function<void(const std::string&)> m_oLive;
  Remote::RemoteDocument m_oRemote;
};

}  // namespace ZELWbr3::Web
