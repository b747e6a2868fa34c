#include "tests/array/support/History.h"

#include "array/model/ErrorCode.h"
#include "array/model/Ids.h"

namespace array {

using namespace Pegasus;

// What a step may need. Names and numbers are so few that they are often taken.
struct History::Draw {
    std::string name;
    std::string volumeName;
    std::string secret;
    std::uint32_t lun;
    Id target, initiator, volume, unit, session;
};

struct History::Kind {
    const char* name;
    Outcome (*inModel)(Model&, const Draw&);
    Id (*inArray)(Change&, const Draw&);
};

namespace {

// For changes that make nothing.
template<class Work>
Id done(Work work) {
    work();
    return 0;
}

Id setSecret(Change& change, Id id, const std::string& secret) {
    const Initiator* there = change.snapshot().initiator(id);
    change.modify(id, Initiator{there ? there->name : "iqn.2026-01.com.example:none", secret});
    return 0;
}

Session sessionOf(Id target, Id initiator) {
    Session session;
    session.target = target;
    session.initiator = initiator;
    return session;
}

} // namespace

std::uint32_t History::below(std::size_t limit) {
    return static_cast<std::uint32_t>(_random() % limit);
}

// An object that is there; now and then one that is not.
template<class Map>
Id History::oneOf(const Map& map, CLASSID_e objectClass) {
    const std::uint32_t at = below(map.size() + 1);
    return at == map.size() ? makeId(objectClass, 0xFFFFFF) : std::next(map.begin(), at)->first;
}

History::Draw History::draw(const Model& model) {
    Draw draw;
    draw.name = "iqn.2026-01.com.example:" + std::to_string(below(60));
    draw.volumeName = std::to_string(1000 + below(60));
    draw.secret = "secret number " + std::to_string(below(1000));
    draw.lun = below(40);
    draw.target = oneOf(model.targets, CLASSID_TARGET);
    draw.initiator = oneOf(model.initiators, CLASSID_INITIATOR);
    draw.volume = oneOf(model.volumes, CLASSID_VOLUME);
    draw.unit = oneOf(model.units, CLASSID_LOGICAL_UNIT);
    draw.session = oneOf(model.sessions, CLASSID_ISCSI_SESSION);
    return draw;
}

const History::Kind& History::drawKind() {
    using D = const Draw&;
    static const Kind kinds[] = {
        {"create target", [](Model& model, D d) { return model.createTarget(d.name); },
         [](Change& change, D d) {
             return change.create(Target{d.name, {}});
         }},
        {"create initiator",
         [](Model& model, D d) { return model.createInitiator(d.name, d.secret); },
         [](Change& change, D d) {
             return change.create(Initiator{d.name, d.secret});
         }},
        {"create volume", [](Model& model, D d) { return model.createVolume(d.volumeName); },
         [](Change& change, D d) {
             return change.create(Volume{d.volumeName, {}, 0, 0});
         }},
        {"create unit",
         [](Model& model, D d) { return model.createUnit(d.target, d.lun, d.volume); },
         [](Change& change, D d) {
             return change.create(LogicalUnit{d.target, d.lun, 0, d.volume, {}});
         }},
        {"create session",
         [](Model& model, D d) { return model.createSession(d.target, d.initiator); },
         [](Change& change, D d) { return change.create(sessionOf(d.target, d.initiator)); }},
        {"grant", [](Model& model, D d) { return model.grant(d.target, d.initiator); },
         [](Change& change, D d) { return done([&] { change.grant(d.target, d.initiator); }); }},
        {"revoke", [](Model& model, D d) { return model.revoke(d.target, d.initiator); },
         [](Change& change, D d) { return done([&] { change.revoke(d.target, d.initiator); }); }},
        {"set secret", [](Model& model, D d) { return model.setSecret(d.initiator, d.secret); },
         [](Change& change, D d) { return setSecret(change, d.initiator, d.secret); }},
        {"remove target", [](Model& model, D d) { return model.removeTarget(d.target); },
         [](Change& change, D d) { return done([&] { change.remove(d.target); }); }},
        {"remove initiator", [](Model& model, D d) { return model.removeInitiator(d.initiator); },
         [](Change& change, D d) { return done([&] { change.remove(d.initiator); }); }},
        {"remove volume", [](Model& model, D d) { return model.removeVolume(d.volume); },
         [](Change& change, D d) { return done([&] { change.remove(d.volume); }); }},
        {"remove unit", [](Model& model, D d) { return model.removeUnit(d.unit); },
         [](Change& change, D d) { return done([&] { change.remove(d.unit); }); }},
        {"remove session", [](Model& model, D d) { return model.removeSession(d.session); },
         [](Change& change, D d) { return done([&] { change.remove(d.session); }); }},
    };
    constexpr std::size_t makers = 6; // the first ones, drawn twice as often as the others
    const std::uint32_t at = below(std::size(kinds) + makers);
    return kinds[at < std::size(kinds) ? at : at - std::size(kinds)];
}

History::Step History::step(Model& model, Array& array) {
    const Kind& kind = drawKind();
    const Draw drawn = draw(model);
    Step step{kind.name, kind.inModel(model, drawn), std::nullopt};
    try {
        array.change([&](Change& change) { step.inArray = kind.inArray(change, drawn); });
    } catch (const DRAVOperationFailedException& refusal) {
        if (isOfTheState(refusal)) {
            throw;
        }
        step.inArray.reset();
    }
    return step;
}

void History::step(Model& model) {
    const Kind& kind = drawKind();
    kind.inModel(model, draw(model));
}

} // namespace array
