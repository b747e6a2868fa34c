// A CIM-XML client.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/wire/support/Answer.h"
#include "tests/wire/support/Smisd.h"
#include "tests/wire/support/Xml.h"

namespace wire {

// A parameter of a method; the type is that of an extrinsic one and may be left out.
struct Parameter {
    std::string name;
    Xml value;
    std::string type = {};
};
using Parameters = std::vector<Parameter>;

// The arguments of a walk. What is empty is not sent; References and ReferenceNames have only
// resultClass and role.
struct Walk {
    std::string assocClass = {};
    std::string resultClass = {};
    std::string role = {};
    std::string resultRole = {};
    std::optional<std::vector<std::string>> properties = {};
    bool qualifiers = false;
};

// Asks in the namespace root/snia. Each call is a connection of its own; several threads may share
// a client.
class Client {
public:
    // `credentials` are "user:password", or nothing.
    explicit Client(const Smisd& smisd, const std::string& credentials = "");

    // Any method. An intrinsic one may be answered in chunks, if that is asked for.
    Answer call(const std::string& method, const Parameters& parameters,
                bool chunked = false) const;
    Answer invoke(const std::string& className, const std::string& method,
                  const Parameters& parameters) const;

    Answer enumerate(const std::string& className, bool chunked = false) const;
    Answer enumerateNames(const std::string& className, bool chunked = false) const;
    Answer get(const Xml& instanceName) const;
    // `properties` as property() writes them.
    Answer modify(const Xml& instanceName, const std::string& className,
                  const Xml& properties) const;

    Answer associators(const Xml& source, const Walk& walk) const;
    Answer associatorNames(const Xml& source, const Walk& walk) const;
    Answer references(const Xml& source, const Walk& walk) const;
    Answer referenceNames(const Xml& source, const Walk& walk) const;

private:
    std::string post(const std::string& method, const std::string& object, const Xml& call,
                     bool chunked) const;

    unsigned short _port;
    std::string _login; // a header, or nothing
};

} // namespace wire
