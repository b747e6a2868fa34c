// What a TLS listener speaks with.
#pragma once

#include <boost/asio/ssl/context.hpp>

#include <memory>
#include <string>

namespace smisd {

struct TlsFiles {
    std::string certificate; // the chain, PEM
    std::string key;         // without a pass phrase, PEM
};

// TLS 1.2 and later. Throws std::runtime_error that names the file at fault: it cannot be read, or
// the key is not the certificate's.
std::unique_ptr<boost::asio::ssl::context> openTls(const TlsFiles& files);

} // namespace smisd
