#pragma once

#include <Pegasus/Common/String.h>

namespace Pegasus {

// The flavors of a qualifier, as a set.
class PEGASUS_COMMON_LINKAGE CIMFlavor {
public:
    static const CIMFlavor NONE;
    static const CIMFlavor OVERRIDABLE;
    static const CIMFlavor ENABLEOVERRIDE; // OVERRIDABLE under another name
    static const CIMFlavor DISABLEOVERRIDE;
    static const CIMFlavor TOSUBCLASS;
    static const CIMFlavor RESTRICTED;
    static const CIMFlavor TOINSTANCE;
    static const CIMFlavor TRANSLATABLE;
    static const CIMFlavor DEFAULTS; // OVERRIDABLE + TOSUBCLASS
    static const CIMFlavor TOSUBELEMENTS;

    constexpr CIMFlavor() = default; // NONE

    void addFlavor(const CIMFlavor& flavor) { _bits |= flavor._bits; }
    void removeFlavor(const CIMFlavor& flavor) { _bits &= ~flavor._bits; }
    Boolean hasFlavor(const CIMFlavor& flavor) const {
        return (_bits & flavor._bits) == flavor._bits;
    }
    Boolean equal(const CIMFlavor& flavor) const { return _bits == flavor._bits; }
    CIMFlavor operator+(const CIMFlavor& flavor) const { return CIMFlavor(_bits | flavor._bits); }

    // The words of the set, separated by blanks.
    String toString() const;

private:
    constexpr explicit CIMFlavor(Uint32 bits) : _bits(bits) {}

    Uint32 _bits = 0;
};

} // namespace Pegasus
