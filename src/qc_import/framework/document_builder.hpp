#pragma once
// Puts records into a document and gives each its identifier, so that the
// readers never count ids themselves and every reference they make names a
// record that exists.
#include "framework/line_cursor.hpp"

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <future>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morv::qc::import {

// The symbol of an element by atomic number, "" outside 1..118.
std::string_view element_symbol(int atomic_number);

class DocumentBuilder {
public:
    // The source of this path if there is one already, else a new one.
    model::SourceId source_for(std::string path, std::optional<std::uint64_t> size_bytes);
    // The output being read, with its size, and the program that wrote it.
    // Its SHA-256 digest joins the document in finish_import: `text` must
    // stay alive until then.
    model::SourceId add_output(std::string_view file_name, std::string_view text, ProgramKind kind,
                               std::string name);

    // The system with these atoms and this state if one exists already, else
    // a new one with this label: the jobs of one run on one molecule share
    // their system.
    chem::SystemId system_for(std::vector<int> const& atomic_numbers, std::optional<chem::ElectronicState> state,
                              std::string const& label, std::optional<model::SourceSpan> source);
    chem::FrameId add_frame(chem::SystemId system, std::vector<chem::Vec3> positions_angstrom,
                            std::optional<model::SourceSpan> source);

    // The job's ordinal follows the order of the jobs; a job after the first
    // is linked to the one before it.
    JobId add_job(CalculationJob job);
    CalculationJob& job(JobId id);

    // Gives the job, and the steps it has already, their system, which an
    // output names after some of the job's records.
    void assign_system(JobId job, chem::SystemId system);
    // What a job needs though its output stopped before saying it: a system,
    // one without atoms when no geometry was read, and a task, a single
    // point. Returns the job's system.
    chem::SystemId finish_job(JobId job, std::optional<chem::SystemId> system,
                              std::optional<chem::ElectronicState> state, std::string const& label);

    StepId add_step(JobId job, std::optional<chem::FrameId> frame, std::optional<model::SourceSpan> source);
    CalculationStep& step(StepId id);
    // Widens the step's span to a record found in it.
    void extend_step(StepId id, model::SourceSpan const& record);
    // Whether the step's frame has exactly these positions: programs print a
    // geometry again where nothing moved.
    bool step_is_at(StepId id, std::vector<chem::Vec3> const& positions_angstrom);
    // A later energy of the same label in a step replaces the earlier one;
    // the step's primary energy is the last one recorded.
    void add_energy(StepId step, EnergyKind kind, std::string label, std::string method, double value,
                    std::optional<model::SourceSpan> source);
    EnergyId next_energy_id() { return EnergyId(++energy_count_); }
    // add_energy, the step's span widened to the number read.
    void record_energy(StepId step, EnergyKind kind, std::string label, std::string method, double value,
                       model::SourceSpan const& source);

    AnalysisId add_analysis(JobId job, std::optional<StepId> step, AnalysisPayload payload,
                            std::optional<model::SourceSpan> source);

    // Ends an import. A job that never reached its termination line was cut:
    // the import is partial, with the warning `truncated_code` at the
    // output's last line. The program ends as its last job did, and the
    // document goes into `result`.
    void finish_import(model::ParseResult<Document>& result, LineCursor const& lines, model::SourceId output,
                       std::string const& truncated_code, std::string_view program_name);

    Document& document() { return document_; }
    Document take() { return std::move(document_); }

private:
    Document document_;
    // The digest of the output. Hashing costs a fifth of an import, so a
    // large output is hashed on a second thread while the reader reads it.
    std::future<std::string> output_digest_;
    std::uint32_t energy_count_ = 0;
};

}  // namespace morv::qc::import
