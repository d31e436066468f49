#pragma once

// Readers of one scalar field each. A reader looks `key` up in `parent`,
// converts the value with yaml-cpp's rules and yields it, or yields nothing
// and leaves at most one diagnostic. A missing key and a JSON null are the
// same to every reader. What a missing value means for the record is left to
// the caller.

#include "core/diagnostics.hpp"
#include "core/json_value.hpp"
#include "core/node.hpp"

#include <morv/chem/vec3.hpp>
#include <morv/model/entity_id.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace morv::qc::json {

std::optional<std::uint64_t> read_uint64_field(DocumentResult& result, Node const& parent, char const* key,
                                               bool required);
std::optional<std::uint32_t> read_uint32_field(DocumentResult& result, Node const& parent, char const* key,
                                               bool required);
std::optional<std::uint16_t> read_uint16_field(DocumentResult& result, Node const& parent, char const* key);
std::optional<int> read_int_field(DocumentResult& result, Node const& parent, char const* key, bool required);
std::optional<double> read_double_field(DocumentResult& result, Node const& parent, char const* key,
                                        bool required);
std::optional<std::string> read_string_field(DocumentResult& result, Node const& parent, char const* key,
                                             bool required);
std::optional<bool> read_bool_field(DocumentResult& result, Node const& parent, char const* key);

// An identifier: a 64-bit unsigned field that must also fit 32 bits.
std::optional<std::uint32_t> read_id_field(DocumentResult& result, Node const& parent, char const* key,
                                           bool required);

template <typename Tag>
std::optional<model::EntityId<Tag>> read_entity_id_field(DocumentResult& result, Node const& parent,
                                                         char const* key, bool required) {
    if (auto const value = read_id_field(result, parent, key, required)) {
        return model::EntityId<Tag>(*value);
    }
    return std::nullopt;
}

template <typename Tag>
std::optional<model::EntityId<Tag>> read_required_entity_id_field(DocumentResult& result, Node const& parent,
                                                                  char const* key) {
    return read_entity_id_field<Tag>(result, parent, key, true);
}

// `node` is the vector object itself.
std::optional<chem::Vec3> read_vec3(DocumentResult& result, Node const& node);
JsonValue write_vec3(chem::Vec3 const& vec3);

}  // namespace morv::qc::json
