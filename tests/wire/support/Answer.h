// What a client reads in an answer.
#pragma once

#include <string>
#include <vector>

#include <pugixml.hpp>

#include "tests/wire/support/Xml.h"

namespace wire {

class Answer {
public:
    // Takes an HTTP response. Throws when its body is no CIM-XML, unless its status says why.
    explicit Answer(const std::string& response);

    // "7 CIM_ERR_NOT_SUPPORTED: SharedSecret::createInstance", "400 Bad Request", or "" for none.
    // An error that stands in the trailer of a response in chunks counts too.
    std::string error() const { return _error; }

    // Of a method: "uint32 0", or "" for none; and an output parameter that is a reference, or a
    // value.
    std::string returnValue() const;
    Xml outReference(const std::string& name) const;
    std::string outValue(const std::string& name) const;

    // The results in order, without regard to their kind.
    std::size_t size() const { return results().size(); }
    // Their paths, to be sent back.
    std::vector<Xml> names() const;
    // Their paths, to be read: //array1.example.com/root/snia:CIM_X.DeviceID="Ovrin:0E000001".
    // Without host or namespace where the answer has none.
    std::vector<std::string> paths() const;
    // The properties of a result: "DeviceNumber: uint32 5", "DeviceID [Key]: string
    // Ovrin:0E000001".
    std::vector<std::string> properties(std::size_t result = 0) const;
    // The value of a property of each result, "" where it has none.
    std::vector<std::string> each(const std::string& property) const;

private:
    std::vector<pugi::xml_node> results() const;

    pugi::xml_document _document;
    pugi::xml_node _response; // METHODRESPONSE or IMETHODRESPONSE
    std::string _error;
};

} // namespace wire
