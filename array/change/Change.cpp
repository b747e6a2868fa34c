#include "array/Change.h"

#include "array/change/ChangeParts.h"
#include "array/rules/Names.h"

namespace array {

Change::Change(StateWriter& writer, Snapshot& next, Fabric& fabric, std::vector<Event>& events)
    : _writer(writer), _next(next), _fabric(fabric), _events(events) {}

const Snapshot& Change::state() const {
    return _next;
}

void Change::setNames(const Names& names) {
    checkNames(names);
    write([&] { _writer.setNames(names); });
    _next.mutableState().names = Shared<Names>::make(names);
}

void Change::grant(Id target, Id initiator) {
    need<Target>(target);
    need<Initiator>(initiator);
    if (_next.granted(target, initiator))
        return;
    write([&] { _writer.grant(target, initiator); });
    _next.mutableState().grant(target, initiator);
    _fabric.grantChanged(*this, target, initiator);
}

void Change::revoke(Id target, Id initiator) {
    need<Target>(target);
    need<Initiator>(initiator);
    if (!_next.granted(target, initiator))
        return;
    write([&] { _writer.revoke(target, initiator); });
    _next.mutableState().revoke(target, initiator);
    _fabric.grantChanged(*this, target, initiator);
}

void Change::setStatistics(Id target, const LoginStatistics& statistics) {
    need<Target>(target);
    putStatistics(target, statistics);
}

void Change::setStatistics(Id target, const SessionFailures& statistics) {
    need<Target>(target);
    putStatistics(target, statistics);
}

void Change::setStatistics(Id session, const SessionStatistics& statistics) {
    need<Session>(session);
    putStatistics(session, statistics);
}

void Change::setStatistics(Id endpoint, const InterfaceStatistics& statistics) {
    need<Endpoint>(endpoint);
    putStatistics(endpoint, statistics);
}

} // namespace array
