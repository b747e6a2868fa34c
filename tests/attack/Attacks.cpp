#include "tests/attack/Attacks.h"

#include "tests/attack/GoodClient.h"

namespace attack {
namespace {

constexpr unsigned budget = 256;    // MiB, of what requests hold (--memory)
constexpr unsigned hashMemory = 64; // MiB, of the one password that is looked at

std::function<void(const Target&, const std::atomic<bool>&)> by(const Behaviour& behaviour) {
    return [behaviour](const Target& target, const std::atomic<bool>& stop) {
        swarm(target.port, behaviour, stop);
    };
}

// Before a password

// Sends requests without credentials, one after the other, and reads no answer.
Behaviour pipelining(unsigned connections, unsigned addresses) {
    std::string many;
    for (int i = 0; i < 20; ++i) {
        many += getInstance("");
    }
    return {
        .connections = connections,
        .source = [addresses](unsigned number) { return loopback(0, 0, 2 + number % addresses); },
        .request = [many](unsigned, unsigned) { return many; },
        .reads = false};
}

// Guesses the good user's password, each time another one.
Behaviour guessing(unsigned connections, unsigned addresses) {
    return {.connections = connections,
            .source =
                [addresses](unsigned number) {
                    const unsigned address = number % addresses;
                    return loopback(1, address / 250, 2 + address % 250);
                },
            .request =
                [](unsigned number, unsigned turn) {
                    return getInstance(
                        basic("good:guess" + std::to_string(number) + "-" + std::to_string(turn)));
                }};
}

// With a password, as a reader

std::string head(const std::string& method, std::size_t length) {
    return "POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/xml\r\n"
           "CIMOperation: MethodCall\r\nCIMMethod: " +
           method + "\r\nCIMObject: root/snia\r\nAuthorization: " + basic(reader) +
           "\r\nContent-Length: " + std::to_string(length) + "\r\n\r\n";
}

const std::string bodyBegin =
    "<?xml version=\"1.0\"?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" "
    "PROTOCOLVERSION=\"1.0\"><SIMPLEREQ>";

// A whole request.
std::string call(const std::string& method, const std::string& parameters) {
    const std::string body = bodyBegin + "<IMETHODCALL NAME=\"" + method +
                             "\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/>"
                             "<NAMESPACE NAME=\"snia\"/></LOCALNAMESPACEPATH>" +
                             parameters + "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
    return head(method, body.size()) + body;
}

std::string hostClass() {
    return "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"CIM_StorageHardwareID\"/>"
           "</IPARAMVALUE>";
}

std::uint32_t readersAddress(unsigned number) {
    return loopback(2, 0, 2 + number % 64);
}

// Sends a body of 16 MiB, `element` again and again, up to its last byte or without that.
Behaviour largeBodies(unsigned connections, const std::string& element, bool whole) {
    constexpr std::size_t bodyBytes = 16 * 1024 * 1024;
    constexpr std::size_t slices = 64;
    std::string slice;
    while (slice.size() < bodyBytes / slices) {
        slice += element;
    }
    slice.resize(bodyBytes / slices);
    return {.connections = connections,
            .source = readersAddress,
            .request =
                [slice, whole](unsigned, unsigned turn) {
                    if (turn == 0) {
                        return head("GetInstance", bodyBytes) + bodyBegin +
                               slice.substr(bodyBegin.size());
                    }
                    return turn + 1 < slices || whole ? slice : slice.substr(1);
                },
            .reads = false,
            .reconnect = std::chrono::milliseconds(20),
            .turns = slices};
}

// Sends whole requests, again and again, and reads the answers or does not.
Behaviour repeating(unsigned connections, const std::string& request, bool reads) {
    return {.connections = connections,
            .source = readersAddress,
            .request = [request](unsigned, unsigned) { return request; },
            .reads = reads,
            .reconnect = std::chrono::milliseconds(20)};
}

std::string allClasses() {
    return call("EnumerateClasses", "<IPARAMVALUE NAME=\"DeepInheritance\"><VALUE>TRUE</VALUE>"
                                    "</IPARAMVALUE><IPARAMVALUE NAME=\"LocalOnly\"><VALUE>FALSE"
                                    "</VALUE></IPARAMVALUE>");
}

// A request of 1 MiB whose property list has empty names.
std::string tinyElements() {
    std::string values;
    for (int i = 0; i < 131'000; ++i) {
        values += "<VALUE/>";
    }
    return call("EnumerateInstances", hostClass() +
                                          "<IPARAMVALUE NAME=\"PropertyList\"><VALUE.ARRAY>" +
                                          values + "</VALUE.ARRAY></IPARAMVALUE>");
}

// A request of 2 MiB.
std::string longPropertyList() {
    std::string names;
    for (int i = 0; i < 100'000; ++i) {
        names += "<VALUE>N" + std::to_string(i) + "</VALUE>";
    }
    return call("EnumerateInstances", hostClass() +
                                          "<IPARAMVALUE NAME=\"PropertyList\"><VALUE.ARRAY>" +
                                          names + "</VALUE.ARRAY></IPARAMVALUE>");
}

} // namespace

std::string newUser(unsigned number) {
    return "new" + std::to_string(number) + ":never-logged-in";
}

std::vector<Attack> attacks() {
    std::vector<Attack> all = {
        {.name = "none",
         .run = [](const Target&, const std::atomic<bool>& stop) { stop.wait(false); },
         .logins = true,
         .memory = hashMemory + 16},
        {.name = "256 connections of an address that pipeline and do not read",
         .run = by(pipelining(256, 1))},
        {.name = "2,000 of them", .run = by(pipelining(2000, 1))},
        {.name = "2,000 of them, of 64 addresses", .run = by(pipelining(2000, 64))},
        {.name = "128 addresses that guess passwords",
         .run = by(guessing(128, 128)),
         .logins = true,
         .memory = hashMemory + 32},
        {.name = "4,096 addresses that guess passwords",
         .run = by(guessing(4096, 4096)),
         .logins = true,
         .memory = hashMemory + 32},
        {.name = "a guesser behind the client's own address",
         .run = by(guessing(4, 1)),
         .goodSource = loopback(1, 0, 2),
         .memory = hashMemory + 32},
        {.name = "200 unfinished bodies of 16 MiB",
         .run = by(largeBodies(200, "<A/>", false)),
         .memory = budget + 64,
         .left = 32},
        {.name = "24 bodies of 16 MiB of tiny elements",
         .run = by(largeBodies(24, "<A/>", true)),
         .memory = budget + 64,
         .left = 32},
        {.name = "24 bodies of 1 MiB of tiny elements",
         .run = by(repeating(24, tinyElements(), true)),
         .memory = budget + 64,
         .left = 32},
        {.name = "240 connections that ask for all classes and do not read",
         .run = by(repeating(240, allClasses(), false)),
         .memory = budget + 64},
        {.name = "4 requests at a time for 100,000 properties of each host",
         .run = by(repeating(4, longPropertyList(), true)),
         .memory = budget + 64,
         .left = 32},
        {.name = "100 connections that open enumerations and pull nothing",
         .run = by(repeating(100, call("OpenEnumerateInstances", hostClass()), true)),
         .memory = budget + 64},
    };
    return all;
}

} // namespace attack
