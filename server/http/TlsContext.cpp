#include "server/http/TlsContext.h"

#include <stdexcept>

namespace smisd {

using boost::asio::ssl::context;

namespace {

[[noreturn]] void fail(const std::string& what, const boost::system::error_code& error) {
    throw std::runtime_error("cannot use the " + what + ": " + error.message());
}

} // namespace

std::unique_ptr<context> openTls(const TlsFiles& files) {
    auto tls = std::make_unique<context>(context::tls_server);
    SSL_CTX_set_min_proto_version(tls->native_handle(), TLS1_2_VERSION);
    // Nobody sits at a terminal who could be asked for a pass phrase.
    tls->set_password_callback([](std::size_t, context::password_purpose) { return ""; });
    boost::system::error_code error;
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

} // namespace smisd
