// Documents built from the fuzzer's bytes (testing/'s ORCA run, with odd
// values where the bytes say) go to `serialize`, in any form that
// SerializeOptions allow. Writing must not throw; when every string of the
// document is valid UTF-8 the text is strict JSON, and pretty text holds the
// same JSON value as compact text; the text loads (no "qc.json.parse_failed"),
// and what it reads as settles, as in round_trip_fuzzer.

#include "settled_round_trip.hpp"

#include <morv/qc/json/codec.hpp>
#include <morv/testing/document_builder.hpp>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using morv::model::Diagnostic;
using morv::qc::json::SerializeOptions;

[[noreturn]] void fail(char const* what, std::string const& text) {
    std::fprintf(stderr, "\nFINDING: %s\n--- text:\n%s\n", what, text.c_str());
    std::abort();
}

SerializeOptions fuzzed_options(morv::testing::Choices& choices) {
    SerializeOptions options;
    options.pretty = choices.departure(2) == 1;
    // Small, so that deep pretty text stays a few kilobytes.
    options.indent = static_cast<std::uint32_t>(choices.departure(9));
    options.include_diagnostics = choices.departure(2) == 0;
    return options;
}

bool loaded(morv::model::ParseResult<morv::qc::Document> const& read) {
    return std::none_of(read.diagnostics.begin(), read.diagnostics.end(),
                        [](Diagnostic const& d) { return d.code == "qc.json.parse_failed"; });
}

std::string write(morv::testing::BuiltResult const& built, bool as_plain_document, SerializeOptions const& options) {
    return as_plain_document ? morv::qc::json::serialize(built.result.value, options)
                             : morv::qc::json::serialize(built.result, options);
}

void require_strict_json(std::string const& text) {
    if (!nlohmann::json::accept(text)) {
        fail("not strict JSON", text);
    }
}

void require_same_json(std::string const& pretty, std::string const& compact) {
    if (nlohmann::json::parse(pretty) != nlohmann::json::parse(compact)) {
        fail("pretty and compact text hold different JSON values", pretty);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    morv::testing::ChoicesFromBytes choices(std::string_view(reinterpret_cast<char const*>(data), size));
    SerializeOptions options = fuzzed_options(choices);
    bool const as_plain_document = choices.departure(2) == 1;
    // The smallest run, so that the bytes reach its last fields.
    auto const built = morv::testing::build_result(choices, 0);

    std::string const text = write(built, as_plain_document, options);
    if (built.all_text_is_utf8) {
        require_strict_json(text);
        if (options.pretty) {
            options.pretty = false;
            require_same_json(text, write(built, as_plain_document, options));
        }
    }
    auto const read = morv::qc::json::deserialize(text);
    if (!loaded(read)) {
        fail("written text does not load", text);
    }
    morv::fuzz::require_settled(read);
    return 0;
}
