#include "zelwbr3/web/Connection.h"

#include <csignal>
#include <stdexcept>

namespace ZELWbr3::Web {

asio::awaitable<void> ServePlain(beast::tcp_stream oStream, Connection& oConnection) {
  try {
    co_await ServeRequests(std::move(oStream), oConnection);
  } catch (const std::exception&) {
    // A peer that went, or that said something else than the protocol: its connection ends.
  }
}

namespace {

/// Bytes that the system may hold that it has not sent yet, of one connection.
constexpr int NotSent = 128 << 10;

std::shared_ptr<asio::ssl::context> MakeContext(const Server::Options& o) {
  if (o.CertificateFile.empty()) return nullptr;
  auto oContext = std::make_shared<asio::ssl::context>(asio::ssl::context::tls_server);
  oContext->set_options(asio::ssl::context::default_workarounds | asio::ssl::context::no_tlsv1 |
                        asio::ssl::context::no_tlsv1_1);
  const auto Check = [](const boost::system::error_code& oError, const char* sWhat, const std::string& sFile) {
    if (oError) throw std::runtime_error(std::string(sWhat) + " \"" + sFile + "\" cannot be used: " + oError.message());
  };
  boost::system::error_code oError;
  Check(oContext->use_certificate_chain_file(o.CertificateFile, oError), "The certificate", o.CertificateFile);
  Check(oContext->use_private_key_file(o.KeyFile, asio::ssl::context::pem, oError), "The key", o.KeyFile);
  return oContext;
}

}  // namespace

struct Server::State {
  State(const Options& oOptions, Site& oSite)
      : oContext(MakeContext(oOptions)), oShared(std::make_shared<Shared>(oSite, oOptions.Limits)) {
    const std::string sWhere = oOptions.Address + ":" + std::to_string(oOptions.Port);
    boost::system::error_code oError;
    const tcp::endpoint oEndpoint(asio::ip::make_address(oOptions.Address, oError), oOptions.Port);
    if (oError) throw std::runtime_error("\"" + oOptions.Address + "\" is not an address, such as 127.0.0.1 or ::1");
    oAcceptor.open(oEndpoint.protocol());
    oAcceptor.set_option(tcp::acceptor::reuse_address(true));
    oAcceptor.bind(oEndpoint, oError);
    if (!oError) oAcceptor.listen(asio::socket_base::max_listen_connections, oError);
    if (oError) throw std::runtime_error("The address " + sWhere + " cannot be listened on: " + oError.message());
  }

  asio::awaitable<void> Accept() {
    for (;;) {
      boost::system::error_code oError;
      tcp::socket oSocket = co_await oAcceptor.async_accept(asio::redirect_error(asio::use_awaitable, oError));
      if (oShared->bStopping) co_return;
      if (oError) {
        // Out of file handles, for one: there may be some again soon.
        asio::steady_timer oPause(oLoop, std::chrono::milliseconds(100));
        co_await oPause.async_wait(asio::redirect_error(asio::use_awaitable, oError));
        continue;
      }
      const auto oPeer = oSocket.remote_endpoint(oError);
      if (oError) continue;
      oSocket.set_option(tcp::no_delay(true), oError);
      // What waits for a slow peer waits here, where it is bounded.
      setsockopt(oSocket.native_handle(), IPPROTO_TCP, TCP_NOTSENT_LOWAT, &NotSent, sizeof NotSent);
      asio::co_spawn(oLoop, Serve(std::move(oSocket), oPeer.address().to_string()), asio::detached);
    }
  }

  asio::awaitable<void> Serve(tcp::socket oSocket, std::string sAddress) {
    Connection oConnection(oShared, std::move(sAddress));
    if (oConnection.IsTooMany()) co_return;
    beast::tcp_stream oStream(std::move(oSocket));
    if (oContext == nullptr) {
      co_await ServePlain(std::move(oStream), oConnection);
    } else {
      co_await ServeTLS(std::move(oStream), oConnection, oContext);
    }
  }

  void Stop() {
    if (std::exchange(oShared->bStopping, true)) return;
    boost::system::error_code oError;
    oAcceptor.close(oError);
    oSignals.cancel(oError);
    for (OpenSocket* oSocket : oShared->oSockets) oSocket->Close(1001);
    // Whoever does not answer the good-bye is not waited for.
    AwaitNoSockets(50, [this] {
      for (OpenSocket* oSocket : oShared->oSockets) oSocket->Abort();
      AwaitNoSockets(10, [this] { oLoop.stop(); });
    });
  }

  /// Calls oThen when there is no WebSocket any more, after so many hundredths of a
  /// second at most.
  void AwaitNoSockets(int iTurns, std::function<void()> oThen) {
    if (iTurns == 0 || oShared->oSockets.empty()) return oThen();
    oEnd.expires_after(std::chrono::milliseconds(10));
    oEnd.async_wait([this, iTurns, oThen = std::move(oThen)](const boost::system::error_code&) {
      AwaitNoSockets(iTurns - 1, oThen);
    });
  }

  asio::io_context oLoop{1};
  tcp::acceptor oAcceptor{oLoop};
  asio::signal_set oSignals{oLoop};
  asio::steady_timer oEnd{oLoop};
  std::shared_ptr<asio::ssl::context> oContext;
  std::shared_ptr<Shared> oShared;
};

Server::Server(const Options& oOptions, Site& oSite) : m_oState(std::make_shared<State>(oOptions, oSite)) {}

Server::~Server() = default;

std::uint16_t Server::Port() const { return m_oState->oAcceptor.local_endpoint().port(); }

void Server::Run(std::function<void()> oStopping) {
  State& o = *m_oState;
  o.oSignals.add(SIGINT);
  o.oSignals.add(SIGTERM);
  o.oSignals.async_wait([&o, oStopping = std::move(oStopping)](const boost::system::error_code& oError, int) {
    if (oError) return;
    oStopping();
    o.Stop();
  });
  asio::co_spawn(o.oLoop, o.Accept(), asio::detached);
  o.oLoop.run();
}

void Server::Stop() {
  asio::post(m_oState->oLoop, [this] { m_oState->Stop(); });
}

void Server::Post(std::function<void()> oTask) { asio::post(m_oState->oLoop, std::move(oTask)); }

void Server::After(std::chrono::milliseconds oTime, std::function<void()> oTask) {
  const auto oTimer = std::make_shared<asio::steady_timer>(m_oState->oLoop, oTime);
  oTimer->async_wait([oTimer, oTask = std::move(oTask)](const boost::system::error_code& oError) {
    if (!oError) oTask();
  });
}

}  // namespace ZELWbr3::Web
