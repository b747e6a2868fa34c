#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

#include "array/Array.h"
#include "cli/EscapedOutput.h"
#include "cli/NewState.h"

namespace cli {

// What a command works with: where it reads and writes, and the options that all commands share.
struct Context {
    Context(std::istream& input, std::ostream& output, std::ostream& errors)
        : in(input), out(output), err(errors), terminal(errors) {}

    std::istream& in;
    EscapedOutput out;
    EscapedOutput err;
    std::ostream& terminal; // where err goes, for what is drawn there; nothing is escaped
    bool inIsTerminal = false;
    bool errIsTerminal = false;

    std::string state; // state directory; empty: the usual one
    bool json = false; // for programs, not for people

    // What the command line asked for.
    std::function<void()> command;

    // The array in the state directory, opened at the first call. Throws as array::Array::open.
    array::Array& array() {
        if (!_array) {
            clearLeftovers(array::stateDirectory(state), err);
            _array = array::Array::open(array::stateDirectory(state));
        }
        return *_array;
    }

private:
    std::unique_ptr<array::Array> _array;
};

} // namespace cli
