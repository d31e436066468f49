#pragma once

#include <cstdint>

namespace morv::model {

// A 32-bit identifier of one kind of record. The tag exists only in the type,
// so that a job id cannot be passed where a step id is expected.
template <typename Tag>
struct EntityId {
    std::uint32_t value = 0;

    constexpr EntityId() = default;
    constexpr explicit EntityId(std::uint32_t id) : value(id) {}

    friend constexpr bool operator==(EntityId lhs, EntityId rhs) { return lhs.value == rhs.value; }
    friend constexpr bool operator!=(EntityId lhs, EntityId rhs) { return lhs.value != rhs.value; }
    friend constexpr bool operator<(EntityId lhs, EntityId rhs) { return lhs.value < rhs.value; }
};

struct SourceIdTag {};
using SourceId = EntityId<SourceIdTag>;

}  // namespace morv::model
