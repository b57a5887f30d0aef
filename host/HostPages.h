#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/platform/FCommandlist.h"
#include "zelwbr3/shell/Browser.h"

#include <memory>
#include <span>
#include <string>

namespace ZELWbr3::Host {

/// The pages of a control, shown by name with one instance and one command list.
class HostPages {
 public:
  /// A page that can be shown by its name.
  struct Entry {
    const char* Name;   ///< as on the command line
    const char* Title;  ///< for a menu
    const char* Group;  ///< of pages in a list of them, empty for none; null for a page that is not in it
    void (*Show)(Browser&, const std::shared_ptr<ZELLib3::Database>&);
  };

  HostPages(Browser& oBrowser, std::shared_ptr<ZELLib3::Database> oDatabase,
            std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist);

  /// In the order of a menu.
  static std::span<const Entry> All();
  /// Throws std::invalid_argument, which lists the pages, for an unknown name.
  static const Entry& Find(const std::string& sName);

  /// Shows a page and waits for it; throws like Find and Browser::Show.
  void Show(const std::string& sName);

 private:
  Browser& m_oBrowser;
  std::shared_ptr<ZELLib3::Database> m_oDatabase;
};

}  // namespace ZELWbr3::Host
