#include "bench/WireClient.h"

#include <cstdio>
#include <cstdlib>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace bench {

namespace {

[[noreturn]] void give_up(const std::string& why) {
    std::fprintf(stderr, "bench_wire: %s\n", why.c_str());
    std::exit(1);
}

std::string message(const std::string& call) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
           "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" PROTOCOLVERSION=\"1.0\">"
           "<SIMPLEREQ>" +
           call + "</SIMPLEREQ></MESSAGE></CIM>\n";
}

const std::string namespacePath = "<LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/>"
                                  "<NAMESPACE NAME=\"snia\"/></LOCALNAMESPACEPATH>";

} // namespace

WireClient::WireClient(const std::string& address) : _socket(socket(AF_INET, SOCK_STREAM, 0)) {
    const std::size_t colon = address.find(':');
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_port = htons(static_cast<std::uint16_t>(std::stoul(address.substr(colon + 1))));
    if (inet_pton(AF_INET, address.substr(0, colon).c_str(), &server.sin_addr) != 1)
        give_up("no IPv4 address: " + address);
    const int on = 1;
    setsockopt(_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (connect(_socket, reinterpret_cast<const sockaddr*>(&server), sizeof server) != 0)
        give_up("cannot connect to " + address);
}

WireClient::~WireClient() {
    close(_socket);
}

const std::string& WireClient::call(const std::string& method, const std::string& object,
                                    const std::string& body) {
    const std::string request =
        "POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/xml\r\n"
        "CIMOperation: MethodCall\r\nCIMMethod: " +
        method + "\r\nCIMObject: " + object + "\r\nContent-Length: " + std::to_string(body.size()) +
        "\r\n\r\n" + body;
    if (send(_socket, request.data(), request.size(), 0) != static_cast<ssize_t>(request.size()))
        give_up("the server closed the connection");

    _received.clear();
    std::size_t end;
    while ((end = _received.find("\r\n\r\n")) == std::string::npos)
        readUntil(_received.size() + 1);
    if (_received.compare(0, 12, "HTTP/1.1 200") != 0)
        give_up("answer: " + _received.substr(0, _received.find('\r')));
    const std::size_t length = _received.find("ontent-length: ");
    if (length == std::string::npos || length > end)
        give_up("an answer without content-length");
    const std::size_t size = std::strtoul(_received.c_str() + length + 15, nullptr, 10);
    readUntil(end + 4 + size);
    _body.assign(_received, end + 4, size);
    if (_body.find("<ERROR") != std::string::npos)
        give_up("error: " + _body);
    return _body;
}

void WireClient::readUntil(std::size_t size) {
    char buffer[1 << 16];
    while (_received.size() < size) {
        const ssize_t count = recv(_socket, buffer, sizeof buffer, 0);
        if (count <= 0)
            give_up("the server closed the connection");
        _received.append(buffer, static_cast<std::size_t>(count));
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
