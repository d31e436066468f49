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

inline std::size_t excited_state_count(Document const& document) {
    std::size_t states = 0;
    for (auto const* block : analyses_of<ExcitedStateBlock>(document)) {
        states += block->states.size();
    }
    return states;
}

}  // namespace morv::qc::test_support
