// What a new connection needs is missing: each piece of memory once, or a descriptor. Afterwards
// the next client is served.
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <sys/socket.h>
#include <thread>

#include <boost/asio.hpp>
#include <boost/asio/ssl.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <openssl/crypto.h>
#include <spdlog/spdlog.h>

#include "tests/server/http/Certificate.h"
#include "tests/server/http/TestServer.h"

namespace asio = boost::asio;
using testing::HasSubstr;

namespace {

// Counts down at each piece of memory that the server's thread asks for; there is none for the one
// that makes it 0.
std::atomic<int> memoryLeft{-1};
thread_local bool isServersThread = false;

bool isMissing() {
    return isServersThread && memoryLeft.load() > 0 && --memoryLeft == 0;
}

// What the next accepted connections fail with, each once.
std::atomic<int> acceptErrors{0};
std::atomic<int> acceptError{0};

// Before anything of OpenSSL has memory.
__attribute__((constructor(101))) void watchOpenSsl() {
    CRYPTO_set_mem_functions([](std::size_t size, const char*,
                                int) { return isMissing() ? nullptr : std::malloc(size); },
                             [](void* memory, std::size_t size, const char*, int) {
                                 return isMissing() ? nullptr : std::realloc(memory, size);
                             },
                             [](void* memory, const char*, int) { std::free(memory); });
}

} // namespace

void* operator new(std::size_t size) {
    void* const memory = isMissing() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

// The linker calls these in place of the functions without the prefix.
extern "C" {
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);
void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    return isMissing() ? nullptr : __real_aligned_alloc(alignment, size);
}
int __real_accept4(int descriptor, sockaddr* peer, socklen_t* length, int flags);
int __wrap_accept4(int descriptor, sockaddr* peer, socklen_t* length, int flags) {
    if (acceptErrors.load() > 0) {
        --acceptErrors;
        errno = acceptError;
        return -1;
    }
    return __real_accept4(descriptor, peer, length, flags);
}
}

namespace smisd::test {
namespace {

class AcceptFault : public testing::Test {
protected:
    AcceptFault() { spdlog::set_level(spdlog::level::off); }
    ~AcceptFault() override {
        memoryLeft = -1;
        server.stop();
        thread.join();
        spdlog::set_level(spdlog::level::info);
    }

    // What a client gets that may be cut off.
    static std::string got(unsigned short port) {
        asio::io_context io;
        asio::ip::tcp::socket socket(io);
        socket.connect({asio::ip::address_v4::loopback(), port});
        return exchange(socket);
    }
    static std::string gotByTls(unsigned short port) {
        asio::io_context io;
        asio::ssl::context context(asio::ssl::context::tls_client);
        asio::ssl::stream<asio::ip::tcp::socket> stream(io, context);
        stream.next_layer().connect({asio::ip::address_v4::loopback(), port});
        boost::system::error_code error;
        stream.handshake(asio::ssl::stream_base::client, error);
        return error ? "" : exchange(stream);
    }
    template<class Stream>
    static std::string exchange(Stream& stream) {
        boost::system::error_code ignored;
        asio::write(stream, asio::buffer(post("x", "Connection: close\r\n")), ignored);
        std::string response;
        asio::read(stream, asio::dynamic_buffer(response), ignored);
        return response;
    }

    // Lets each piece of memory be missing once, and returns how many there are. After each time
    // another client is served.
    template<class Get>
    int countWhatMayBeMissing(Get get) {
        EXPECT_THAT(get(), HasSubstr("[x]"));
        for (int missing = 1;; ++missing) {
            memoryLeft = missing;
            const std::string first = get();
            const bool wasMissing = memoryLeft == 0;
            memoryLeft = -1;
            if (!wasMissing) {
                EXPECT_THAT(first, HasSubstr("[x]"));
                return missing - 1;
            }
            EXPECT_THAT(get(), HasSubstr("[x]")) << "after the lack of piece " << missing;
            if (HasFailure()) {
                return missing;
            }
        }
    }

    Certificate files;
    HttpServer server{{}, accepting(echo)};
    const unsigned short plain = server.listen({"127.0.0.1", 0});
    const unsigned short tls = server.listenTls({"127.0.0.1", 0}, files.certificate, files.key);
    std::thread thread{[this] {
        isServersThread = true;
        server.run();
    }};
};

TEST_F(AcceptFault, OfMemoryCostsOneConnection) {
    EXPECT_GT(countWhatMayBeMissing([&] { return got(plain); }), 10);
}

TEST_F(AcceptFault, OfMemoryForTlsCostsOneConnection) {
    EXPECT_GT(countWhatMayBeMissing([&] { return gotByTls(tls); }), 100);
}

TEST_F(AcceptFault, OfDescriptorsIsWaitedFor) {
    for (const int error : {EMFILE, ENFILE, ENOMEM, ENOBUFS, ECONNABORTED, EPROTO, ENETDOWN}) {
        acceptError = error;
        acceptErrors = 3;
        EXPECT_THAT(got(plain), HasSubstr("[x]")) << error;
        EXPECT_EQ(acceptErrors, 0);
    }
}

} // namespace
} // namespace smisd::test
