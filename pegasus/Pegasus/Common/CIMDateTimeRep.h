#pragma once

#include <Pegasus/Common/CIMDateTime.h>

namespace Pegasus {

// The body of a datetime; immutable once it is shared. Internal.
class CIMDateTimeRep final : public SharedRep {
public:
    bool interval = true;
    Sint64 micros = 0;    // of the interval; or since the first instant of the year 0, in UTC
    Sint32 utcOffset = 0; // minutes that local time is ahead
    Uint32 wildcards = 0; // so many of the last digits are '*'; they count as their least value

    Sint64 localMicros() const { return micros + utcOffset * Sint64(60'000'000); }
};

// A copy of `x` at another time. DateTimeOutOfRangeException beyond what the text can hold.
CIMDateTimeRep withMicros(const CIMDateTimeRep& x, Uint64 micros);

// InvalidDateTimeFormatException, or DateTimeOutOfRangeException for a field out of its range.
CIMDateTimeRep parseDateTime(const String& text);
String textOf(const CIMDateTimeRep& dateTime);

} // namespace Pegasus
