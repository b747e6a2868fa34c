#include "server/http/Tls.h"

#include <stdexcept>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/ssl.hpp>

namespace smisd {

using boost::asio::ssl::context;
using boost::system::error_code;

namespace {

[[noreturn]] void fail(const std::string& what, const error_code& error) {
    throw std::runtime_error("cannot use the " + what + ": " + error.message());
}

} // namespace

std::unique_ptr<context> openTls(const TlsFiles& files) {
    auto tls = std::make_unique<context>(context::tls_server);
    SSL_CTX_set_min_proto_version(tls->native_handle(), TLS1_2_VERSION);
    // Nobody sits at a terminal who could be asked for a pass phrase.
    tls->set_password_callback([](std::size_t, context::password_purpose) { return ""; });
    error_code error;
    tls->use_certificate_chain_file(files.certificate, error);
    if (error) {
        fail("certificate " + files.certificate, error);
    }
    tls->use_private_key_file(files.key, context::pem, error);
    if (error) {
        fail("key " + files.key, error);
    }
    return tls;
}

void openStream(PlainStream&, const StreamStep& opened) {
    opened({});
}

void openStream(TlsStream& stream, const StreamStep& opened) {
    stream.async_handshake(boost::asio::ssl::stream_base::server, opened);
}

void endStream(PlainStream& stream, const StreamStep& ended) {
    error_code ignored;
    stream.socket().shutdown(boost::asio::ip::tcp::socket::shutdown_send, ignored);
    ended({});
}

void endStream(TlsStream& stream, const StreamStep& ended) {
    stream.async_shutdown(ended);
}

} // namespace smisd
