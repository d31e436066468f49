#pragma once

// The in-memory JSON tree of the writing side. Writers build it, and one
// printer turns it into text, so the key order of the output is the byte
// order of the keys and never the order in which a writer set them.

#include <cstddef>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace morv::qc::json {

class JsonValue;
using JsonObject = std::map<std::string, JsonValue>;
using JsonArray = std::vector<JsonValue>;

class JsonValue {
public:
    using Storage = std::variant<std::nullptr_t,
                                 bool,
                                 long long,
                                 unsigned long long,
                                 double,
                                 std::string,
                                 JsonObject,
                                 JsonArray>;

    JsonValue() = default;
    JsonValue(std::nullptr_t) {}
    JsonValue(bool value) : storage_(value) {}
    // Signed integers become the signed alternative and unsigned ones, entity
    // ids included, the unsigned one.
    template <typename T,
              std::enable_if_t<std::is_integral_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char>,
                               int> = 0>
    JsonValue(T value) {
        if constexpr (std::is_signed_v<T>) {
            storage_ = static_cast<long long>(value);
        } else {
            storage_ = static_cast<unsigned long long>(value);
        }
    }
    JsonValue(double value) : storage_(value) {}
    JsonValue(std::string value) : storage_(std::move(value)) {}
    // A null pointer stores the empty string.
    JsonValue(char const* text) : storage_(std::string(text ? text : "")) {}
    JsonValue(JsonObject object) : storage_(std::move(object)) {}
    JsonValue(JsonArray array) : storage_(std::move(array)) {}

    // The entry at `key`, inserted as null when missing. A value that is not
    // an object becomes an empty object first.
    JsonValue& operator[](std::string const& key);
    JsonValue& operator[](char const* key);

    // Appends to an array. A value that is not an array becomes an empty
    // array first.
    void push_back(JsonValue&& value);

    Storage const& storage() const { return storage_; }

private:
    Storage storage_;
};

inline JsonValue make_json_object() { return JsonValue(JsonObject{}); }
inline JsonValue make_json_array() { return JsonValue(JsonArray{}); }

}  // namespace morv::qc::json
