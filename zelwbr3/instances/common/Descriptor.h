#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

namespace ZELWbr3::Instances {

/// Raises the error of the last system call; sAbout stands before it in the
/// message.
[[noreturn]] inline void RaiseSystemError(const std::string& sAbout) {
  throw std::system_error(errno, std::generic_category(), sAbout);
}

/// A file, folder, pipe or process held open as long as the object lives.
class Descriptor {
 public:
  Descriptor(const std::string& sPath, int lFlags) : Descriptor(open(sPath.c_str(), lFlags | O_CLOEXEC, 0666), sPath) {}
  /// Takes over what a system call returned; raises std::system_error about
  /// sAbout when that is a failure.
  Descriptor(int lDescriptor, const std::string& sAbout) : m_lDescriptor(lDescriptor) {
    if (m_lDescriptor < 0) RaiseSystemError(sAbout);
  }
  Descriptor(Descriptor&& oOther) noexcept : m_lDescriptor(std::exchange(oOther.m_lDescriptor, -1)) {}
  Descriptor& operator=(Descriptor&& oOther) noexcept {
    std::swap(m_lDescriptor, oOther.m_lDescriptor);
    return *this;
  }
  ~Descriptor() {
    if (m_lDescriptor >= 0) close(m_lDescriptor);
  }
  operator int() const { return m_lDescriptor; }

 private:
  int m_lDescriptor;
};

}  // namespace ZELWbr3::Instances
