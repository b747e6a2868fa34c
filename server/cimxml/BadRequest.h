// A request that is refused before there is an operation in it.
#pragma once

#include <stdexcept>
#include <string>

namespace smisd {

// Answered with an HTTP status, the header CIMError unless it is empty (DSP0200, "Errors and Status
// Codes in CIM-XML Message Exchange") and what() as the detail for people.
class BadRequest : public std::runtime_error {
public:
    BadRequest(unsigned status, std::string cimError, const std::string& detail)
        : std::runtime_error(detail), _status(status), _cimError(std::move(cimError)) {}

    unsigned status() const { return _status; }
    const std::string& cimError() const { return _cimError; }

private:
    unsigned _status;
    std::string _cimError;
};

} // namespace smisd
