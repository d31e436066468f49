#pragma once

// Keys that are written only when there is something to write.

#include "core/json_writer.hpp"

#include <morv/model/entity_id.hpp>

#include <optional>
#include <string>

namespace morv::qc::json {

inline void member_unless_empty(JsonPrinter& printer, char const* key, std::string const& text) {
    if (!text.empty()) {
        printer.member(key, text);
    }
}

// Presence decides, not the value: a set 0 is written.
template <typename T>
void member_if_present(JsonPrinter& printer, char const* key, std::optional<T> const& value) {
    if (value) {
        printer.member(key, *value);
    }
}

// Entity ids go out as their bare number.
template <typename Tag>
void member_if_present(JsonPrinter& printer, char const* key, std::optional<model::EntityId<Tag>> const& id) {
    if (id) {
        printer.member(key, id->value);
    }
}

}  // namespace morv::qc::json
