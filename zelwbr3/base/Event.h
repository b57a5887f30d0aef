#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace ZELWbr3 {

/// Keeps one handler connected; the connection ends with the handle. Move-only.
/// Outliving the event is harmless.
class [[nodiscard]] Connection {
 public:
  Connection() = default;
  explicit Connection(std::shared_ptr<void> oHandler) : m_oHandler(std::move(oHandler)) {}
  Connection(Connection&&) = default;
  Connection& operator=(Connection&&) = default;

  void Disconnect() { m_oHandler.reset(); }

 private:
  std::shared_ptr<void> m_oHandler;
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

  Connection Connect(Handler handler) {
    std::erase_if(m_handlers, [](const auto& weak) { return weak.expired(); });
    auto oHandler = std::make_shared<Handler>(std::move(handler));
    m_handlers.push_back(oHandler);
    return Connection(std::move(oHandler));
  }

  /// A handler may destroy the event's owner: the list is copied first and the
  /// event is not touched afterwards.
  void Raise(Arguments... arguments) const {
    const auto handlers = m_handlers;
    for (const auto& weak : handlers) {
      if (const auto oHandler = weak.lock()) (*oHandler)(arguments...);
    }
  }

  /// Somebody hears of the next raise.
  bool HasHandlers() const {
    return std::any_of(m_handlers.begin(), m_handlers.end(), [](const auto& weak) { return !weak.expired(); });
  }

 private:
  std::vector<std::weak_ptr<Handler>> m_handlers;
};

}  // namespace ZELWbr3
