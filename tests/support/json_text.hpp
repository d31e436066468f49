#pragma once

// Tests of one record's reader and writer: the compact text of a writer and
// a table of inputs run through a reader.

#include "core/diagnostics.hpp"
#include "core/json_tree.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"
#include "support/diagnostics.hpp"

#include <morv/qc/json/codec.hpp>
#include <morv/qc/wire_words.hpp>

#include <gtest/gtest.h>
#include <yaml-cpp/exceptions.h>

#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace morv::testing {

using qc::json::DocumentResult;
using qc::json::load_text;
using qc::json::Node;

inline constexpr double inf = std::numeric_limits<double>::infinity();
inline constexpr double nan = std::numeric_limits<double>::quiet_NaN();
inline model::SourceSpan const some_span{model::SourceId(2), {1, 2, 3}, {4, 5, 6}};
// An energy of 0 hartree: three zeros and no wavelength.
inline std::string const zero_energy = R"({"electron_volt":0,"hartree":0,"wavenumber_cm1":0})";

// The compact text that `write` prints for `value`, which may be a braced
// list of what `write` takes.
template <typename Parameter>
std::string compact(void (*write)(qc::json::JsonPrinter&, Parameter), std::decay_t<Parameter> const& value) {
    qc::json::SerializeOptions const options;
    qc::json::JsonPrinter printer(options);
    write(printer, value);
    return printer.finish();
}

// A document whose root holds a program and then `members`.
inline std::string document_with(std::string const& members) {
    return R"({"schema": "morv.qc.document.v2", "program": {}, )" + members + "}";
}

// Runs `check` on the node of `json` that each backend gives: yaml-cpp's,
// and the strict loader's tree when the text is strict JSON with a container
// at its root. The readers see only Node, so every row holds for both.
template <typename Check>
void for_each_backend(std::string const& json, Check check) {
    {
        SCOPED_TRACE("through yaml-cpp");
        check(load_text(json));
    }
    if (auto const tree = qc::json::load_strict_json(json)) {
        SCOPED_TRACE("through the strict tree");
        check(Node(*tree, 0));
    }
}

template <typename Read>
using ReadValue = std::invoke_result_t<Read&, DocumentResult&, Node const&>;

// One row of a reader's table: the text, what it reads as, and every
// diagnostic it leaves, in order.
template <typename Value>
struct ReadCase {
    std::string json;
    Value value;
    Lines diagnostics;
};

template <typename Read>
void expect_reads(Read read, std::vector<ReadCase<ReadValue<Read>>> const& cases) {
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        for_each_backend(c.json, [&](Node const& node) {
            DocumentResult result;
            EXPECT_EQ(read(result, node), c.value);
            EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
        });
    }
}

}  // namespace morv::testing
