#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/platform/UserLocale.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

/// The main page's table of details: every element, when it is shown and its
/// text.
namespace ZELWbr3::MainDetails {

/// What the details are computed from.
struct Facts {
  std::shared_ptr<ZELLib3::Database> Database;
  const UserLocale& Locale;
  /// A number of pages as text.
  std::function<std::string(Long)> Size;

  std::shared_ptr<ZELLib3::StateInfo> State() const { return Database->StateInfo(); }
  bool IsAtLeast(int lVersion) const { return Database->Version()->Number() >= lVersion; }
};

/// One element. Without a Text, it is shown or hidden by the Condition. With one,
/// it gets the text if the Condition holds, and else stays as it is.
struct Detail {
  std::string_view ID;
  bool (*Condition)(const Facts&);
  std::string (*Text)(const Facts&) = nullptr;
};

/// In the order of the page.
extern const std::span<const Detail> All;

}  // namespace ZELWbr3::MainDetails
