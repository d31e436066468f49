#include <morv/testing/choices.hpp>

namespace morv::testing {
namespace {

constexpr std::size_t seed_bytes = 8;

std::uint64_t seed_of(std::string_view bytes) {
    std::uint64_t seed = 0;
    for (std::size_t i = 0; i < seed_bytes && i < bytes.size(); ++i) {
        seed = seed << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return seed;
}

}  // namespace

ChoicesFromBytes::ChoicesFromBytes(std::string_view bytes)
    : Choices(seed_of(bytes)), rest_(bytes.substr(bytes.size() < seed_bytes ? bytes.size() : seed_bytes)) {}

std::uint64_t ChoicesFromBytes::departure(std::uint64_t count) {
    std::uint64_t value = 0;
    for (std::uint64_t range = 1; range < count && range != 0 && !rest_.empty(); range <<= 8) {
        value = value << 8 | static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
    }
    return count == 0 ? 0 : value % count;
}

}  // namespace morv::testing
