#include "support/diagnostics.hpp"

#include <morv/qc/model.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace morv::qc {
namespace {

using morv::testing::describe;
using morv::testing::Lines;

model::SourceSpan span_in(std::uint32_t source) { return {model::SourceId(source), {0, 1, 1}, {10, 1, 11}}; }
EnergyRecord energy(std::uint32_t id, double value) { return {EnergyId(id), EnergyKind::scf, "", "", value, span_in(1)}; }

// Every kind of record once, each reference pointing at a record that is there.
Document well_formed() {
    using chem::SystemId;
    Document document;
    document.program.termination.source = span_in(1);
    document.sources = {{model::SourceId(1), "water.log", std::nullopt, std::nullopt, std::nullopt}};
    document.systems = {{SystemId(1), "", {{{chem::AtomId(1), "O", "O1", 8, {}, {}}, {chem::AtomId(2), "H", "H2", 1, {}, {}}}},
                         std::nullopt, span_in(1)}};
    document.frames = {{chem::FrameId(1), SystemId(1), {{0, 0, 0}, {0, 0, 0.96}}, span_in(1)}};
    document.jobs = {{JobId(1), SystemId(1), 0, {}, JobRelation::none, {}, {}, "", "", "", {StepId(1)},
                      {TerminationKind::unknown, "", span_in(1)}, span_in(1)}};
    document.steps = {{StepId(1), JobId(1), SystemId(1), 0, {}, chem::FrameId(1), {energy(1, -76.0), energy(2, -76.2)},
                       EnergyId(2), GradientRecord{{{0, 0, 0.01}, {0, 0, -0.01}}, {}, {}, {}, span_in(1)},
                       ConvergenceRecord{{}, ConvergenceStatus::converged, span_in(1)}, span_in(1)}};
    ExcitedStateBlock excited{{}, "", "", "", {{}, {}}, {energy(1, -75.8)}, EnergyId(1), {{}}};
    excited.states[1].source = span_in(1);
    excited.absorption_peaks[0].source = span_in(1);
    document.analyses = {{AnalysisId(1), JobId(1), 0, StepId(1), excited, span_in(1)}};
    return document;
}

std::string const absent = ", which the document does not contain.";
Lines unknown_sources(std::vector<char const*> const& owners) {
    Lines lines;
    for (char const* owner : owners) {
        lines.push_back("warning qc.model.unknown_source: " + std::string(owner) + " names source 1" + absent);
    }
    return lines;
}

CalculationStep& step_of(Document& document) { return document.steps.front(); }
ExcitedStateBlock& excited_of(Document& document) {
    return std::get<ExcitedStateBlock>(document.analyses.front().payload);
}

TEST(ValidateDocument, ReportsEachBrokenReference) {
    struct Case {
        char const* name;
        std::function<void(Document&)> mutate;
        Lines findings;
    };
    Case const cases[] = {
        {"nothing broken", [](Document&) {}, {}},
        // Findings come in the order of the document.
        {"every reference to a record that is not there",
         [](Document& d) {
             d.program.termination.source = span_in(5);
             d.frames[0].system_id = chem::SystemId(6);
             d.jobs[0] = {JobId(1), chem::SystemId(7), 0, JobId(8), {}, {}, {}, "", "", "", {StepId(9)}, {}, {}};
             step_of(d).job_id = JobId(11);
             step_of(d).system_id = chem::SystemId(10);
             step_of(d).frame_id = chem::FrameId(12);
             d.analyses[0].job_id = JobId(13);
             d.analyses[0].reference_step_id = StepId(14);
         },
         {"warning qc.model.unknown_source: Program termination names source 5" + absent,
          "warning qc.model.unknown_system: Frame 1 names system 6" + absent,
          "warning qc.model.unknown_system: Job 1 names system 7" + absent,
          "warning qc.model.unknown_job: Job 1 names parent job 8" + absent,
          "warning qc.model.unknown_step: Job 1 names step 9" + absent,
          "warning qc.model.unknown_job: Step 1 names job 11" + absent,
          "warning qc.model.unknown_system: Step 1 names system 10" + absent,
          "warning qc.model.unknown_frame: Step 1 names frame 12" + absent,
          "warning qc.model.unknown_job: Analysis 1 names job 13" + absent,
          "warning qc.model.unknown_step: Analysis 1 names step 14" + absent}},
        // Energies are looked up in their own owner, not across the document.
        {"preferred energy that only the step holds",
         [](Document& d) { excited_of(d).total_energies[0].id = EnergyId(2); },
         {"warning qc.model.unknown_energy: Analysis 1 names energy 1, which the block does not contain."}},
        {"unknown primary energy", [](Document& d) { step_of(d).primary_energy_id = EnergyId(9); },
         {"warning qc.model.unknown_energy: Step 1 names energy 9, which the step does not contain."}},
        {"primary energy of an empty step", [](Document& d) { step_of(d).energies.clear(); },
         {"warning qc.model.unknown_energy: Step 1 names energy 2, which the step does not contain."}},
        {"energy in an unknown source", [](Document& d) { step_of(d).energies[1].source = span_in(9); },
         {"warning qc.model.unknown_source: Energy 2 of step 1 names source 9" + absent}},
        {"every span without its source", [](Document& d) { d.sources.clear(); },
         unknown_sources({"Program termination", "System 1", "Frame 1", "Termination of job 1", "Job 1",
                          "Energy 1 of step 1", "Energy 2 of step 1", "Gradient of step 1", "Convergence of step 1",
                          "Step 1", "State 2 of analysis 1", "Energy 1 of analysis 1", "Peak 1 of analysis 1",
                          "Analysis 1"})},
        // Only the second and later copies are reported, each once.
        {"copies of top-level records",
         [](Document& d) {
             d.sources.push_back(d.sources[0]);
             d.frames.push_back(d.frames[0]);
             d.jobs = {d.jobs[0], d.jobs[0], d.jobs[0]};
         },
         {"warning qc.model.duplicate_id: Source 1 appears more than once in the document.",
          "warning qc.model.duplicate_id: Frame 1 appears more than once in the document.",
          "warning qc.model.duplicate_id: Job 1 appears more than once in the document.",
          "warning qc.model.duplicate_id: Job 1 appears more than once in the document."}},
        {"duplicate atom", [](Document& d) { d.systems[0].topology.atoms[1].id = chem::AtomId(1); },
         {"warning qc.model.duplicate_id: Atom 1 appears more than once in system 1."}},
        // Atom ids only need to be unique within their own system.
        {"same atom ids in two systems",
         [](Document& d) {
             d.systems.push_back(d.systems[0]);
             d.systems[1].id = chem::SystemId(2);
         },
         {}},
        {"duplicate energy in a step", [](Document& d) { step_of(d).energies[1].id = EnergyId(1); },
         {"warning qc.model.duplicate_id: Energy 1 appears more than once in step 1.",
          "warning qc.model.unknown_energy: Step 1 names energy 2, which the step does not contain."}},
        {"duplicate energy in an analysis",
         [](Document& d) { excited_of(d).total_energies.push_back(energy(1, -75.7)); },
         {"warning qc.model.duplicate_id: Energy 1 appears more than once in analysis 1."}},
        {"frame with too few positions", [](Document& d) { d.frames[0].positions_angstrom.pop_back(); },
         {"warning qc.model.atom_count_mismatch: Frame 1 holds 1 position, but system 1 has 2 atoms."}},
        {"frame with too many positions", [](Document& d) { d.frames[0].positions_angstrom.resize(3); },
         {"warning qc.model.atom_count_mismatch: Frame 1 holds 3 positions, but system 1 has 2 atoms."}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        Document document = well_formed();
        c.mutate(document);
        EXPECT_EQ(describe(validate_document(document)), c.findings);
    }
}

}  // namespace
}  // namespace morv::qc
