#include <morv/qc/model.hpp>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace morv::qc {
namespace {

using model::Diagnostic;
using model::Severity;
// Hashed, so that a check costs time linear in the document.
using IdSet = std::unordered_set<std::uint32_t>;

// Ids of a list, with the second and later occurrences of an id reported as
// they are met.
class DuplicateFinder {
public:
    bool seen_before(std::uint32_t id) { return !ids_.insert(id).second; }

private:
    IdSet ids_;
};

template <typename Records>
IdSet ids_of(Records const& records) {
    IdSet ids;
    for (auto const& record : records) {
        ids.insert(record.id.value);
    }
    return ids;
}

std::string numbered(char const* kind, std::uint32_t id) { return std::string(kind) + " " + std::to_string(id); }

// "1 atom", "3 atoms".
std::string counted(std::size_t count, char const* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// "System 3", from a kind written in lower case.
std::string capitalized(std::string text) {
    if (!text.empty() && text.front() >= 'a' && text.front() <= 'z') {
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    }
    return text;
}

class Validator {
public:
    explicit Validator(Document const& document)
        : document_(document),
          source_ids_(ids_of(document.sources)),
          system_ids_(ids_of(document.systems)),
          frame_ids_(ids_of(document.frames)),
          job_ids_(ids_of(document.jobs)),
          step_ids_(ids_of(document.steps)) {
        for (auto const& system : document.systems) {
            atom_counts_.emplace(system.id.value, system.topology.atoms.size());
        }
    }

    std::vector<Diagnostic> run() {
        check_span("Program termination", document_.program.termination.source);
        check_sources();
        check_systems();
        check_frames();
        check_jobs();
        check_steps();
        check_analyses();
        return std::move(findings_);
    }

private:
    void report(char const* code, std::string message) {
        findings_.push_back(Diagnostic{Severity::warning, std::string("qc.model.") + code, std::move(message),
                                       std::nullopt});
    }

    void check_duplicate(DuplicateFinder& finder, std::string const& record, std::uint32_t id,
                         std::string const& where) {
        if (finder.seen_before(id)) {
            report("duplicate_id", record + " appears more than once in " + where + ".");
        }
    }

    void check_reference(std::string const& record, IdSet const& ids, char const* code, char const* kind,
                         std::uint32_t id) {
        if (ids.count(id) == 0) {
            report(code, record + " names " + numbered(kind, id) + ", which the document does not contain.");
        }
    }

    void check_span(std::string const& record, std::optional<model::SourceSpan> const& span) {
        if (span) {
            check_reference(record, source_ids_, "unknown_source", "source", span->source_id.value);
        }
    }

    void check_energies(std::string const& owner, std::string const& owner_kind,
                        std::vector<EnergyRecord> const& energies, std::optional<EnergyId> const& named) {
        DuplicateFinder duplicates;
        IdSet ids;
        for (auto const& energy : energies) {
            std::string const record = numbered("Energy", energy.id.value);
            check_duplicate(duplicates, record, energy.id.value, owner);
            check_span(record + " of " + owner, energy.source);
            ids.insert(energy.id.value);
        }
        if (named && ids.count(named->value) == 0) {
            report("unknown_energy", capitalized(owner) + " names " + numbered("energy", named->value) +
                                         ", which the " + owner_kind + " does not contain.");
        }
    }

    void check_sources() {
        DuplicateFinder duplicates;
        for (auto const& source : document_.sources) {
            check_duplicate(duplicates, numbered("Source", source.id.value), source.id.value, "the document");
        }
    }

    void check_systems() {
        DuplicateFinder duplicates;
        for (auto const& system : document_.systems) {
            std::string const record = numbered("System", system.id.value);
            check_duplicate(duplicates, record, system.id.value, "the document");
            DuplicateFinder atoms;
            for (auto const& atom : system.topology.atoms) {
                check_duplicate(atoms, numbered("Atom", atom.id.value), atom.id.value,
                                numbered("system", system.id.value));
            }
            check_span(record, system.source);
        }
    }

    void check_frames() {
        DuplicateFinder duplicates;
        for (auto const& frame : document_.frames) {
            std::string const record = numbered("Frame", frame.id.value);
            check_duplicate(duplicates, record, frame.id.value, "the document");
            check_reference(record, system_ids_, "unknown_system", "system", frame.system_id.value);
            auto const atoms = atom_counts_.find(frame.system_id.value);
            if (atoms != atom_counts_.end() && atoms->second != frame.positions_angstrom.size()) {
                report("atom_count_mismatch", record + " holds " + counted(frame.positions_angstrom.size(), "position") +
                                                  ", but " + numbered("system", frame.system_id.value) + " has " +
                                                  counted(atoms->second, "atom") + ".");
            }
            check_span(record, frame.source);
        }
    }

    void check_jobs() {
        DuplicateFinder duplicates;
        for (auto const& job : document_.jobs) {
            std::string const record = numbered("Job", job.id.value);
            check_duplicate(duplicates, record, job.id.value, "the document");
            check_reference(record, system_ids_, "unknown_system", "system", job.system_id.value);
            if (job.parent_job_id) {
                check_reference(record, job_ids_, "unknown_job", "parent job", job.parent_job_id->value);
            }
            for (auto const step_id : job.step_ids) {
                check_reference(record, step_ids_, "unknown_step", "step", step_id.value);
            }
            check_span("Termination of " + numbered("job", job.id.value), job.termination.source);
            check_span(record, job.source);
        }
    }

    void check_steps() {
        DuplicateFinder duplicates;
        for (auto const& step : document_.steps) {
            std::string const record = numbered("Step", step.id.value);
            std::string const owner = numbered("step", step.id.value);
            check_duplicate(duplicates, record, step.id.value, "the document");
            check_reference(record, job_ids_, "unknown_job", "job", step.job_id.value);
            check_reference(record, system_ids_, "unknown_system", "system", step.system_id.value);
            if (step.frame_id) {
                check_reference(record, frame_ids_, "unknown_frame", "frame", step.frame_id->value);
            }
            check_energies(owner, "step", step.energies, step.primary_energy_id);
            if (step.gradient) {
                check_span("Gradient of " + owner, step.gradient->source);
            }
            if (step.convergence) {
                check_span("Convergence of " + owner, step.convergence->source);
            }
            check_span(record, step.source);
        }
    }

    void check_payload(std::string const& owner, ExcitedStateBlock const& block) {
        std::size_t position = 0;
        for (auto const& state : block.states) {
            check_span("State " + std::to_string(++position) + " of " + owner, state.source);
        }
        check_energies(owner, "block", block.total_energies, block.preferred_total_energy_id);
        position = 0;
        for (auto const& peak : block.absorption_peaks) {
            check_span("Peak " + std::to_string(++position) + " of " + owner, peak.source);
        }
    }

    void check_payload(std::string const& owner, DipoleBlock const& block) {
        std::size_t position = 0;
        for (auto const& moment : block.moments) {
            check_span("Moment " + std::to_string(++position) + " of " + owner, moment.source);
        }
    }

    void check_payload(std::string const& owner, ScalarPropertyBlock const& block) {
        std::size_t position = 0;
        for (auto const& property : block.properties) {
            check_span("Property " + std::to_string(++position) + " of " + owner, property.source);
        }
    }

    // These alternatives hold no references. Each alternative is named, so
    // that a new one fails to compile until it says what it checks.
    void check_payload(std::string const&, VibrationalBlock const&) {}
    void check_payload(std::string const&, OrbitalSetBlock const&) {}
    void check_payload(std::string const&, ThermochemistryBlock const&) {}
    void check_payload(std::string const&, AtomicChargeBlock const&) {}

    void check_analyses() {
        DuplicateFinder duplicates;
        for (auto const& block : document_.analyses) {
            std::string const record = numbered("Analysis", block.id.value);
            check_duplicate(duplicates, record, block.id.value, "the document");
            check_reference(record, job_ids_, "unknown_job", "job", block.job_id.value);
            if (block.reference_step_id) {
                check_reference(record, step_ids_, "unknown_step", "step", block.reference_step_id->value);
            }
            std::string const owner = numbered("analysis", block.id.value);
            std::visit([&](auto const& payload) { check_payload(owner, payload); }, block.payload);
            check_span(record, block.source);
        }
    }

    Document const& document_;
    IdSet const source_ids_;
    IdSet const system_ids_;
    IdSet const frame_ids_;
    IdSet const job_ids_;
    IdSet const step_ids_;
    // The first system of an id is the one a frame is held against.
    std::unordered_map<std::uint32_t, std::size_t> atom_counts_;
    std::vector<Diagnostic> findings_;
};

}  // namespace

std::vector<Diagnostic> validate_document(Document const& document) { return Validator(document).run(); }

}  // namespace morv::qc
