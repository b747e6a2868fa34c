#include "server/http/Crowd.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "server/auth/AddressGroup.h"
#include "server/http/Session.h"

namespace smisd {
namespace {

const auto byCount = [](const auto& left, const auto& right) { return left.second < right.second; };

} // namespace

Origin::Origin(const std::string& numericAddress)
    : address(numericAddress), group(addressGroup(numericAddress)),
      neighbourhood(smisd::neighbourhood(numericAddress)) {}

void Crowd::add(Session& session) {
    Neighbourhood& neighbourhood = _neighbourhoods[session.origin().neighbourhood];
    std::size_t& count = neighbourhood.groups[session.origin().group];
    _sessions.insert(&session);
    ++neighbourhood.count;
    ++count;
}

void Crowd::remove(const Session& session) {
    if (_sessions.erase(const_cast<Session*>(&session)) == 0) {
        return;
    }
    const auto neighbourhood = _neighbourhoods.find(session.origin().neighbourhood);
    const auto group = neighbourhood->second.groups.find(session.origin().group);
    if (--group->second == 0) {
        neighbourhood->second.groups.erase(group);
    }
    if (--neighbourhood->second.count == 0) {
        _neighbourhoods.erase(neighbourhood);
    }
}

Session* Crowd::largestFor(const Origin& newcomer) const {
    const auto largest = std::max_element(
        _neighbourhoods.begin(), _neighbourhoods.end(),
        [](const auto& left, const auto& right) { return left.second.count < right.second.count; });
    if (largest == _neighbourhoods.end()) {
        return nullptr;
    }
    const auto own = _neighbourhoods.find(newcomer.neighbourhood);
    const std::size_t neighbours = own == _neighbourhoods.end() ? 0 : own->second.count;
    const bool fromThere = largest->second.count > neighbours + 1;
    if (!fromThere && own == _neighbourhoods.end()) {
        return nullptr;
    }
    const auto& groups = (fromThere ? largest : own)->second.groups;
    const auto group = std::max_element(groups.begin(), groups.end(), byCount);
    return fromThere || group->second > countFrom(newcomer) + 1 ? oldestOf(group->first) : nullptr;
}

Session* Crowd::oldestOf(const std::string& group) const {
    Session* oldest = nullptr;
    const auto order = [](const Session& session) {
        return std::tuple(!session.awaitsClient(), session.since());
    };
    for (Session* const session : _sessions) {
        if (session->origin().group == group &&
            (oldest == nullptr || order(*session) < order(*oldest))) {
            oldest = session;
        }
    }
    return oldest;
}

std::size_t Crowd::countFrom(const Origin& origin) const {
    const auto found = _neighbourhoods.find(origin.neighbourhood);
    if (found == _neighbourhoods.end()) {
        return 0;
    }
    const auto group = found->second.groups.find(origin.group);
    return group == found->second.groups.end() ? 0 : group->second;
}

Session* Crowd::waitingSince(std::chrono::steady_clock::time_point then) const {
    using Order = std::tuple<Session::State, std::size_t, Session::Clock::time_point>;
    std::pair<Session*, Order> first{};
    for (Session* const session : _sessions) {
        if (session->awaitsClient() && session->since() < then) {
            const Order order{session->state(), _sessions.size() - countFrom(session->origin()),
                              session->since()};
            if (first.first == nullptr || order < first.second) {
                first = {session, order};
            }
        }
    }
    return first.first;
}

} // namespace smisd
