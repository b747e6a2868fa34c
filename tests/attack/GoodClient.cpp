#include "tests/attack/GoodClient.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <sys/socket.h>
#include <sys/time.h>
#include <thread>
#include <unistd.h>

#include <netinet/in.h>
#include <netinet/tcp.h>

namespace attack {
namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* base64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

const std::string body =
    "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
    "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" PROTOCOLVERSION=\"1.0\">"
    "<SIMPLEREQ><IMETHODCALL NAME=\"GetInstance\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/>"
    "<NAMESPACE NAME=\"snia\"/></LOCALNAMESPACEPATH><IPARAMVALUE NAME=\"InstanceName\">"
    "<INSTANCENAME CLASSNAME=\"CIM_StorageHardwareID\"><KEYBINDING NAME=\"InstanceID\">"
    "<KEYVALUE VALUETYPE=\"string\">Ovrin:0D000001</KEYVALUE></KEYBINDING></INSTANCENAME>"
    "</IPARAMVALUE></IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>\n";

unsigned long numberAfter(const std::string& text, const std::string& name) {
    const std::size_t at = text.find(name);
    return at == std::string::npos ? 0 : std::strtoul(text.c_str() + at + name.size(), nullptr, 10);
}

} // namespace

sockaddr_in endpoint(std::uint32_t address, unsigned short port) {
    sockaddr_in endpoint{};
    endpoint.sin_family = AF_INET;
    endpoint.sin_addr.s_addr = htonl(address);
    endpoint.sin_port = htons(port);
    return endpoint;
}

std::string basic(const std::string& text) {
    std::string encoded;
    for (std::size_t i = 0; i < text.size(); i += 3) {
        std::uint32_t bits = 0;
        for (std::size_t j = i; j < i + 3; ++j) {
            bits = bits << 8U | (j < text.size() ? static_cast<unsigned char>(text[j]) : 0U);
        }
        for (std::size_t j = 0; j < 4; ++j) {
            encoded += i + j > text.size() ? '=' : base64Digits[bits >> (18 - 6 * j) & 63U];
        }
    }
    return "Basic " + encoded;
}

std::string getInstance(const std::string& credentials) {
    return "POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/xml\r\n"
           "CIMOperation: MethodCall\r\nCIMMethod: GetInstance\r\nCIMObject: root/snia\r\n" +
           (credentials.empty() ? "" : "Authorization: " + credentials + "\r\n") +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

Line::Line(std::uint32_t source, unsigned short port)
    : _descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const timeval patience{10, 0};
    setsockopt(_descriptor, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    setsockopt(_descriptor, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    const int on = 1;
    setsockopt(_descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    const sockaddr_in from = endpoint(source, 0);
    const sockaddr_in to = endpoint(INADDR_LOOPBACK, port);
    _connected = bind(_descriptor, reinterpret_cast<const sockaddr*>(&from), sizeof from) == 0 &&
                 connect(_descriptor, reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0;
}

Line::~Line() {
    close(_descriptor);
}

Line::Response Line::request(const std::string& bytes) {
    if (!_connected || send(_descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL) !=
                           static_cast<ssize_t>(bytes.size())) {
        return {};
    }
    std::string received;
    std::array<char, 16384> buffer{};
    for (;;) {
        const std::size_t end = received.find("\r\n\r\n");
        if (end != std::string::npos &&
            received.size() >= end + 4 + numberAfter(received, "ontent-length: ")) {
            return {static_cast<int>(numberAfter(received, "HTTP/1.1 ")),
                    static_cast<unsigned>(numberAfter(received, "Retry-After: "))};
        }
        const ssize_t count = recv(_descriptor, buffer.data(), buffer.size(), 0);
        if (count <= 0) {
            return {};
        }
        received.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

Seen watch(std::uint32_t source, unsigned short port, const std::string& credentials,
           const std::atomic<bool>& stop) {
    Seen seen;
    const std::string request = getInstance(credentials);
    auto line = std::make_unique<Line>(source, port);
    while (!stop) {
        const Clock::time_point start = Clock::now();
        if (line->request(request).status != 200) {
            ++seen.refused;
            line = std::make_unique<Line>(source, port);
        }
        const Clock::time_point middle = Clock::now();
        {
            Line another(source, port);
            seen.refused += another.request(request).status == 200 ? 0U : 1U;
        }
        seen.kept.emplace_back(middle - start);
        seen.opened.emplace_back(Clock::now() - middle);
        std::this_thread::sleep_for(std::chrono::milliseconds(4));
    }
    return seen;
}

Seconds logIn(std::uint32_t source, unsigned short port, const std::string& credentials) {
    constexpr std::chrono::seconds patience{10};
    const Clock::time_point start = Clock::now();
    while (Clock::now() - start < patience) {
        Line line(source, port);
        const Line::Response response = line.request(getInstance(credentials));
        if (response.status == 200) {
            return Clock::now() - start;
        }
        std::this_thread::sleep_for(std::chrono::seconds(std::max(1U, response.retryAfter)));
    }
    return patience;
}

Seconds quantile(std::vector<Seconds> values, double part) {
    if (values.empty()) {
        return Seconds(0);
    }
    std::sort(values.begin(), values.end());
    const auto rank =
        static_cast<std::size_t>(std::ceil(part * static_cast<double>(values.size())));
    return values[std::max<std::size_t>(rank, 1) - 1];
}

} // namespace attack
