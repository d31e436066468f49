#pragma once

// The one source of pseudo-random numbers of the generator, the fuzzers and
// the tests: splitmix64. Its output is fixed by its definition, unlike that
// of the standard distributions, which differ between library
// implementations, so a seed gives the same numbers on every platform.

#include <morv/chem/vec3.hpp>

#include <cstddef>
#include <cstdint>

namespace morv::bench {

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

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

}  // namespace morv::bench
