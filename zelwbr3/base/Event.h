#pragma once

#include "zelwbr3/base/Export.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace ZELWbr3 {

/// A handler's connection to an event. It lasts as long as the event, whatever
/// becomes of this object, unless it is ended. Outliving the event is harmless.
class ZELWBR3_EXPORT Connection {
 public:
  Connection() = default;

  /// The handler is not called any more, and what it holds is released.
  void Disconnect() {
    if (const auto oHandler = m_oHandler.lock()) oHandler->reset();
  }

 private:
  template <typename...>
  friend class Event;
  explicit Connection(const std::shared_ptr<std::shared_ptr<void>>& oHandler) : m_oHandler(oHandler) {}

  std::weak_ptr<std::shared_ptr<void>> m_oHandler;
};

/// Ends a connection with its own life, for a handler that uses something which
/// does not live as long as the event. Move-only.
///
///     ScopedConnection oConnection = oBrowser.Command.Connect(...);
class ZELWBR3_EXPORT ScopedConnection {
 public:
  ScopedConnection() = default;
  ScopedConnection(Connection oConnection) : m_oConnection(std::move(oConnection)) {}
  ScopedConnection(ScopedConnection&& oOther) noexcept : m_oConnection(std::exchange(oOther.m_oConnection, {})) {}
  ScopedConnection& operator=(ScopedConnection&& oOther) noexcept {
    std::swap(m_oConnection, oOther.m_oConnection);
    oOther.Disconnect();
    return *this;
  }
  ~ScopedConnection() { m_oConnection.Disconnect(); }

  void Disconnect() { std::exchange(m_oConnection, {}).Disconnect(); }

 private:
  Connection m_oConnection;
};

/// An event that handlers can be connected to. Handlers run in the order in
/// which they were connected, on the raising thread. Connecting or disconnecting
/// a handler while the event is being raised takes effect at the next raise at
/// the latest. What a handler throws reaches the caller of Raise.
template <typename... Arguments>
class Event {
 public:
  using Handler = std::function<void(Arguments...)>;

  Event() = default;
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  /// Calls the handler at each raise, as long as the event exists.
  Connection Connect(Handler oHandler) {
    std::erase_if(m_handlers, [](const auto& oOther) { return *oOther == nullptr; });
    m_handlers.push_back(std::make_shared<std::shared_ptr<void>>(std::make_shared<Handler>(std::move(oHandler))));
    return Connection(m_handlers.back());
  }

  /// A handler may destroy the event's owner: the list is copied first and the
  /// event is not touched afterwards.
  void Raise(Arguments... arguments) const {
    const auto handlers = m_handlers;
    for (const auto& oEntry : handlers) {
      if (const auto oHandler = *oEntry) (*static_cast<Handler*>(oHandler.get()))(arguments...);
    }
  }

  /// Somebody hears of the next raise.
  bool HasHandlers() const {
    for (const auto& oHandler : m_handlers) {
      if (*oHandler != nullptr) return true;
    }
    return false;
  }

 private:
  std::vector<std::shared_ptr<std::shared_ptr<void>>> m_handlers;
};

}  // namespace ZELWbr3
