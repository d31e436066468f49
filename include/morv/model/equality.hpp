#pragma once

// Records compare member by member. Each record type provides a
// `fields_of` overload that ties its members in declared order, and this
// macro turns it into the two comparison operators.
#define MORV_DEFINE_EQUALITY(Type)                                  \
    inline bool operator==(Type const& lhs, Type const& rhs) {      \
        return fields_of(lhs) == fields_of(rhs);                    \
    }                                                               \
    inline bool operator!=(Type const& lhs, Type const& rhs) {      \
        return !(lhs == rhs);                                       \
    }
