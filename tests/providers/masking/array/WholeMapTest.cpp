// What the walks over arrays made at random give, in both directions, is what was configured.

#include <algorithm>
#include <compare>
#include <map>
#include <numeric>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "providers/frame/Requests.h"
#include "tests/providers/masking/array/MaskingClient.h"
#include "tests/support/Text.h"

using namespace Pegasus;
using namespace scripted;
using array::Change;
using array::Id;

namespace {

struct Unit {
    Id target;
    Id volume; // 0: gone
    Uint32 lun;
    Uint16 deviceAccess;

    auto operator<=>(const Unit&) const = default;
};

using Units = std::vector<Unit>;

void PrintTo(const Unit& unit, std::ostream* out) {
    *out << idText(unit.target) << " to " << idText(unit.volume) << " by " << unit.lun << " as "
         << unit.deviceAccess;
}

// An array with up to 6 targets, 8 volumes and 8 units under each target, of which some volumes are
// gone.
class RandomMap {
public:
    RandomMap(array::Array& array, unsigned seed) : _random(seed) {
        array.change([this](Change& change) {
            for (unsigned i = below(7); i > 0; --i) {
                targets.push_back(change.create(
                    array::Target{"iqn.2026-01.com.example:t" + std::to_string(i), ""}));
            }
            for (unsigned i = 1 + below(8); i > 0; --i) {
                volumes.push_back(
                    change.create(array::Volume{"60A" + std::to_string(i), "", 0, 0}));
            }
            for (const Id target : targets) {
                fill(change, target);
            }
            for (const Id volume : std::vector<Id>(volumes)) {
                if (below(4) == 0) {
                    lose(change, volume);
                }
            }
        });
    }

    // Those that are left, in ascending order.
    std::vector<Id> targets;
    std::vector<Id> volumes;

    // In the array's order.
    Units units;

private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(_random() % limit); }

    void fill(Change& change, Id target) {
        struct Access {
            Uint32 code;
            Uint16 deviceAccess;
        };
        constexpr Access accesses[] = {{0, 2}, {1, 3}, {3, 4}};
        std::vector<Uint32> luns(16);
        std::iota(luns.begin(), luns.end(), 0);
        for (unsigned i = below(9); i > 0; --i) {
            const Id volume = volumes[below(static_cast<unsigned>(volumes.size()))];
            const auto lun = luns.begin() + below(static_cast<unsigned>(luns.size()));
            const Access& access = accesses[below(3)];
            change.create(array::LogicalUnit{target, *lun, access.code, volume, ""});
            units.push_back({target, volume, *lun, access.deviceAccess});
            luns.erase(lun);
        }
    }

    void lose(Change& change, Id volume) {
        change.remove(volume);
        std::erase(volumes, volume);
        for (Unit& unit : units) {
            if (unit.volume == volume) {
                unit.volume = 0;
            }
        }
    }

    std::mt19937 _random;
};

Id idOf(const CIMObjectPath& path) {
    return idFromDeviceID(path);
}

CIMObjectPath referenced(const CIMObjectPath& unit, const char* role) {
    return CIMObjectPath(keyValue(unit, role));
}

template<class Number>
Number numberIn(const CIMInstance& instance, const char* property) {
    Number number{};
    instance.getProperty(instance.findProperty(property)).getValue().get(number);
    return number;
}

// What an instance says, whose path must say the same.
Unit unitOf(const CIMInstance& instance) {
    CIMObjectPath controller;
    CIMObjectPath volume;
    instance.getProperty(instance.findProperty("Antecedent")).getValue().get(controller);
    instance.getProperty(instance.findProperty("Dependent")).getValue().get(volume);
    EXPECT_TRUE(controller.identical(referenced(instance.getPath(), "Antecedent")));
    EXPECT_TRUE(volume.identical(referenced(instance.getPath(), "Dependent")));
    return {idOf(controller), idOf(volume), numberIn<Uint32>(instance, "DeviceNumber"),
            numberIn<Uint16>(instance, "DeviceAccess")};
}

Units unitsOf(const Instances& instances) {
    Units units;
    for (const CIMInstance& instance : instances) {
        units.push_back(unitOf(instance));
    }
    return units;
}

Paths pathsOf(const Instances& instances) {
    Paths paths;
    for (const CIMInstance& instance : instances) {
        paths.push_back(instance.getPath());
    }
    return paths;
}

std::vector<Id> idsOf(const Paths& paths) {
    std::vector<Id> ids;
    for (const CIMObjectPath& path : paths) {
        ids.push_back(idOf(path));
    }
    return ids;
}

std::vector<std::string> textsOf(const Paths& paths) {
    std::vector<std::string> texts;
    for (const CIMObjectPath& path : paths) {
        texts.push_back(text(path));
    }
    return texts;
}

class WholeMapTest : public testing::TestWithParam<unsigned> {
protected:
    // The units that this is true of.
    template<class Wanted>
    Units unitsWhere(Wanted wanted) const {
        Units units;
        std::copy_if(map.units.begin(), map.units.end(), std::back_inserter(units), wanted);
        return units;
    }

    Units unitsUnder(Id target) const {
        return unitsWhere([=](const Unit& unit) { return unit.target == target; });
    }

    Units unitsOfVolume(Id volume) const {
        return unitsWhere([=](const Unit& unit) { return unit.volume == volume; });
    }

    // The paths of the volumes of all units, each once: also that of volumes that are gone.
    Paths mappedVolumes() {
        std::map<Id, CIMObjectPath> byId;
        for (const CIMObjectPath& unit : client.units()) {
            const CIMObjectPath volume = referenced(unit, "Dependent");
            byId.emplace(idOf(volume), volume);
        }
        Paths paths;
        for (const auto& [id, path] : byId) {
            paths.push_back(path);
        }
        return paths;
    }

