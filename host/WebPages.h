#pragma once

#include "host/HostPages.h"
#include "zelwbr3/framework/Health.h"
#include "zelwbr3/instances/recorded/objects/Call.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/web/WebPlatform.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Host {

/// What a session shows: a control with the pages of one instance, which the shell
/// lists.
class WebPages {
 public:
  /// sRefused says why commands that change the instance are not carried out; empty if
  /// they are.
  WebPages(Web::WebPlatform& oPlatform, std::shared_ptr<ZELLib3::Database> oDatabase, const std::string& sRefused = {});

  /// Shows a page and handles what comes, until ClosingError ends it.
  [[noreturn]] void Run(const std::string& sPage);

 private:
  void Show(const std::string& sName);
  void Refresh(bool bAsked);
  /// Offers the pages, with the number of findings on each.
  void OfferPages(const std::vector<Health::Finding>& findings);
  void Shown(const Page& oPage);
  /// When the figures of a page in front were read, as a text; empty if it has none.
  const std::string& ReadAt(const std::string& sPage);

  Web::WebPlatform& m_oPlatform;
  std::shared_ptr<ZELLib3::Database> m_oDatabase;
  Browser m_oBrowser;
  HostPages m_oPages;
  /// A page is being read.
  bool m_bReads = true;
  /// By page: one that comes to the front again is as old as it was.
  std::map<std::string, std::string> m_readAt;
  std::vector<ScopedConnection> m_connections;
};

/// Opens an instance for a session. While that fails, the shell says why and since
/// when, and it is tried again by itself and whenever the user wants it. Throws only
/// ClosingError.
std::shared_ptr<ZELLib3::Database> OpenFor(Web::WebPlatform& oPlatform,
                                           const std::function<std::shared_ptr<ZELLib3::Database>()>& oOpen);

/// Why an instance is not changed without the option for it.
extern const char* const ChangesRefused;

/// The observer of an instance that must not be changed: throws, before it is.
/// Nothing that a browser sends gets past it.
void RefuseChanges(const Recorded::Call& oCall);

}  // namespace ZELWbr3::Host
