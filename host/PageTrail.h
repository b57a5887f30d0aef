#pragma once

#include "zelwbr3/shell/Browser.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Host {

/// The pages that were shown one after the other, to go back and forward. From a
/// page of one entry, back leads to the list that it was opened from, which is then
/// as it was: filtered, sorted and scrolled.
class PageTrail {
 public:
  explicit PageTrail(Browser& oBrowser) : m_oBrowser(oBrowser) {}

  /// A page has come to the front, in whatever way.
  void Shown(const std::shared_ptr<Page>& oPage);
  /// Begins again, with another instance.
  void Clear();

  bool CanGoBack() const { return m_iAt > 0; }
  bool CanGoForward() const { return m_iAt + 1 < m_pages.size(); }
  /// Show the page before or after the present one; throw as Browser::Show.
  void Back();
  void Forward();
  /// The page in front, with the title of the list that it was opened from, if it was:
  /// "Parameters › CACHE_SIZE".
  std::string Path() const;
  /// The name of the page in front, or of the one with the list that it is an entry of.
  std::string List() const;

 private:
  bool IsEntry(std::size_t i) const;
  void Show(std::size_t i);

  static constexpr std::size_t kMost = 50;

  Browser& m_oBrowser;
  std::vector<std::shared_ptr<Page>> m_pages;
  std::size_t m_iAt = 0;
  /// The page that each frame has shown last, and so still holds.
  std::map<std::int32_t, std::shared_ptr<Page>> m_frames;
};

}  // namespace ZELWbr3::Host
