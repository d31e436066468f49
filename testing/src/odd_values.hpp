#pragma once

// Puts odd values in place of a document's own, field by field, where the
// choices depart: texts of any bytes or that a YAML loader may take for
// something else, any double bit pattern, enumerators past their table,
// references to records that may not exist, optional fields set or cleared,
// lists cut or grown, other alternatives of a variant, and new metadata and
// extension entries nested a few levels deep. Within the format, only what
// text carries unchanged: optional fields set, lists grown, enumerators and
// alternatives chosen anew, integers at their ends and doubles that print
// exactly, texts kept. Records are walked through their `fields_of`, so a
// member added to the model is varied without a change here.

#include <morv/model/extension_value.hpp>
#include <morv/qc/metadata.hpp>
#include <morv/qc/wire_words.hpp>
#include <morv/testing/choices.hpp>
#include <morv/testing/document_builder.hpp>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace morv::testing {

template <typename T>
struct IsOptional : std::false_type {};
template <typename T>
struct IsOptional<std::optional<T>> : std::true_type {};

template <typename T>
struct IsVector : std::false_type {};
template <typename T>
struct IsVector<std::vector<T>> : std::true_type {};

template <typename T>
struct IsMap : std::false_type {};
template <typename T>
struct IsMap<std::map<std::string, T>> : std::true_type {};

template <typename T>
struct IsVariant : std::false_type {};
template <typename... T>
struct IsVariant<std::variant<T...>> : std::true_type {};

template <typename T>
struct IsEntityId : std::false_type {};
template <typename Tag>
struct IsEntityId<model::EntityId<Tag>> : std::true_type {};

class OddValues {
public:
    OddValues(Choices& choices, Departures departures)
        : choices_(choices), any_value_(departures == Departures::any_value) {}

    // False once an odd text or letter is not valid UTF-8, so that the
    // document's JSON text need not be strict.
    bool all_text_is_utf8() const { return all_text_is_utf8_; }

    template <typename T>
    void vary(T& value) {
        if constexpr (std::is_same_v<T, bool>) {
            value = value != (choices_.departure(2) == 1);
        } else if constexpr (std::is_same_v<T, char>) {
            if (any_value_) {
                value = static_cast<char>(integer(static_cast<unsigned char>(value)));
                all_text_is_utf8_ = all_text_is_utf8_ && static_cast<unsigned char>(value) < 0x80;
            }
        } else if constexpr (std::is_enum_v<T>) {
            // One past the table as well: a value that only a cast makes.
            std::size_t const values = qc::WireWords<T>::words.size() + (any_value_ ? 1 : 0);
            std::uint64_t const departure = choices_.departure(values + 1);
            value = departure == 0 ? value : static_cast<T>(departure - 1);
        } else if constexpr (std::is_integral_v<T>) {
            value = integer(value);
        } else if constexpr (std::is_same_v<T, double>) {
            value = number(value);
        } else if constexpr (std::is_same_v<T, std::string>) {
            // A metadata text may spell another kind of value.
            value = any_value_ ? text(std::move(value)) : std::move(value);
        } else if constexpr (std::is_same_v<T, std::nullptr_t>) {
        } else if constexpr (IsEntityId<T>::value) {
            value.value = integer(value.value);
        } else if constexpr (IsOptional<T>::value) {
            vary_optional(value);
        } else if constexpr (IsVector<T>::value) {
            vary_list(value);
        } else if constexpr (IsMap<T>::value) {
            vary_table(value);
        } else if constexpr (IsVariant<T>::value) {
            vary_variant(value);
        } else if constexpr (std::is_same_v<T, model::ExtensionValue>) {
            ++depth_;
            vary(value.value);
            --depth_;
        } else {
            vary_fields(value);
        }
    }

private:
    // Extensions stay shallow: yaml-cpp refuses text nested about 500 deep,
    // which has tests of its own.
    static constexpr int max_depth = 4;

    std::string text(std::string usual);
    double number(double usual);
    std::uint64_t any_bits(std::size_t bytes);

    template <typename Integer>
    Integer integer(Integer usual) {
        switch (choices_.departure(3)) {
            // Small, so that records name each other and references hold as
            // well as not.
            case 1: return static_cast<Integer>(choices_.departure(4));
            case 2: {
                if (!any_value_) {
                    return choices_.departure(2) == 1 ? std::numeric_limits<Integer>::max()
                                                      : std::numeric_limits<Integer>::lowest();
                }
                std::uint64_t const bits = any_bits(sizeof(Integer));
                Integer value;
                std::memcpy(&value, &bits, sizeof value);
                return value;
            }
            default: return usual;
        }
    }

    template <typename T>
    void vary_optional(std::optional<T>& value) {
        if (choices_.departure(2) == 1) {
            if (!value) {
                value.emplace();
            } else if (any_value_) {
                value.reset();
            }
        }
        if (value) {
            vary(*value);
        }
    }

    bool may_grow() const { return depth_ < max_depth; }

    template <typename T>
    void vary_list(std::vector<T>& items) {
        switch (choices_.departure(4)) {
            case 1:
                if (any_value_) {
                    items.clear();
                }
                break;
            case 2:
                if (any_value_ && !items.empty()) {
                    items.pop_back();
                }
                break;
            case 3:
                if (may_grow()) {
                    items.emplace_back();
                }
                break;
            default: break;
        }
        for (auto& item : items) {
            vary(item);
        }
    }

    template <typename T>
    void vary_table(std::map<std::string, T>& entries) {
        for (auto& entry : entries) {
            vary(entry.second);
        }
        // An empty list among the new entries would not say which kind it is.
        for (auto count = any_value_ && may_grow() ? choices_.departure(4) : 0; count > 0; --count) {
            T value{};
            vary(value);
            entries.emplace(text(""), std::move(value));
        }
    }

    template <typename... T>
    void vary_variant(std::variant<T...>& value) {
        // The kind of a metadata value is what its text spells, and a new
        // one, empty or zero, would spell another.
        bool const kind_is_spelt = std::is_same_v<std::variant<T...>, qc::MetadataValue>;
        std::uint64_t const alternative = any_value_ || !kind_is_spelt ? choices_.departure(sizeof...(T) + 1) : 0;
        if (alternative > 0) {
            emplace_alternative(value, alternative - 1, std::index_sequence_for<T...>());
        }
        std::visit([&](auto& held) { vary(held); }, value);
    }

    template <typename Variant, std::size_t... Index>
    static void emplace_alternative(Variant& value, std::size_t chosen, std::index_sequence<Index...>) {
        ((chosen == Index ? static_cast<void>(value.template emplace<Index>()) : static_cast<void>(0)), ...);
    }

    // `fields_of` ties a record's members as const; the record itself is
    // not, so they may be written through.
    template <typename Record>
    void vary_fields(Record& record) {
        std::apply(
            [&](auto const&... field) {
                (vary(const_cast<std::remove_const_t<std::remove_reference_t<decltype(field)>>&>(field)), ...);
            },
            fields_of(std::as_const(record)));
    }

    Choices& choices_;
    bool any_value_;
    bool all_text_is_utf8_ = true;
    int depth_ = 0;
};

}  // namespace morv::testing
