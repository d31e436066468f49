#pragma once

#include <morv/model/entity_id.hpp>
#include <morv/model/equality.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

namespace morv::model {

// One file that a document was made from.
struct SourceFile {
    SourceId id;
    std::string path;
    std::optional<std::string> sha256;
    std::optional<std::uint64_t> size_bytes;
    std::optional<std::string> embedded_content;
};

inline auto fields_of(SourceFile const& f) {
    return std::tie(f.id, f.path, f.sha256, f.size_bytes, f.embedded_content);
}

MORV_DEFINE_EQUALITY(SourceFile)

}  // namespace morv::model
