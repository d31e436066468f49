#pragma once

// Records compare member by member. Each record type provides a
// `fields_of` overload that ties its members in declared order, and this
// macro turns it into the two comparison operators. It also checks that
// `fields_of` names as many members as the record has: a member left out
// would otherwise be ignored by `==`, and with it by every round-trip test.
//
// The project keeps to C++17, where a defaulted `operator==` does not exist;
// the count below is the C++17 way to the same guarantee. A member named
// twice in place of another is not caught, but reads plainly in review.

#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

namespace morv::model::detail {

// Stands in for any one member in a brace initializer.
struct AnyMember {
    template <typename Member>
    operator Member() const;
};

template <typename Record, typename Indices, typename = void>
struct BracesTake : std::false_type {};

template <typename Record, std::size_t... Index>
struct BracesTake<Record, std::index_sequence<Index...>,
                  std::void_t<decltype(Record{(void(Index), AnyMember{})...})>> : std::true_type {};

// The number of members of an aggregate: the most initializers that its
// braces take.
template <typename Record, std::size_t Count = 0>
constexpr std::size_t member_count() {
    if constexpr (BracesTake<Record, std::make_index_sequence<Count + 1>>::value) {
        return member_count<Record, Count + 1>();
    } else {
        return Count;
    }
}

}  // namespace morv::model::detail

#define MORV_DEFINE_EQUALITY(Type)                                                                          \
    static_assert(std::tuple_size_v<decltype(fields_of(std::declval<Type const&>()))> ==                 \
                      ::morv::model::detail::member_count<Type>(),                                         \
                  "fields_of(" #Type ") must name every member");                                          \
    inline bool operator==(Type const& lhs, Type const& rhs) { return fields_of(lhs) == fields_of(rhs); } \
    inline bool operator!=(Type const& lhs, Type const& rhs) { return !(lhs == rhs); }
