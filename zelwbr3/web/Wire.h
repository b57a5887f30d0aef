#pragma once

#include "zelwbr3/web/HTTP.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>

namespace ZELWbr3::Web {

/// The messages of a session to its shell, in order and without a gap, over one
/// socket after the other. A message is kept until the shell has said that it got
/// it, so nothing is lost with a socket. Every member may be called from any
/// thread.
class Wire {
 public:
  /// Bytes that are kept at most. A shell that has confirmed less begins anew.
  static constexpr std::size_t MostKept = std::size_t{16} << 20;

  void Send(std::string sMessage);

  // A socket that is attached ends the one before it.

  /// Goes on over this socket behind the first iGot messages. False if one of the
  /// next is no longer kept; nothing is changed then.
  bool Attach(std::shared_ptr<Socket> oSocket, std::uint64_t iGot);
  /// Begins anew over this socket: what was sent before is of no interest.
  void Restart(std::shared_ptr<Socket> oSocket);
  /// The socket is gone, unless another one has been attached meanwhile.
  void Detach(const Socket* oSocket);
  /// The shell has got the first iGot messages.
  void Confirm(std::uint64_t iGot);
  /// Ends the socket and takes no other one.
  void Close(int iCode);

  bool IsAttached() const;
  bool IsAttached(const Socket* oSocket) const;
  /// Lets the socket take messages again.
  void Resume();

 private:
  void Replace(std::shared_ptr<Socket> oSocket);

  mutable std::mutex m_oMutex;
  std::shared_ptr<Socket> m_oSocket;
  std::deque<std::shared_ptr<const std::string>> m_kept;
  std::size_t m_iKeptBytes = 0;
  /// The number of messages before the first one that is kept.
  std::uint64_t m_iBefore = 0;
};

}  // namespace ZELWbr3::Web
