// DSP0004, "datetime type": yyyymmddhhmmss.mmmmmmsutc and ddddddddhhmmss.mmmmmm:000

#include <chrono>
#include <cstdio>

#include <Pegasus/Common/CIMDateTimeRep.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

namespace {

const Uint32 textSize = 25, pointAt = 14, signAt = 21, digitCount = 20; // digits before the sign

// The digits of a datetime without the point, each a field of its own or together with others.
class Digits {
public:
    explicit Digits(const String& text) {
        for (Uint32 i = 0; i < digitCount; ++i) {
            _digits[i] = text[i < pointAt ? i : i + 1];
            const bool wild = _digits[i] == '*';
            if ((!wild && (_digits[i] < '0' || _digits[i] > '9')) || (!wild && wildcards != 0)) {
                throw InvalidDateTimeFormatException();
            }
            wildcards += wild;
        }
    }

    // The next field of so many digits, at most `most`. Wildcards are read as `least`.
    unsigned field(Uint32 size, unsigned least, unsigned most, const char* name) {
        if (digitCount - wildcards > _next && digitCount - wildcards < _next + size) {
            throw InvalidDateTimeFormatException(); // the wildcards begin within it
        }
        if (_digits[_next] == '*') {
            _next += size;
            return least;
        }
        unsigned number = 0;
        for (Uint32 end = _next + size; _next != end; ++_next) {
            number = number * 10 + (_digits[_next] - '0');
        }
        if (number < least || number > most) {
            throw DateTimeOutOfRangeException(String("illegal ") + name + " number");
        }
        return number;
    }

    // Microseconds may end in wildcards.
    Sint64 fraction() const {
        Sint64 number = 0;
        for (Uint32 i = pointAt; i < digitCount; ++i) {
            number = number * 10 + (_digits[i] == '*' ? 0 : _digits[i] - '0');
        }
        return number;
    }

    Uint32 wildcards = 0;

private:
    Uint16 _digits[digitCount];
    Uint32 _next = 0;
};

using Date = std::chrono::year_month_day;

std::chrono::sys_days yearZero() {
    return Date(std::chrono::year(0), std::chrono::month(1), std::chrono::day(1));
}

Sint64 daysOfInterval(Digits& digits) {
    return digits.field(8, 0, 99999999, "days");
}

Sint64 daysOfTimestamp(Digits& digits) {
    const std::chrono::year year(static_cast<int>(digits.field(4, 0, 9999, "year")));
    const std::chrono::month month(digits.field(2, 1, 12, "month"));
    const Date last(year / month / std::chrono::last);
    const std::chrono::day day(digits.field(2, 1, static_cast<unsigned>(last.day()), "day"));
    return (std::chrono::sys_days(Date(year, month, day)) - yearZero()).count();
}

// Minutes, from "+060" or "-060".
Sint32 parseOffset(const String& text) {
    Sint32 minutes = 0;
    for (Uint32 i = signAt + 1; i < textSize; ++i) {
        const int digit = text[i] - '0';
        if (digit < 0 || digit > 9) {
            throw InvalidDateTimeFormatException();
        }
        minutes = minutes * 10 + digit;
    }
    return text[signAt] == '-' ? -minutes : minutes;
}

} // namespace

CIMDateTimeRep parseDateTime(const String& text) {
    if (text.size() != textSize || text[pointAt] != '.') {
        throw InvalidDateTimeFormatException();
    }
    CIMDateTimeRep made;
    made.interval = text[signAt] == ':';
    if (!made.interval && text[signAt] != '+' && text[signAt] != '-') {
        throw InvalidDateTimeFormatException();
    }
    made.utcOffset = parseOffset(text);
    if (made.interval && made.utcOffset != 0) {
        throw InvalidDateTimeFormatException();
    }

    Digits digits(text);
    Sint64 micros = made.interval ? daysOfInterval(digits) : daysOfTimestamp(digits);
    micros = micros * 24 + digits.field(2, 0, 23, "hours");
    micros = micros * 60 + digits.field(2, 0, 59, "minutes");
    micros = micros * 60 + digits.field(2, 0, 59, "seconds");
    micros = micros * 1'000'000 + digits.fraction();
    made.wildcards = digits.wildcards;
    return withMicros(made, static_cast<Uint64>(micros - made.localMicros()));
}

String textOf(const CIMDateTimeRep& dateTime) {
    const std::chrono::microseconds local(dateTime.localMicros());
    const auto days = std::chrono::floor<std::chrono::days>(local);
    const std::chrono::hh_mm_ss time(local - days);
    const Date date(yearZero() + days);
    const long long number = dateTime.interval ? static_cast<long long>(days.count())
                                               : static_cast<int>(date.year()) * 10000LL +
                                                     static_cast<unsigned>(date.month()) * 100 +
                                                     static_cast<unsigned>(date.day());
    char text[64];
    std::snprintf(text, sizeof text, "%08lld%02d%02d%02d.%06d%c%03d", number,
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()),
                  static_cast<int>(time.subseconds().count()),
                  dateTime.interval        ? ':'
                  : dateTime.utcOffset < 0 ? '-'
                                           : '+',
                  dateTime.utcOffset < 0 ? -dateTime.utcOffset : dateTime.utcOffset);
    for (Uint32 i = digitCount - dateTime.wildcards; i < digitCount; ++i) {
        text[i < pointAt ? i : i + 1] = '*';
    }
    return String(text);
}

} // namespace Pegasus
