#include "server/http/HttpServer.h"

#include "tests/server/TemporaryDirectory.h"

#include <boost/asio.hpp>
#include <boost/asio/ssl.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace asio = boost::asio;
using testing::HasSubstr;

namespace smisd::test {
namespace {

// A key and a certificate of its own for localhost, as files that go with it.
class Certificate {
public:
    Certificate() {
        const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> pair(EVP_EC_gen("P-256"),
                                                                       EVP_PKEY_free);
        const std::unique_ptr<X509, decltype(&X509_free)> x509(X509_new(), X509_free);
        X509_gmtime_adj(X509_getm_notBefore(x509.get()), 0);
        X509_gmtime_adj(X509_getm_notAfter(x509.get()), 3600);
        X509_set_pubkey(x509.get(), pair.get());
        X509_sign(x509.get(), pair.get(), EVP_sha256());
        write(certificate, [&](FILE* out) { PEM_write_X509(out, x509.get()); });
        write(key, [&](FILE* out) {
            PEM_write_PrivateKey(out, pair.get(), nullptr, nullptr, 0, nullptr, nullptr);
        });
    }

private:
    TemporaryDirectory _directory;

public:
    const std::string certificate = _directory.path / "cert.pem";
    const std::string key = _directory.path / "key.pem";

private:
    template<class Write>
    static void write(const std::string& path, Write content) {
        const std::unique_ptr<FILE, int (*)(FILE*)> out(std::fopen(path.c_str(), "w"), std::fclose);
        content(out.get());
    }
};

class TlsServer : public testing::Test {
protected:
    ~TlsServer() override {
        server.stop();
        thread.join();
    }

    // What a client that offers at most this version gets; "" when the handshake fails.
    std::string responseTo(int maximumVersion) const {
        asio::io_context io;
        asio::ssl::context context(asio::ssl::context::tls_client);
        SSL_CTX_set_max_proto_version(context.native_handle(), maximumVersion);
        SSL_CTX_set_security_level(context.native_handle(), 0);
        asio::ssl::stream<asio::ip::tcp::socket> stream(io, context);
        stream.next_layer().connect({asio::ip::address_v4::loopback(), port});
        boost::system::error_code error;
        stream.handshake(asio::ssl::stream_base::client, error);
        if (error) {
            return "";
        }
        asio::write(stream, asio::buffer(std::string("POST / HTTP/1.1\r\nContent-Length: 2\r\n"
                                                     "Connection: close\r\n\r\nhi")));
        std::string response;
        asio::read(stream, asio::dynamic_buffer(response), error);
        return response;
    }

    Certificate files;
    HttpServer server{{}, [](const HttpRequest& request, ResponseChannel& channel) {
                          channel.send("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n[" +
                                       request.body + "]");
                          return request.keepAlive;
                      }};
    const unsigned short port = server.listenTls({"127.0.0.1", 0}, files.certificate, files.key);
    std::thread thread{[this] { server.run(); }};
};

TEST_F(TlsServer, Speaks12And13) {
    EXPECT_THAT(responseTo(TLS1_3_VERSION), HasSubstr("[hi]"));
    EXPECT_THAT(responseTo(TLS1_2_VERSION), HasSubstr("[hi]"));
}

TEST_F(TlsServer, RefusesOlderVersions) {
    EXPECT_EQ(responseTo(TLS1_1_VERSION), "");
    EXPECT_EQ(responseTo(TLS1_VERSION), "");
}

TEST_F(TlsServer, ClientWithoutTlsHarmsNobody) {
    asio::io_context io;
    asio::ip::tcp::socket plain(io);
    plain.connect({asio::ip::address_v4::loopback(), port});
    asio::write(plain, asio::buffer(std::string("POST / HTTP/1.1\r\n\r\n")));
    EXPECT_THAT(responseTo(TLS1_3_VERSION), HasSubstr("[hi]"));
}

TEST(TlsFiles, BadOnesAreNamed) {
    const Certificate files;
    const auto errorOf = [](const std::string& certificate, const std::string& key) -> std::string {
        HttpServer server({}, [](const HttpRequest&, ResponseChannel&) { return false; });
        try {
            server.listenTls({"127.0.0.1", 0}, certificate, key);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no error";
    };
    EXPECT_THAT(errorOf("/nonexistent/cert.pem", files.key),
                HasSubstr("cannot use the certificate /nonexistent/cert.pem"));
    EXPECT_THAT(errorOf(files.certificate, "/nonexistent/key.pem"),
                HasSubstr("cannot use the key /nonexistent/key.pem"));
    EXPECT_THAT(errorOf(files.certificate, files.certificate), HasSubstr("cannot use the key"));
}

} // namespace
} // namespace smisd::test
