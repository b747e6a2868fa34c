#include <chrono>
#include <csignal>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include <boost/asio.hpp>
#include <boost/asio/ssl.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spdlog/sinks/ringbuffer_sink.h>
#include <spdlog/spdlog.h>

#include "server/http/HttpServer.h"
#include "tests/server/http/Certificate.h"
#include "tests/server/http/TestServer.h"

namespace asio = boost::asio;
using testing::HasSubstr;

namespace smisd::test {
namespace {

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
    HttpServer server{{}, accepting(echo)};
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

// SIGHUP, while the log is kept in memory.
class TlsReload : public TlsServer {
protected:
    TlsReload() {
        EXPECT_THAT(responseTo(TLS1_3_VERSION), HasSubstr("[hi]")); // it is ready for signals
        spdlog::set_default_logger(std::make_shared<spdlog::logger>("test", log));
    }
    ~TlsReload() override { spdlog::set_default_logger(before); }

    // A digest of the certificate that a new connection gets.
    std::string served() const {
        asio::io_context io;
        asio::ssl::context context(asio::ssl::context::tls_client);
        asio::ssl::stream<asio::ip::tcp::socket> stream(io, context);
        stream.next_layer().connect({asio::ip::address_v4::loopback(), port});
        stream.handshake(asio::ssl::stream_base::client);
        const std::unique_ptr<X509, decltype(&X509_free)> certificate(
            SSL_get1_peer_certificate(stream.native_handle()), X509_free);
        unsigned char digest[EVP_MAX_MD_SIZE];
        unsigned size = 0;
        X509_digest(certificate.get(), EVP_sha256(), digest, &size);
        return {digest, digest + size};
    }

    // What the log says of a SIGHUP.
    std::string reload() {
        raise(SIGHUP);
        for (int i = 0; i < 500 && log->last_formatted().empty(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return log->last_formatted().empty() ? "" : log->last_formatted().back();
    }

    std::shared_ptr<spdlog::logger> before = spdlog::default_logger();
    std::shared_ptr<spdlog::sinks::ringbuffer_sink_mt> log =
        std::make_shared<spdlog::sinks::ringbuffer_sink_mt>(8);
};

TEST_F(TlsReload, GivesNewConnectionsTheNewCertificate) {
    const std::string old = served();
    files.makeAnother();
    EXPECT_EQ(served(), old);
    EXPECT_THAT(reload(), HasSubstr("new connections get the certificate " + files.certificate));
    EXPECT_NE(served(), old);
}

TEST_F(TlsReload, KeepsTheOldCertificateWhenTheNewOneIsBad) {
    const std::string old = served();
    std::ofstream(files.certificate) << "no certificate";
    EXPECT_THAT(reload(), HasSubstr("the certificate in use stays: cannot use the certificate " +
                                    files.certificate));
    EXPECT_EQ(served(), old);
}

TEST_F(TlsReload, KeepsTheOldCertificateWhenTheKeyIsAnothers) {
    const std::string old = served();
    Certificate other;
    std::filesystem::copy_file(other.key, files.key,
                               std::filesystem::copy_options::overwrite_existing);
    EXPECT_THAT(reload(), HasSubstr("the certificate in use stays: cannot use the key " +
                                    files.key + ": key values mismatch"));
    EXPECT_EQ(served(), old);
}

TEST(TlsFiles, BadOnesAreNamed) {
    const Certificate files;
    const auto errorOf = [](const std::string& certificate, const std::string& key) -> std::string {
        HttpServer server({}, accepting(echo));
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
