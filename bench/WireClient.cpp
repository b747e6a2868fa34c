#include "bench/WireClient.h"

#include <cstdlib>
#include <sys/socket.h>
#include <unistd.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>

#include "bench/GiveUp.h"

namespace bench {

namespace {

std::string message(const std::string& call) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
           "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" PROTOCOLVERSION=\"1.0\">"
           "<SIMPLEREQ>" +
           call + "</SIMPLEREQ></MESSAGE></CIM>\n";
}

const std::string namespacePath = "<LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/>"
                                  "<NAMESPACE NAME=\"snia\"/></LOCALNAMESPACEPATH>";

} // namespace

WireClient::WireClient(const std::string& address)
    : _socket(socket(AF_INET, SOCK_STREAM, 0)), _buffer(1 << 18, '\0') {
    const std::size_t colon = address.find(':');
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_port = htons(static_cast<std::uint16_t>(std::stoul(address.substr(colon + 1))));
    if (inet_pton(AF_INET, address.substr(0, colon).c_str(), &server.sin_addr) != 1) {
        giveUp("no IPv4 address: " + address);
    }
    const int on = 1;
    setsockopt(_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (connect(_socket, reinterpret_cast<const sockaddr*>(&server), sizeof server) != 0) {
        giveUp("cannot connect to " + address);
    }
}

WireClient::~WireClient() {
    close(_socket);
}

const std::string& WireClient::call(const std::string& method, const std::string& object,
                                    const std::string& body) {
    _dropping = false;
    answer(method, object, body);
    if (_body.find("<ERROR") != std::string::npos) {
        giveUp("error: " + _body);
    }
    return _body;
}

std::size_t WireClient::callAndDrop(const std::string& method, const std::string& object,
                                    const std::string& body) {
    _dropping = true;
    answer(method, object, body);
    return _bodySize;
}

void WireClient::answer(const std::string& method, const std::string& object,
                        const std::string& body) {
    const std::string request =
        "POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/xml\r\n"
        "CIMOperation: MethodCall\r\nCIMMethod: " +
        method + "\r\nCIMObject: " + object + "\r\nContent-Length: " + std::to_string(body.size()) +
        "\r\n\r\n" + body;
    if (send(_socket, request.data(), request.size(), 0) != static_cast<ssize_t>(request.size())) {
        giveUp("the server closed the connection");
    }

    const std::string head = line("\r\n\r\n");
    if (head.compare(0, 12, "HTTP/1.1 200") != 0) {
        giveUp("answer: " + head.substr(0, head.find('\r')));
    }
    _body.clear();
    _bodySize = 0;
    const std::size_t length = head.find("ontent-length: ");
    if (length != std::string::npos) {
        readBody(std::strtoul(head.c_str() + length + 15, nullptr, 10));
    } else {
        readChunks();
    }
}

void WireClient::receive(const std::string& request, std::size_t size) {
    sendAll(request);
    for (std::size_t received = 0; received < size;) {
        const ssize_t count = recv(_socket, _buffer.data(), _buffer.size(), 0);
        if (count <= 0) {
            giveUp("the server closed the connection");
        }
        received += static_cast<std::size_t>(count);
    }
}

void WireClient::sendAll(const std::string& request) {
    if (send(_socket, request.data(), request.size(), 0) != static_cast<ssize_t>(request.size())) {
        giveUp("the server closed the connection");
    }
}

void WireClient::fill() {
    const ssize_t count = recv(_socket, _buffer.data(), _buffer.size(), 0);
    if (count <= 0) {
        giveUp("the server closed the connection");
    }
    _received = {_buffer.data(), static_cast<std::size_t>(count)};
}

std::string WireClient::line(std::string_view end) {
    std::string text;
    while (!text.ends_with(end)) {
        if (_received.empty()) {
            fill();
        }
        text += _received.front();
        _received.remove_prefix(1);
    }
    return text;
}

void WireClient::readBody(std::size_t size) {
    _bodySize += size;
    while (size > 0) {
        if (_received.empty()) {
            fill();
        }
        const std::string_view part = _received.substr(0, size);
        if (!_dropping) {
            _body += part;
        }
        _received.remove_prefix(part.size());
        size -= part.size();
    }
}

void WireClient::readChunks() {
    while (const std::size_t size = std::strtoul(line("\r\n").c_str(), nullptr, 16)) {
        readBody(size);
        line("\r\n");
    }
    while (line("\r\n") != "\r\n") {
    }
}

std::string intrinsicCall(const std::string& method, const std::string& parameters) {
    return message("<IMETHODCALL NAME=\"" + method + "\">" + namespacePath + parameters +
                   "</IMETHODCALL>");
}

std::string extrinsicCall(const std::string& method, const std::string& className,
                          const std::string& parameters) {
    return message("<METHODCALL NAME=\"" + method + "\"><LOCALCLASSPATH>" + namespacePath +
                   "<CLASSNAME NAME=\"" + className + "\"/></LOCALCLASSPATH>" + parameters +
                   "</METHODCALL>");
}

} // namespace bench
