#include "zelwbr3/instances/common/SystemUser.h"

#include <pwd.h>

#include <cerrno>
#include <vector>

namespace ZELWbr3::Instances {

std::optional<SystemUser> SystemUser::Of(uid_t lUser) {
  // getpwuid answers all threads in the same place.
  constexpr std::size_t Most = std::size_t{1} << 20;
  passwd oEntry{};
  passwd* pFound = nullptr;
  std::vector<char> text(1024);
  while (getpwuid_r(lUser, &oEntry, text.data(), text.size(), &pFound) == ERANGE && text.size() < Most) {
    text.resize(2 * text.size());
  }
  if (pFound == nullptr) return std::nullopt;
  return SystemUser{pFound->pw_name, pFound->pw_dir};
}

}  // namespace ZELWbr3::Instances
