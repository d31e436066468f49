#pragma once

// Readers of one scalar field each. A reader looks `key` up in `parent`,
// converts the value with yaml-cpp's rules and yields it, or yields nothing
// and leaves at most one diagnostic. A missing key and a JSON null are the
// same to every reader. What a missing value means for the record is left to
// the caller.

#include "core/diagnostics.hpp"
#include "core/node.hpp"

#include <morv/chem/vec3.hpp>
#include <morv/model/entity_id.hpp>
#include <morv/qc/wire_words.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morv::qc::json {

// Whether a missing field is an error of the record or only leaves it unset.
enum class Presence { optional, required };

std::optional<std::uint64_t> read_uint64_field(DocumentResult& result, Node const& parent, std::string_view key,
                                               Presence presence);
std::optional<std::uint32_t> read_uint32_field(DocumentResult& result, Node const& parent, std::string_view key,
                                               Presence presence);
std::optional<std::uint16_t> read_uint16_field(DocumentResult& result, Node const& parent, std::string_view key);
std::optional<int> read_int_field(DocumentResult& result, Node const& parent, std::string_view key, Presence presence);
std::optional<double> read_double_field(DocumentResult& result, Node const& parent, std::string_view key,
                                        Presence presence);
std::optional<std::string> read_string_field(DocumentResult& result, Node const& parent, std::string_view key,
                                             Presence presence);
// The same field's text without a copy, for a caller that keeps no string:
// it lives as long as the parsed text.
std::optional<std::string_view> read_text_field(DocumentResult& result, Node const& parent, std::string_view key,
                                                Presence presence);
std::optional<bool> read_bool_field(DocumentResult& result, Node const& parent, std::string_view key);

// A field that holds one of an enumeration's words; a missing or unknown
// word reads as the table's `otherwise`.
template <typename Enum>
Enum read_word_field(DocumentResult& result, Node const& parent, std::string_view key) {
    return enumerator_or_otherwise<Enum>(read_text_field(result, parent, key, Presence::optional).value_or(""));
}

// An identifier: a 64-bit unsigned field that must also fit 32 bits.
std::optional<std::uint32_t> read_id_field(DocumentResult& result, Node const& parent, std::string_view key,
                                           Presence presence);

template <typename Tag>
std::optional<model::EntityId<Tag>> read_entity_id_field(DocumentResult& result, Node const& parent,
                                                         std::string_view key, Presence presence) {
    if (auto const value = read_id_field(result, parent, key, presence)) {
        return model::EntityId<Tag>(*value);
    }
    return std::nullopt;
}

// `node` is the vector object itself.
std::optional<chem::Vec3> read_vec3(DocumentResult& result, Node const& node);

}  // namespace morv::qc::json
