#pragma once

#include <morv/chem/vec3.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace morv::testing {

// Where a built document gets its choices from. The run's own randomness (the
// molecule, its numbers, the lines of its output file) comes from splitmix64,
// whose output its definition fixes, unlike that of the standard
// distributions, so a seed gives the same numbers on every platform.
//
// A departure is the choice to put an odd value where the run has its own: a
// number below `count`, 0 meaning none. These choices make none; a source that
// does overrides `departure`.
class Choices {
public:
    explicit Choices(std::uint64_t seed) : state_(seed) {}
    virtual ~Choices() = default;

    virtual std::uint64_t departure(std::uint64_t /*count*/) { return 0; }

    std::uint64_t next() {
        std::uint64_t z = (state_ += 0x9e3779b97f4a7c15ULL);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        return z ^ (z >> 31);
    }

    // In [0, 1), from the top 53 bits.
    double unit() { return static_cast<double>(next() >> 11) * 0x1.0p-53; }

    double uniform(double low, double high) { return low + (high - low) * unit(); }

    std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }

    // True about once in `n` times.
    bool one_in(std::uint64_t n) { return next() % n == 0; }

    // Mean 0 and deviation 1, bell-shaped enough for noise: the sum of four
    // uniforms, scaled.
    double gaussian() { return (unit() + unit() + unit() + unit() - 2.0) * 1.7320508075688772; }

    chem::Vec3 vector(double scale) { return {scale * gaussian(), scale * gaussian(), scale * gaussian()}; }

private:
    std::uint64_t state_;
};

// A fuzzer's bytes as choices: the first eight seed the run, the rest decide
// the departures in the order the builder asks for them, each taking as few
// bytes as its count needs. Once the bytes run out the run keeps its own
// values, so a short input gives the plain run. The bytes are read where
// they lie, so they must outlive the choices.
class ChoicesFromBytes : public Choices {
public:
    explicit ChoicesFromBytes(std::string_view bytes);

    std::uint64_t departure(std::uint64_t count) override;

private:
    std::string_view rest_;
};

}  // namespace morv::testing
