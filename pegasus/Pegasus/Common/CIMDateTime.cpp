#include <chrono>
#include <ctime>

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMDateTimeRep.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

static const CIMDateTimeRep& contentOf(const Shared<CIMDateTimeRep>& rep) {
    static const CIMDateTimeRep zero;
    return rep ? *rep : zero;
}

CIMDateTimeRep withMicros(const CIMDateTimeRep& x, Uint64 micros) {
    const Uint64 intervalEnd = 8'640'000'000'000'000'000; // 100 million days
    const Sint64 timestampEnd = 315'569'520'000'000'000;  // the year 10000
    if (x.interval && micros >= intervalEnd) {
        throw DateTimeOutOfRangeException(
            "Cannot create a CIMDateTime interval greater than 100 million days");
    }
    CIMDateTimeRep result(x);
    result.micros = static_cast<Sint64>(micros);
    if (!x.interval && result.localMicros() >= timestampEnd) {
        throw DateTimeOutOfRangeException(
            "Cannot create a CIMDateTime time stamp beyond the year 10,000");
    }
    if (!x.interval && (result.micros < 0 || result.localMicros() < 0)) {
        throw DateTimeOutOfRangeException(
            "Cannot create a CIMDateTime time stamp before the year 0");
    }
    return result;
}

// Refuses what only an interval can take part in.
static const CIMDateTimeRep& intervalOf(const Shared<CIMDateTimeRep>& rep) {
    const CIMDateTimeRep& content = contentOf(rep);
    if (!content.interval) {
        throw TypeMismatchException();
    }
    return content;
}

static void checkDivisor(Uint64 divisor) {
    if (divisor == 0) {
        throw Exception("Can not divide CIMDateTime by zero");
    }
}

// Negative, zero or positive when x is before, at or after y.
static int order(const Shared<CIMDateTimeRep>& x, const Shared<CIMDateTimeRep>& y) {
    const CIMDateTimeRep &a = contentOf(x), &b = contentOf(y);
    if (a.interval != b.interval) {
        throw TypeMismatchException("Trying to compare CIMDateTime objects of differing types");
    }
    return (a.micros > b.micros) - (a.micros < b.micros);
}

CIMDateTime::CIMDateTime() = default;

CIMDateTime::CIMDateTime(const String& str) {
    set(str);
}

CIMDateTime::CIMDateTime(Uint64 microSec, Boolean interval) {
    CIMDateTimeRep kind;
    kind.interval = interval;
    _assign(withMicros(kind, microSec));
}

CIMDateTime& CIMDateTime::_assign(const CIMDateTimeRep& rep) {
    _rep = Shared<CIMDateTimeRep>(new CIMDateTimeRep(rep));
    return *this;
}

String CIMDateTime::toString() const {
    return textOf(contentOf(_rep));
}

void CIMDateTime::set(const String& str) {
    _assign(parseDateTime(str));
}

void CIMDateTime::clear() {
    *this = CIMDateTime();
}

CIMDateTime CIMDateTime::getCurrentDateTime() {
    using Micros = std::chrono::sys_time<std::chrono::microseconds>;
    const Micros yearZero = std::chrono::sys_days(std::chrono::year(0) / 1 / 1);
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm local = {};
    localtime_r(&seconds, &local);
    CIMDateTimeRep kind;
    kind.interval = false;
    kind.utcOffset = static_cast<Sint32>(local.tm_gmtoff / 60);
    const auto micros = std::chrono::floor<std::chrono::microseconds>(now) - yearZero;
    return CIMDateTime()._assign(withMicros(kind, static_cast<Uint64>(micros.count())));
}

Sint64 CIMDateTime::getDifference(CIMDateTime start, CIMDateTime finish) {
    if (start.isInterval() != finish.isInterval()) {
        throw InvalidDateTimeFormatException();
    }
    return contentOf(finish._rep).micros - contentOf(start._rep).micros;
}

Boolean CIMDateTime::isInterval() const {
    return contentOf(_rep).interval;
}

Uint64 CIMDateTime::toMicroSeconds() const {
    return static_cast<Uint64>(contentOf(_rep).micros);
}

Boolean CIMDateTime::equal(const CIMDateTime& x) const {
    return order(_rep, x._rep) == 0;
}

CIMDateTime CIMDateTime::operator+(const CIMDateTime& x) const {
    return CIMDateTime(*this) += x;
}

CIMDateTime& CIMDateTime::operator+=(const CIMDateTime& x) {
    intervalOf(x._rep);
    return _assign(withMicros(contentOf(_rep), toMicroSeconds() + x.toMicroSeconds()));
}

CIMDateTime CIMDateTime::operator-(const CIMDateTime& x) const {
    return CIMDateTime(*this) -= x;
}

CIMDateTime& CIMDateTime::operator-=(const CIMDateTime& x) {
    if (isInterval() && !x.isInterval()) {
        throw TypeMismatchException();
    }
    if (toMicroSeconds() < x.toMicroSeconds()) {
        throw DateTimeOutOfRangeException(
            "Result of subtracting two CIMDateTimes would be negative.");
    }
    // Two timestamps are an interval apart.
    const CIMDateTimeRep kind = x.isInterval() ? contentOf(_rep) : CIMDateTimeRep();
    return _assign(withMicros(kind, toMicroSeconds() - x.toMicroSeconds()));
}

CIMDateTime CIMDateTime::operator*(Uint64 num) const {
    return CIMDateTime(*this) *= num;
}

CIMDateTime& CIMDateTime::operator*=(Uint64 num) {
    const CIMDateTimeRep& interval = intervalOf(_rep);
    const Uint64 most = Uint64(-1);
    const bool overflows = num != 0 && toMicroSeconds() > most / num;
    return _assign(withMicros(interval, overflows ? most : toMicroSeconds() * num));
}

CIMDateTime CIMDateTime::operator/(Uint64 num) const {
    return CIMDateTime(*this) /= num;
}

CIMDateTime& CIMDateTime::operator/=(Uint64 num) {
    const CIMDateTimeRep& interval = intervalOf(_rep);
    checkDivisor(num);
    return _assign(withMicros(interval, toMicroSeconds() / num));
}

Uint64 CIMDateTime::operator/(const CIMDateTime& x) const {
    intervalOf(_rep);
    intervalOf(x._rep);
    checkDivisor(x.toMicroSeconds());
    return toMicroSeconds() / x.toMicroSeconds();
}

Boolean CIMDateTime::operator<(const CIMDateTime& x) const {
    return order(_rep, x._rep) < 0;
}

Boolean CIMDateTime::operator<=(const CIMDateTime& x) const {
    return order(_rep, x._rep) <= 0;
}

Boolean CIMDateTime::operator>(const CIMDateTime& x) const {
    return order(_rep, x._rep) > 0;
}

Boolean CIMDateTime::operator>=(const CIMDateTime& x) const {
    return order(_rep, x._rep) >= 0;
}

Boolean CIMDateTime::operator!=(const CIMDateTime& x) const {
    return order(_rep, x._rep) != 0;
}

Boolean operator==(const CIMDateTime& x, const CIMDateTime& y) {
    return x.equal(y);
}

} // namespace Pegasus
