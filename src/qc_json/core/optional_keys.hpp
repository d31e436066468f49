#pragma once

// Keys that are written only when there is something to write.

#include "core/json_value.hpp"

#include <morv/model/entity_id.hpp>

#include <optional>
#include <string>

namespace morv::qc::json {

inline void set_unless_empty(JsonValue& object, char const* key, std::string const& text) {
    if (!text.empty()) {
        object[key] = text;
    }
}

// Presence decides, not the value: a set 0 is written.
template <typename T>
void set_if_present(JsonValue& object, char const* key, std::optional<T> const& value) {
    if (value) {
        object[key] = *value;
    }
}

// Entity ids go out as their bare number.
template <typename Tag>
void set_if_present(JsonValue& object, char const* key, std::optional<model::EntityId<Tag>> const& id) {
    if (id) {
        object[key] = id->value;
    }
}

}  // namespace morv::qc::json
