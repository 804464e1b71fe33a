#include "tests/fuzz/Targets.h"

#include <gtest/gtest.h>

#include <random>

namespace nordkeep {
namespace {

Text Mutated(Text input, std::mt19937& random) {
    const auto pick = [&](std::size_t below) { return below ? random() % below : 0; };
    for (std::size_t changes = 1 + pick(4); changes > 0; --changes) {
        const std::size_t at = pick(input.size());
        switch (pick(4)) {
            case 0:
                input.insert(at, 1, static_cast<char>(random()));
                break;
            case 1:
                input.erase(at, 1 + pick(8));
                break;
            case 2:
                input += input.substr(at);
                break;
            default:
                if (!input.empty()) input[at] = static_cast<char>(random());
        }
    }
    return input.substr(0, 4096);
}

TEST(Seeds, SurviveAndSoDoTheirNeighbours) {
    std::mt19937 random(1);
    for (const FuzzTarget& target : FuzzTargets()) {
        SCOPED_TRACE(target.name);
        for (const Text& seed : target.seeds) {
            for (int i = 0; i < target.neighbours; ++i) target.run(i == 0 ? seed : Mutated(seed, random));
        }
    }
}

}  // namespace
}  // namespace nordkeep
