#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/SharedRep.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

class CIMDateTimeRep;

// A timestamp "yyyymmddhhmmss.mmmmmmsutc" or an interval "ddddddddhhmmss.mmmmmm:000" (DSP0004,
// "datetime type"). Text of another form throws InvalidDateTimeFormatException, a field out of
// its range DateTimeOutOfRangeException. Timestamps are compared in UTC; an interval compared
// with a timestamp throws TypeMismatchException.
//
// Threads: as String.
class PEGASUS_COMMON_LINKAGE CIMDateTime {
public:
    CIMDateTime(); // the interval of no length
    CIMDateTime(const String& str);
    // Microseconds of the interval, or since the first instant of the year 0 (UTC).
    CIMDateTime(Uint64 microSec, Boolean interval);

    String toString() const;
    void set(const String& str);
    void clear();

    static CIMDateTime getCurrentDateTime();
    // Microseconds from start to finish. Both are timestamps or both intervals.
    static Sint64 getDifference(CIMDateTime start, CIMDateTime finish);

    Boolean isInterval() const;
    Boolean equal(const CIMDateTime& x) const;
    Uint64 toMicroSeconds() const;

    CIMDateTime operator+(const CIMDateTime& x) const;
    CIMDateTime& operator+=(const CIMDateTime& x);
    CIMDateTime operator-(const CIMDateTime& x) const;
    CIMDateTime& operator-=(const CIMDateTime& x);
    CIMDateTime operator*(Uint64 num) const;
    CIMDateTime& operator*=(Uint64 num);
    CIMDateTime operator/(Uint64 num) const;
    CIMDateTime& operator/=(Uint64 num);
    Uint64 operator/(const CIMDateTime& x) const;

    Boolean operator<(const CIMDateTime& x) const;
    Boolean operator<=(const CIMDateTime& x) const;
    Boolean operator>(const CIMDateTime& x) const;
    Boolean operator>=(const CIMDateTime& x) const;
    Boolean operator!=(const CIMDateTime& x) const;

private:
    CIMDateTime& _assign(const CIMDateTimeRep& rep);

    Shared<CIMDateTimeRep> _rep; // none: the interval of no length
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMDateTime& x, const CIMDateTime& y);

} // namespace Pegasus
