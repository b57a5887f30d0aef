#pragma once

// Asio's awaitable.hpp forgets this one.
#include <utility>

#include "zelwbr3/web/Server.h"

#include <boost/asio.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>

#include <algorithm>
#include <deque>
#include <map>
#include <set>

namespace ZELWbr3::Web {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using tcp = asio::ip::tcp;

/// A WebSocket as the server knows it.
class OpenSocket : public Socket {
 public:
  /// Ends it without ceremony, on the server's thread.
  virtual void Abort() = 0;
};

/// What the connections of one server share.
struct Shared {
  Shared(Site& oServed, const Limits& oBounds) : oSite(oServed), oLimits(oBounds) {}

  Site& oSite;
  const Limits oLimits;
  std::size_t iConnections = 0;
  std::map<std::string, std::size_t> oOfAddress;
  std::set<OpenSocket*> oSockets;
  bool bStopping = false;
};

/// One connection, counted as long as it lives.
class Connection {
 public:
  Connection(std::shared_ptr<Web::Shared> oShared, std::string sAddress)
      : Shared(std::move(oShared)), Address(std::move(sAddress)) {
    ++Shared->iConnections;
    ++Shared->oOfAddress[Address];
  }
  ~Connection() {
    --Shared->iConnections;
    LetIn();
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  bool IsTooMany() const {
    return Shared->iConnections > Shared->oLimits.Connections ||
           Shared->oOfAddress[Address] > Shared->oLimits.ConnectionsOfAddress;
  }
  /// It is a WebSocket of somebody who has a cookie: all of them may come from one
  /// address, that of a proxy.
  void LetIn() {
    if (!std::exchange(m_bLetIn, true) && --Shared->oOfAddress[Address] == 0) Shared->oOfAddress.erase(Address);
  }

  const std::shared_ptr<Web::Shared> Shared;
  const std::string Address;  ///< of the peer

 private:
  bool m_bLetIn = false;
};

/// Serves one connection to its end; never throws.
asio::awaitable<void> ServePlain(beast::tcp_stream oStream, Connection& oConnection);
/// The same behind a TLS handshake.
asio::awaitable<void> ServeTLS(beast::tcp_stream oStream, Connection& oConnection,
                               std::shared_ptr<asio::ssl::context> oContext);

// ---- the two are instances of these templates -------------------------------

template <typename Stream>
class StreamSocket : public OpenSocket, public std::enable_shared_from_this<StreamSocket<Stream>> {
 public:
  StreamSocket(Stream oStream, std::shared_ptr<Shared> oShared)
      : m_oSocket(std::move(oStream)),
        m_oShared(std::move(oShared)),
        m_oWriteTimer(m_oSocket.get_executor()),
        m_oResumed(m_oSocket.get_executor()) {
    m_oShared->oSockets.insert(this);
  }
  ~StreamSocket() override { m_oShared->oSockets.erase(this); }

  void Send(std::shared_ptr<const std::string> sText) override {
    OnThread([sText = std::move(sText)](StreamSocket& o) {
      if (o.m_bClosing) return;
      o.m_iQueued += sText->size();
      if (o.m_iQueued > o.m_oShared->oLimits.Queued) return o.Abort();
      o.m_oQueue.push_back(sText);
      if (o.m_oQueue.size() == 1) o.Write();
    });
  }
  void Close(int iCode) override {
    OnThread([iCode](StreamSocket& o) {
      if (std::exchange(o.m_bClosing, true)) return;
      o.m_iCode = iCode;
      o.m_oResumed.cancel();
      if (o.m_oQueue.empty()) o.SayGoodBye();
    });
  }
  void Resume() override {
    OnThread([](StreamSocket& o) {
      o.m_bPaused = false;
      o.m_oResumed.cancel();
    });
  }
  void Abort() override {
    m_bClosing = true;
    m_oResumed.cancel();
    beast::get_lowest_layer(m_oSocket).close();
  }

