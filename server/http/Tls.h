// TLS: with what a listener proves who it is, and what plain and TLS connections differ in.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <boost/asio/ssl/context.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/ssl/ssl_stream.hpp>
#include <boost/system/error_code.hpp>

namespace smisd {

struct TlsFiles {
    std::string certificate; // the chain, PEM
    std::string key;         // without a pass phrase, PEM
};

// TLS 1.2 and later. Throws std::runtime_error that names the file at fault: it cannot be read, or
// the key is not the certificate's.
std::unique_ptr<boost::asio::ssl::context> openTls(const TlsFiles& files);

using PlainStream = boost::beast::tcp_stream;
using TlsStream = boost::beast::ssl_stream<boost::beast::tcp_stream>;

// Calls the function once client and server may speak: at once, or after the handshake.
using StreamStep = std::function<void(boost::system::error_code)>;
void openStream(PlainStream& stream, const StreamStep& opened);
void openStream(TlsStream& stream, const StreamStep& opened);

// Says that nothing more will be sent, then calls the function.
void endStream(PlainStream& stream, const StreamStep& ended);
void endStream(TlsStream& stream, const StreamStep& ended);

} // namespace smisd
