#pragma once

// The in-memory JSON tree of the writing side. Writers build it, and one
// printer turns it into text, so the key order of the output is the byte
// order of the keys and never the order in which a writer set them.

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace morv::qc::json {

class JsonValue;

// The members of an object, kept in the byte order of their keys. Most
// objects hold a handful of members, which a sorted vector stores in one
// allocation and walks without chasing pointers.
class JsonObject {
public:
    using Member = std::pair<std::string, JsonValue>;
    using const_iterator = std::vector<Member>::const_iterator;

    // The value at `key`, inserted as null when missing. Setting a key again
    // replaces its value in place.
    JsonValue& operator[](std::string_view key);
    void erase(std::string_view key);

    const_iterator begin() const { return members_.begin(); }
    const_iterator end() const { return members_.end(); }
    std::size_t size() const { return members_.size(); }
    bool empty() const { return members_.empty(); }

private:
    std::vector<Member>::iterator lower_bound(std::string_view key);

    std::vector<Member> members_;
};

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
    // The object held, an empty one replacing any other value first.
    JsonObject& object();

    Storage storage_;
};

inline JsonValue make_json_object() { return JsonValue(JsonObject{}); }
inline JsonValue make_json_array() { return JsonValue(JsonArray{}); }

}  // namespace morv::qc::json
