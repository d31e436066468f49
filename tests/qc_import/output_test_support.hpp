#pragma once
// What the tests of the program readers share: an output of the test data,
// the text a span covers, and the records of a document by kind.
#include <morv/qc/document.hpp>
#include <morv/qc/import.hpp>
#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <variant>
#include <vector>

namespace morv::qc::test_support {

inline std::string read_output(std::string const& folder, std::string const& name) {
    std::ifstream in(folder + "/" + name, std::ios::binary);
    EXPECT_TRUE(in) << name;
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline std::string spanned(std::string const& text, model::SourceSpan const& span) {
    return text.substr(span.begin.offset, span.end.offset - span.begin.offset);
}

inline EnergyRecord const& primary_energy(CalculationStep const& step) {
    for (auto const& energy : step.energies) {
        if (step.primary_energy_id && energy.id == *step.primary_energy_id) {
            return energy;
        }
    }
    ADD_FAILURE() << "no primary energy";
    return step.energies.front();
}

template <typename Payload>
std::vector<Payload const*> analyses_of(Document const& document) {
    std::vector<Payload const*> out;
    for (auto const& block : document.analyses) {
        if (auto const* payload = std::get_if<Payload>(&block.payload)) {
            out.push_back(payload);
        }
    }
    return out;
}

// An output cut anywhere still imports, as far as it goes: failed only
// before the program can be recognised, complete once the text holds
// `termination`, else partial with `truncated_code` last and a document that
// validates. The frames read are those of the whole output, but for the last
// `unsettled` ones, which later text may still change.
inline void expect_every_prefix_imports(std::string const& text, char const* file, char const* termination,
                                        char const* truncated_code, std::size_t unsettled) {
    auto const whole = import_output(text, file).value;
    std::vector<std::size_t> cuts = {0, 1, 17, 333, 5000, text.size() - 200, text.size() - 1};
    for (std::size_t cut = 4096; cut < text.size(); cut += 4096) {
        cuts.push_back(cut);
    }
    for (auto const cut : cuts) {
        SCOPED_TRACE(std::string(file) + " cut at " + std::to_string(cut));
        auto const result = import_output(std::string_view(text).substr(0, cut), file);
        if (result.status == model::ParseStatus::failed) {
            EXPECT_EQ(result.diagnostics.at(0).message, "not an output of a known program");
            continue;
        }
        if (text.rfind(termination, cut) != std::string::npos) {
            EXPECT_EQ(result.status, model::ParseStatus::complete);
            continue;
        }
        EXPECT_EQ(result.status, model::ParseStatus::partial);
        ASSERT_FALSE(result.diagnostics.empty());
        EXPECT_EQ(result.diagnostics.back().code, truncated_code);
        EXPECT_EQ(result.value.program.termination.kind, TerminationKind::truncated);
        EXPECT_TRUE(validate_document(result.value).empty());
        auto const& frames = result.value.frames;
        ASSERT_LE(frames.size(), whole.frames.size());
        for (std::size_t i = 0; i + unsettled < frames.size(); ++i) {
            EXPECT_EQ(frames[i].positions_angstrom, whole.frames[i].positions_angstrom);
        }
    }
}

}  // namespace morv::qc::test_support
