#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "array/Array.h"
#include "tests/array/support/Model.h"

namespace array {

// A sequence of random changes that depends on nothing but the seed and the model: each step draws
// one change and makes it. Many break a rule and are refused.
class History {
public:
    explicit History(std::uint32_t seed) : _random(seed) {}

    // What a step did to the model and to an array; they should be the same. Failures of the state
    // directory are thrown.
    struct Step {
        std::string kind;
        Outcome inModel;
        Outcome inArray;
    };
    Step step(Model& model, Array& array);

    // The same step with the model alone.
    void step(Model& model);

private:
    struct Draw;
    struct Kind;
    const Kind& drawKind();
    Draw draw(const Model& model);
    std::uint32_t below(std::size_t limit);
    template<class Map>
    Id oneOf(const Map& map, CLASSID_e objectClass);

    std::mt19937 _random;
};

} // namespace array