  asio::awaitable<void> Serve(http::request<http::string_body> oUpgrade, Request oRequest) {
    const Limits& oLimits = m_oShared->oLimits;
    beast::get_lowest_layer(m_oSocket).expires_never();
    m_oSocket.set_option(websocket::stream_base::timeout{oLimits.Head, oLimits.Write, true});
    // Messages of 10 to 100 KB are reported to stall in fragments.
    m_oSocket.auto_fragment(false);
    m_oSocket.read_message_max(oLimits.Message);
    co_await m_oSocket.async_accept(oUpgrade, asio::use_awaitable);
    m_oSocket.text(true);
    m_oOwner = m_oShared->oSite.Opened(oRequest, this->shared_from_this());
    try {
      co_await Read();
    } catch (const std::exception&) {
      // However it ended, it is over.
    }
    m_bClosing = true;
    m_oQueue.clear();
    m_oWriteTimer.cancel();
    std::exchange(m_oOwner, nullptr)->Gone();
    // Lets what still waits in the socket end: it holds this object.
    Abort();
  }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::size_t MostOfPart = std::size_t{64} << 10;

  template <typename Task>
  void OnThread(Task oTask) {
    asio::post(m_oSocket.get_executor(), [oWeak = this->weak_from_this(), oTask = std::move(oTask)] {
      if (const auto oThis = oWeak.lock()) oTask(*oThis);
    });
  }

  asio::awaitable<void> Read() {
    beast::flat_buffer oBuffer;
    auto oSecond = Clock::now();
    int iInSecond = 0;
    for (;;) {
      co_await m_oSocket.async_read(oBuffer, asio::use_awaitable);
      if (!m_oSocket.got_text()) co_return;
      m_bPaused = !m_oOwner->Text(beast::buffers_to_string(oBuffer.data()));
      oBuffer.consume(oBuffer.size());
      if (Clock::now() - oSecond > std::chrono::seconds(1)) {
        oSecond = Clock::now();
        iInSecond = 0;
      }
      const auto oNext = oSecond + std::chrono::seconds(1);
      for (++iInSecond; iInSecond > m_oShared->oLimits.MessagesPerSecond && Clock::now() < oNext && !m_bClosing;) {
        m_oResumed.expires_at(oNext);
        co_await Wait();
      }
      while (m_bPaused && !m_bClosing) {
        m_oResumed.expires_at(Clock::time_point::max());
        co_await Wait();
      }
    }
  }

  asio::awaitable<void> Wait() {
    boost::system::error_code oCancelled;
    co_await m_oResumed.async_wait(asio::redirect_error(asio::use_awaitable, oCancelled));
  }

  /// In parts: who takes one in time is slow, but there, and what the connection itself
  /// asks finds its way between them.
  void Write() {
    m_oWriteTimer.expires_after(m_oShared->oLimits.Write);
    m_oWriteTimer.async_wait([oWeak = this->weak_from_this()](const boost::system::error_code& oError) {
      const auto oThis = oWeak.lock();
      if (!oError && oThis != nullptr) oThis->Abort();
    });
    const auto sText = m_oQueue.front();
    const std::size_t iPart = std::min(MostOfPart, sText->size() - m_iWritten);
    const bool bLast = m_iWritten + iPart == sText->size();
    const auto oPart = asio::buffer(sText->data() + m_iWritten, iPart);
    m_oSocket.async_write_some(
        bLast, oPart,
        [oThis = this->shared_from_this(), sText, iPart, bLast](const boost::system::error_code& oError, std::size_t) {
          oThis->m_oWriteTimer.cancel();
          if (oError || oThis->m_oQueue.empty()) return;
          oThis->m_iWritten = bLast ? 0 : oThis->m_iWritten + iPart;
          oThis->m_iQueued -= iPart;
          if (bLast) oThis->m_oQueue.pop_front();
          if (!oThis->m_oQueue.empty()) {
            oThis->Write();
          } else if (oThis->m_bClosing) {
            oThis->SayGoodBye();
          }
        });
  }

  void SayGoodBye() {
    m_oSocket.async_close(static_cast<websocket::close_code>(m_iCode),
                          [oThis = this->shared_from_this()](const boost::system::error_code&) { oThis->Abort(); });
  }

