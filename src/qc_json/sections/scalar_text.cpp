#include "sections/scalar_text.hpp"

#include <stdexcept>

namespace morv::qc::json {
namespace {

template <typename T, typename Convert>
std::optional<T> convert_whole(std::string const& text, Convert convert) {
    try {
        std::size_t used = 0;
        T const value = convert(text, &used);
        if (used == text.size()) {
            return value;
        }
    } catch (std::logic_error const&) {
        // std::invalid_argument or std::out_of_range: not a number of this kind.
    }
    return std::nullopt;
}

}  // namespace

std::optional<long long> whole_signed(std::string const& text) {
    return convert_whole<long long>(text, [](std::string const& t, std::size_t* used) { return std::stoll(t, used, 10); });
}

std::optional<unsigned long long> whole_unsigned(std::string const& text) {
    return convert_whole<unsigned long long>(
        text, [](std::string const& t, std::size_t* used) { return std::stoull(t, used, 10); });
}

std::optional<double> whole_double(std::string const& text) {
    return convert_whole<double>(text, [](std::string const& t, std::size_t* used) { return std::stod(t, used); });
}

}  // namespace morv::qc::json