    MaskingClient client;
    RandomMap map{client.array, GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Seeds, WholeMapTest, testing::Range(1u, 21u));

TEST_P(WholeMapTest, TheControllersAreTheTargets) {
    EXPECT_EQ(idsOf(client.controllers()), map.targets);
    EXPECT_EQ(textsOf(pathsOf(client.controllerInstances())), textsOf(client.controllers()));
    for (const CIMObjectPath& path : client.controllers()) {
        EXPECT_EQ(text(client.controller(path).getPath()), text(path));
    }
}

TEST_P(WholeMapTest, TheUnitsAreThoseConfigured) {
    const Instances instances = client.unitInstances();

    EXPECT_EQ(unitsOf(instances), map.units);
    EXPECT_EQ(textsOf(client.units()), textsOf(pathsOf(instances)));
}

TEST_P(WholeMapTest, FromEachControllerItsVolumesAndUnitsAreReached) {
    for (const CIMObjectPath& controller : client.controllers()) {
        const Units expected = unitsUnder(idOf(controller));
        std::vector<Id> volumes;
        for (const Unit& unit : expected) {
            volumes.push_back(unit.volume);
        }

        const Paths names = client.associatorNames(controller, "CIM_StorageVolume");
        EXPECT_EQ(idsOf(names), volumes);
        EXPECT_EQ(textsOf(pathsOf(client.associators(controller, "CIM_StorageVolume"))),
                  textsOf(names));

        const Instances references = client.references(controller, "Antecedent");
        EXPECT_EQ(unitsOf(references), expected);
        EXPECT_EQ(textsOf(client.referenceNames(controller, "Antecedent")),
                  textsOf(pathsOf(references)));
    }
}

TEST_P(WholeMapTest, FromEachVolumeItsControllersAndUnitsAreReached) {
    for (const CIMObjectPath& volume : mappedVolumes()) {
        const Units expected = unitsOfVolume(idOf(volume));
        std::vector<Id> controllers;
        for (const Unit& unit : expected) {
            controllers.push_back(unit.target);
        }

        const Paths names = client.associatorNames(volume, "CIM_SCSIProtocolController");
        EXPECT_EQ(idsOf(names), controllers);
        EXPECT_EQ(textsOf(pathsOf(client.associators(volume, "CIM_SCSIProtocolController"))),
                  textsOf(names));

        const Instances references = client.references(volume, "Dependent");
        EXPECT_EQ(unitsOf(references), expected);
        EXPECT_EQ(textsOf(client.referenceNames(volume, "Dependent")),
                  textsOf(pathsOf(references)));
    }
}

TEST_P(WholeMapTest, BothDirectionsGiveTheSamePairs) {
    using Pairs = std::multimap<std::string, std::string>;
    Pairs down;
    Pairs up;
    for (const CIMObjectPath& controller : client.controllers()) {
        for (const CIMObjectPath& volume :
             client.associatorNames(controller, "CIM_LogicalDevice")) {
            down.emplace(text(controller) + " " + text(volume), "");
        }
    }
    for (const CIMObjectPath& volume : mappedVolumes()) {
        for (const CIMObjectPath& controller :
             client.associatorNames(volume, "CIM_ProtocolController")) {
            up.emplace(text(controller) + " " + text(volume), "");
        }
    }

    EXPECT_EQ(down, up);
    EXPECT_EQ(down.size(), map.units.size());
}

TEST_P(WholeMapTest, EachUnitIsGotByItsPathWithAllUnitsOfTheSamePair) {
    for (const CIMObjectPath& path : client.units()) {
        const Id target = idOf(referenced(path, "Antecedent"));
        const Id volume = idOf(referenced(path, "Dependent"));

        const Instances instances = client.unit(path);
        EXPECT_EQ(unitsOf(instances), unitsWhere([=](const Unit& unit) {
                      return unit.target == target && unit.volume == volume;
                  }));
        for (const CIMInstance& instance : instances) {
            EXPECT_EQ(text(instance.getPath()), text(path));
        }
    }
}

TEST_P(WholeMapTest, TheAccessOfAUnitOfEachControllerIsChangedByItsPath) {
    for (const CIMObjectPath& controller : client.controllers()) {
        const Instances references = client.references(controller, "Antecedent");
        if (references.empty()) {
            continue;
        }
        const CIMObjectPath path = references[GetParam() % references.size()].getPath();
        const Id volume = idOf(referenced(path, "Dependent"));
        for (Unit& unit : map.units) {
            if (unit.target == idOf(controller) && unit.volume == volume) {
                unit.deviceAccess = 3;
            }
        }

        client.setAccess(path, 3);
        EXPECT_EQ(unitsOf(client.unitInstances()), map.units);
    }
}

TEST_P(WholeMapTest, VolumesAreExposedAndHiddenThroughEachController) {
    client.array.change([](Change& change) { change.create(array::Volume{"FFFF", "new", 0, 0}); });

    for (const CIMObjectPath& controller : client.controllers()) {
        const Units before = unitsOf(client.unitInstances());
        EXPECT_EQ(client.expose({{"FFFF"}, {}, {"99"}, {3}, controller}), 0u);
        EXPECT_EQ(client.unitInstances().size(), before.size() + 1);
        EXPECT_EQ(client.hide({{"FFFF"}, {}, {}, {}, controller}), 0u);
        EXPECT_EQ(unitsOf(client.unitInstances()), before);
    }
}

} // namespace