  websocket::stream<Stream> m_oSocket;
  std::shared_ptr<Shared> m_oShared;
  std::shared_ptr<SocketOwner> m_oOwner;
  asio::steady_timer m_oWriteTimer;
  asio::steady_timer m_oResumed;
  std::deque<std::shared_ptr<const std::string>> m_oQueue;
  std::size_t m_iQueued = 0;   ///< bytes in the queue that are not written
  std::size_t m_iWritten = 0;  ///< of the first one
  bool m_bPaused = false;
  bool m_bClosing = false;
  int m_iCode = 1000;
};

inline std::string Only(const http::request<http::string_body>& oRequest, beast::string_view sName) {
  const auto oFound = oRequest.equal_range(sName);
  if (oFound.first == oFound.second || std::next(oFound.first) != oFound.second) return {};
  return std::string(oFound.first->value());
}

inline Request RequestOf(const http::request<http::string_body>& o, const std::string& sAddress) {
  return {.Method = std::string(o.method_string()),
          .Target = std::string(o.target()),
          .Host = Only(o, "Host"),
          .Origin = Only(o, "Origin"),
          .Cookie = Only(o, "Cookie"),
          .Authorization = Only(o, "Authorization"),
          .FetchSite = Only(o, "Sec-Fetch-Site"),
          .AcceptEncoding = Only(o, "Accept-Encoding"),
          .Body = o.body(),
          .Address = sAddress};
}

template <typename Stream>
asio::awaitable<void> SendResponse(Stream& oStream, const Response& oAnswer,
                                   const http::request<http::string_body>& oTo, bool bKeep) {
  // The body is shared: it is neither copied nor owned by the message.
  static const std::string Empty;
  const std::string& sBody = oAnswer.Body == nullptr ? Empty : *oAnswer.Body;
  http::response<http::span_body<const char>> oMessage(static_cast<http::status>(oAnswer.Status), oTo.version());
  for (const auto& [sName, sValue] : oAnswer.Headers) oMessage.set(sName, sValue);
  oMessage.keep_alive(bKeep);
  oMessage.body() = {sBody.data(), sBody.size()};
  oMessage.prepare_payload();
  http::response_serializer<http::span_body<const char>> oSerializer(oMessage);
  if (oTo.method() == http::verb::head) {
    co_await http::async_write_header(oStream, oSerializer, asio::use_awaitable);
  } else {
    co_await http::async_write(oStream, oSerializer, asio::use_awaitable);
  }
}

/// Requests, one after the other, until one of them becomes a WebSocket or the
/// connection ends.
template <typename Stream>
asio::awaitable<void> ServeRequests(Stream oStream, Connection& oConnection) {
  const std::shared_ptr<Shared> oShared = oConnection.Shared;
  const Limits& oLimits = oShared->oLimits;
  beast::flat_buffer oBuffer;
  for (bool bFirst = true;; bFirst = false) {
    beast::get_lowest_layer(oStream).expires_after(bFirst ? oLimits.Head : oLimits.Idle);
    http::request_parser<http::string_body> oParser;
    oParser.header_limit(8 * 1024);
    oParser.body_limit(4 * 1024);
    boost::system::error_code oError;
    co_await http::async_read(oStream, oBuffer, oParser, asio::redirect_error(asio::use_awaitable, oError));
    const bool bMalformed = oError.category() == http::make_error_code(http::error::bad_method).category();
    if (oError == http::error::end_of_stream || (oError && !bMalformed)) co_return;
    const auto& oMessage = oParser.get();
    beast::get_lowest_layer(oStream).expires_after(oLimits.Write);
    if (oError) {
      const bool bLarge = oError == http::error::header_limit || oError == http::error::body_limit;
      co_await SendResponse(oStream, Response{bLarge ? 413 : 400}, oMessage, false);
      co_return;
    }
    const Request oRequest = RequestOf(oMessage, oConnection.Address);
    if (websocket::is_upgrade(oMessage)) {
      const auto oRefusal = oShared->bStopping ? Response{503} : oShared->oSite.Refusal(oRequest);
      if (!oRefusal) {
        oConnection.LetIn();
        const auto oSocket = std::make_shared<StreamSocket<Stream>>(std::move(oStream), oShared);
        co_await oSocket->Serve(oParser.release(), oRequest);
        co_return;
      }
      co_await SendResponse(oStream, *oRefusal, oMessage, false);
      co_return;
    }
    const bool bKeep = oMessage.keep_alive() && !oShared->bStopping;
    co_await SendResponse(oStream, oShared->oSite.Answer(oRequest), oMessage, bKeep);
    if (!bKeep) co_return;
  }
}

}  // namespace ZELWbr3::Web
