#include "core/json_value.hpp"

#include <algorithm>
#include <tuple>

namespace morv::qc::json {
namespace {

// Byte order, as std::string orders. The first bytes mostly differ and then
// decide without a call to memcmp.
bool key_less(std::string_view left, std::string_view right) {
    if (!left.empty() && !right.empty() && left[0] != right[0]) {
        return static_cast<unsigned char>(left[0]) < static_cast<unsigned char>(right[0]);
    }
    return left < right;
}

}  // namespace

std::vector<JsonObject::Member>::iterator JsonObject::lower_bound(std::string_view key) {
    // Writers often set keys in order, and then the new key goes last.
    if (members_.empty() || key_less(members_.back().first, key)) {
        return members_.end();
    }
    return std::lower_bound(members_.begin(), members_.end(), key,
                            [](Member const& member, std::string_view k) { return key_less(member.first, k); });
}

JsonValue& JsonObject::operator[](std::string_view key) {
    if (members_.capacity() == 0) {
        // Most objects of a document are vectors of three components.
        members_.reserve(3);
    }
    auto const position = lower_bound(key);
    if (position != members_.end() && position->first == key) {
        return position->second;
    }
    return members_.emplace(position, std::piecewise_construct, std::forward_as_tuple(key), std::forward_as_tuple())
        ->second;
}

void JsonObject::erase(std::string_view key) {
    auto const position = lower_bound(key);
    if (position != members_.end() && position->first == key) {
        members_.erase(position);
    }
}

JsonObject& JsonValue::object() {
    if (!std::holds_alternative<JsonObject>(storage_)) {
        storage_ = JsonObject{};
    }
    return std::get<JsonObject>(storage_);
}

JsonValue& JsonValue::operator[](std::string const& key) { return object()[key]; }

JsonValue& JsonValue::operator[](char const* key) { return object()[key]; }

void JsonValue::push_back(JsonValue&& value) {
    if (!std::holds_alternative<JsonArray>(storage_)) {
        storage_ = JsonArray{};
    }
    std::get<JsonArray>(storage_).push_back(std::move(value));
}

}  // namespace morv::qc::json
