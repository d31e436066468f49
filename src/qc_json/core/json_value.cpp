#include "core/json_value.hpp"

namespace morv::qc::json {

JsonValue& JsonValue::operator[](std::string const& key) {
    if (!std::holds_alternative<JsonObject>(storage_)) {
        storage_ = JsonObject{};
    }
    return std::get<JsonObject>(storage_)[key];
}

JsonValue& JsonValue::operator[](char const* key) { return (*this)[std::string(key)]; }

void JsonValue::push_back(JsonValue&& value) {
    if (!std::holds_alternative<JsonArray>(storage_)) {
        storage_ = JsonArray{};
    }
    std::get<JsonArray>(storage_).push_back(std::move(value));
}

}  // namespace morv::qc::json
