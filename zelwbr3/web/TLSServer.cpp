#include "zelwbr3/web/Connection.h"

#include <boost/beast/ssl.hpp>

namespace ZELWbr3::Web {

asio::awaitable<void> ServeTLS(beast::tcp_stream oStream, Connection& oConnection,
                               std::shared_ptr<asio::ssl::context> oContext) {
  try {
    beast::ssl_stream<beast::tcp_stream> oSecure(std::move(oStream), *oContext);
    beast::get_lowest_layer(oSecure).expires_after(oConnection.Shared->oLimits.Head);
    co_await oSecure.async_handshake(asio::ssl::stream_base::server, asio::use_awaitable);
    co_await ServeRequests(std::move(oSecure), oConnection);
  } catch (const std::exception&) {
    // A peer that went, or that said something else than the protocol: its connection ends.
  }
}

}  // namespace ZELWbr3::Web
