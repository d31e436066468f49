#include "framework/document_builder.hpp"

#include "framework/sha256.hpp"

#include <array>
#include <system_error>
#include <utility>

namespace morv::qc::import {

std::string_view element_symbol(int atomic_number) {
    static constexpr std::array<char const*, 119> symbols = {
        "",   "H",  "He", "Li", "Be", "B",  "C",  "N",  "O",  "F",  "Ne", "Na", "Mg", "Al", "Si", "P",  "S",
        "Cl", "Ar", "K",  "Ca", "Sc", "Ti", "V",  "Cr", "Mn", "Fe", "Co", "Ni", "Cu", "Zn", "Ga", "Ge", "As",
        "Se", "Br", "Kr", "Rb", "Sr", "Y",  "Zr", "Nb", "Mo", "Tc", "Ru", "Rh", "Pd", "Ag", "Cd", "In", "Sn",
        "Sb", "Te", "I",  "Xe", "Cs", "Ba", "La", "Ce", "Pr", "Nd", "Pm", "Sm", "Eu", "Gd", "Tb", "Dy", "Ho",
        "Er", "Tm", "Yb", "Lu", "Hf", "Ta", "W",  "Re", "Os", "Ir", "Pt", "Au", "Hg", "Tl", "Pb", "Bi", "Po",
        "At", "Rn", "Fr", "Ra", "Ac", "Th", "Pa", "U",  "Np", "Pu", "Am", "Cm", "Bk", "Cf", "Es", "Fm", "Md",
        "No", "Lr", "Rf", "Db", "Sg", "Bh", "Hs", "Mt", "Ds", "Rg", "Cn", "Nh", "Fl", "Mc", "Lv", "Ts", "Og"};
    if (atomic_number < 1 || atomic_number >= static_cast<int>(symbols.size())) {
        return "";
    }
    return symbols[static_cast<std::size_t>(atomic_number)];
}

namespace {

// Below this size a thread costs about what it saves.
constexpr std::size_t size_hashed_aside = std::size_t{64} << 10;

std::future<std::string> start_digest(std::string_view text) {
    if (text.size() >= size_hashed_aside) {
        try {
            return std::async(std::launch::async, [text] { return sha256_hex(text); });
        } catch (std::system_error const&) {
            // No thread to be had: the digest is taken when it is asked for.
        }
    }
    return std::async(std::launch::deferred, [text] { return sha256_hex(text); });
}

}  // namespace

model::SourceId DocumentBuilder::source_for(std::string path, std::optional<std::uint64_t> size_bytes) {
    for (auto const& known : document_.sources) {
        if (known.path == path) {
            return known.id;
        }
    }
    model::SourceFile file;
    file.id = model::SourceId(static_cast<std::uint32_t>(document_.sources.size() + 1));
    file.path = std::move(path);
    file.size_bytes = size_bytes;
    document_.sources.push_back(std::move(file));
    return document_.sources.back().id;
}

chem::SystemId DocumentBuilder::system_for(std::vector<int> const& atomic_numbers,
                                           std::optional<chem::ElectronicState> state, std::string const& label,
                                           std::optional<model::SourceSpan> source) {
    for (auto const& system : document_.systems) {
        if (system.electronic_state != state || system.topology.atoms.size() != atomic_numbers.size()) {
            continue;
        }
        bool same = true;
        for (std::size_t i = 0; i < atomic_numbers.size() && same; ++i) {
            same = system.topology.atoms[i].atomic_number == static_cast<std::uint16_t>(atomic_numbers[i]);
        }
        if (same) {
            return system.id;
        }
    }
    chem::ChemicalSystem system;
    system.id = chem::SystemId(static_cast<std::uint32_t>(document_.systems.size() + 1));
    system.label = label;
    for (std::size_t i = 0; i < atomic_numbers.size(); ++i) {
        chem::AtomSite atom;
        atom.id = chem::AtomId(static_cast<std::uint32_t>(i + 1));
        atom.symbol = std::string(element_symbol(atomic_numbers[i]));
        // The format reads an atom without a label of its own as labelled by
        // its symbol.
        atom.raw_label = atom.symbol;
        if (atomic_numbers[i] > 0) {
            atom.atomic_number = static_cast<std::uint16_t>(atomic_numbers[i]);
        }
        system.topology.atoms.push_back(std::move(atom));
    }
    system.electronic_state = state;
    system.source = source;
    document_.systems.push_back(std::move(system));
    return document_.systems.back().id;
}

model::SourceId DocumentBuilder::add_output(std::string_view file_name, std::string_view text, ProgramKind kind,
                                            std::string name) {
    auto const source = source_for(std::string(file_name), text.size());
    output_digest_ = start_digest(text);
    document_.program.kind = kind;
    document_.program.name = std::move(name);
    document_.normalization.profile = ResultProfile::standard;
    return source;
}

chem::FrameId DocumentBuilder::add_frame(chem::SystemId system, std::vector<chem::Vec3> positions_angstrom,
                                         std::optional<model::SourceSpan> source) {
    chem::GeometryFrame frame;
    frame.id = chem::FrameId(static_cast<std::uint32_t>(document_.frames.size() + 1));
    frame.system_id = system;
    frame.positions_angstrom = std::move(positions_angstrom);
    frame.source = source;
    document_.frames.push_back(std::move(frame));
    return document_.frames.back().id;
}

JobId DocumentBuilder::add_job(CalculationJob job) {
    auto const ordinal = static_cast<std::uint32_t>(document_.jobs.size() + 1);
    job.id = JobId(ordinal);
    job.ordinal = ordinal;
    if (ordinal > 1) {
        job.parent_job_id = JobId(ordinal - 1);
        job.relation = JobRelation::link;
    }
    document_.jobs.push_back(std::move(job));
    return document_.jobs.back().id;
}

CalculationJob& DocumentBuilder::job(JobId id) { return document_.jobs.at(id.value - 1); }

StepId DocumentBuilder::add_step(JobId job_id, std::optional<chem::FrameId> frame,
                                 std::optional<model::SourceSpan> source) {
    auto& owner = job(job_id);
    CalculationStep step;
    step.id = StepId(static_cast<std::uint32_t>(document_.steps.size() + 1));
    step.job_id = job_id;
    step.system_id = owner.system_id;
    step.ordinal = static_cast<std::uint32_t>(owner.step_ids.size() + 1);
    step.frame_id = frame;
    step.source = source;
    owner.step_ids.push_back(step.id);
    document_.steps.push_back(std::move(step));
    return document_.steps.back().id;
}

CalculationStep& DocumentBuilder::step(StepId id) { return document_.steps.at(id.value - 1); }

void DocumentBuilder::assign_system(JobId job_id, chem::SystemId system) {
    auto& owner = job(job_id);
    owner.system_id = system;
    for (auto const id : owner.step_ids) {
        step(id).system_id = system;
    }
}

chem::SystemId DocumentBuilder::finish_job(JobId job_id, std::optional<chem::SystemId> system,
                                           std::optional<chem::ElectronicState> state, std::string const& label) {
    if (!system) {
        system = system_for({}, state, label, std::nullopt);
        assign_system(job_id, *system);
    }
    auto& owner = job(job_id);
    if (owner.tasks.empty()) {
        owner.tasks.push_back(TaskKind::single_point);
        owner.primary_task = TaskKind::single_point;
    }
    return *system;
}

void DocumentBuilder::extend_step(StepId id, model::SourceSpan const& record) {
    auto& owner = step(id);
    if (!owner.source) {
        owner.source = record;
    } else if (owner.source->end.offset < record.end.offset) {
        owner.source->end = record.end;
    }
}

void DocumentBuilder::add_energy(StepId step_id, EnergyKind kind, std::string label, std::string method,
                                 double value, std::optional<model::SourceSpan> source) {
    auto& owner = step(step_id);
    for (auto& energy : owner.energies) {
        if (energy.label == label) {
            energy.kind = kind;
            energy.method = std::move(method);
            energy.value = value;
            energy.source = source;
            owner.primary_energy_id = energy.id;
            return;
        }
    }
    EnergyRecord energy{next_energy_id(), kind, std::move(label), std::move(method), value, source};
    owner.primary_energy_id = energy.id;
    owner.energies.push_back(std::move(energy));
}

void DocumentBuilder::record_energy(StepId step_id, EnergyKind kind, std::string label, std::string method,
                                    double value, model::SourceSpan const& source) {
    add_energy(step_id, kind, std::move(label), std::move(method), value, source);
    extend_step(step_id, source);
}

AnalysisId DocumentBuilder::add_analysis(JobId job, std::optional<StepId> step, AnalysisPayload payload,
                                         std::optional<model::SourceSpan> source) {
    AnalysisBlock block;
    auto const ordinal = static_cast<std::uint32_t>(document_.analyses.size() + 1);
    block.id = AnalysisId(ordinal);
    block.job_id = job;
    block.ordinal = ordinal;
    block.reference_step_id = step;
    block.payload = std::move(payload);
    block.source = source;
    document_.analyses.push_back(std::move(block));
    return document_.analyses.back().id;
}

bool DocumentBuilder::step_is_at(StepId id, std::vector<chem::Vec3> const& positions_angstrom) {
    auto const& frame_id = step(id).frame_id;
    return frame_id && document_.frames.at(frame_id->value - 1).positions_angstrom == positions_angstrom;
}

void DocumentBuilder::finish_import(model::ParseResult<Document>& result, LineCursor const& lines,
                                    model::SourceId output, std::string const& truncated_code,
                                    std::string_view program_name) {
    result.status = model::ParseStatus::complete;
    for (auto& job : document_.jobs) {
        if (job.termination.kind == TerminationKind::unknown) {
            job.termination.kind = TerminationKind::truncated;
            result.status = model::ParseStatus::partial;
        }
    }
    if (result.status == model::ParseStatus::partial && lines.size() > 0) {
        auto const& end = lines.at(lines.size() - 1);
        result.diagnostics.push_back({model::Severity::warning, truncated_code,
                                      "the output stops at line " + std::to_string(end.number) + " before " +
                                          std::string(program_name) + "'s termination line",
                                      span_of_line(output, end)});
    }
    if (!document_.jobs.empty()) {
        document_.program.termination = document_.jobs.back().termination;
    }
    if (output_digest_.valid()) {
        document_.sources[output.value - 1].sha256 = output_digest_.get();
    }
    result.value = take();
}

}  // namespace morv::qc::import
