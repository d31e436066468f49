#include "core/field_readers.hpp"

#include "core/vec3_fields.hpp"

#include <array>
#include <limits>
#include <utility>

namespace morv::qc::json {
namespace {

// The diagnostic of a field that was not read, away from the path of the
// fields that are.
[[gnu::noinline, gnu::cold]] void report_unread(DocumentResult& result, FieldState state, std::string_view key,
                                                Presence presence) {
    if (state == FieldState::refused) {
        add_error(result, "qc.json.invalid_field", std::string("Invalid value for field: ").append(key));
    } else if (presence == Presence::required) {
        add_error(result, "qc.json.missing_field", std::string("Missing required field: ").append(key));
    }
}

// `T` is the type that yaml-cpp converts to; the callers narrow it to the
// field's own type.
template <typename T>
std::optional<T> read_field(DocumentResult& result, Node const& parent, std::string_view key, Presence presence) {
    // The lookup may throw; that is meant to end the decode.
    FieldValue<T> field = parent.field<T>(key);
    if (field.state == FieldState::read) {
        return std::move(field.value);
    }
    report_unread(result, field.state, key, presence);
    return std::nullopt;
}

}  // namespace

std::optional<std::uint64_t> read_uint64_field(DocumentResult& result, Node const& parent, std::string_view key,
                                               Presence presence) {
    return read_field<unsigned long long>(result, parent, key, presence);
}

std::optional<std::uint32_t> read_uint32_field(DocumentResult& result, Node const& parent, std::string_view key,
                                               Presence presence) {
    return read_field<unsigned int>(result, parent, key, presence);
}

std::optional<std::uint16_t> read_uint16_field(DocumentResult& result, Node const& parent, std::string_view key) {
    return read_field<unsigned short>(result, parent, key, Presence::optional);
}

std::optional<int> read_int_field(DocumentResult& result, Node const& parent, std::string_view key, Presence presence) {
    return read_field<int>(result, parent, key, presence);
}

std::optional<double> read_double_field(DocumentResult& result, Node const& parent, std::string_view key,
                                        Presence presence) {
    return read_field<double>(result, parent, key, presence);
}

std::optional<std::string_view> read_text_field(DocumentResult& result, Node const& parent, std::string_view key,
                                                Presence presence) {
    return read_field<std::string_view>(result, parent, key, presence);
}

// The text is copied once, here, rather than at each step on the way.
std::optional<std::string> read_string_field(DocumentResult& result, Node const& parent, std::string_view key,
                                             Presence presence) {
    if (auto const text = read_text_field(result, parent, key, presence)) {
        return std::string(*text);
    }
    return std::nullopt;
}

std::optional<bool> read_bool_field(DocumentResult& result, Node const& parent, std::string_view key) {
    return read_field<bool>(result, parent, key, Presence::optional);
}

std::optional<std::uint32_t> read_id_field(DocumentResult& result, Node const& parent, std::string_view key,
                                           Presence presence) {
    auto const value = read_uint64_field(result, parent, key, presence);
    if (!value) {
        return std::nullopt;
    }
    if (*value > std::numeric_limits<std::uint32_t>::max()) {
        add_error(result, "qc.json.id_out_of_range", std::string("Entity ID exceeds uint32 range: ").append(key));
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*value);
}

std::optional<chem::Vec3> read_vec3(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        add_error(result, "qc.json.invalid_vec3", "Expected a Cartesian vector object.");
        return std::nullopt;
    }
    if (std::array<double, 3> xyz{}; node.numbers_in_order(vec3_keys, xyz)) {
        return chem::Vec3{xyz[0], xyz[1], xyz[2]};
    }
    // All three are read so that each bad component is reported.
    auto const x = read_double_field(result, node, vec3_keys[0], Presence::required);
    auto const y = read_double_field(result, node, vec3_keys[1], Presence::required);
    auto const z = read_double_field(result, node, vec3_keys[2], Presence::required);
    if (!x || !y || !z) {
        return std::nullopt;
    }
    return chem::Vec3{*x, *y, *z};
}

}  // namespace morv::qc::json
