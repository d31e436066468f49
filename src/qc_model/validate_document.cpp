#include <morv/qc/model.hpp>

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace morv::qc {
namespace {

using model::Diagnostic;
using model::Severity;

// Ids of a list. Most are small and dense, and take a bit each; the others
// are hashed, so that a check costs time linear in the document.
class IdSet {
public:
    // False when the id was there already.
    bool insert(std::uint32_t id) {
        if (id >= dense_limit) {
            return sparse_.insert(id).second;
        }
        if (id >= dense_.size()) {
            dense_.resize(std::max<std::size_t>(id + 1, 2 * dense_.size()));
        }
        bool const seen = dense_[id];
        dense_[id] = true;
        return !seen;
    }

    bool contains(std::uint32_t id) const {
        return id >= dense_limit ? sparse_.count(id) != 0 : id < dense_.size() && dense_[id];
    }

private:
    static constexpr std::uint32_t dense_limit = 1U << 16;

    std::vector<bool> dense_;
    std::unordered_set<std::uint32_t> sparse_;
};

// Ids of a list, with the second and later occurrences of an id reported as
// they are met.
class DuplicateFinder {
public:
    bool seen_before(std::uint32_t id) { return !ids_.insert(id); }

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
        check_span([] { return std::string("Program termination"); }, document_.program.termination.source);
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

    // Names of records come as functions that spell them, called only when a
    // finding is made: a valid document makes none, and spelling the name of
    // every record cost more than the checks themselves.
    template <typename Name, typename Where>
    void check_duplicate(DuplicateFinder& finder, Name const& record, std::uint32_t id, Where const& where) {
        if (finder.seen_before(id)) {
            report("duplicate_id", record() + " appears more than once in " + where() + ".");
        }
    }

    template <typename Name>
    void check_reference(Name const& record, IdSet const& ids, char const* code, char const* kind, std::uint32_t id) {
        if (!ids.contains(id)) {
            report(code, record() + " names " + numbered(kind, id) + ", which the document does not contain.");
        }
    }

    template <typename Name>
    void check_span(Name const& record, std::optional<model::SourceSpan> const& span) {
        if (span) {
            check_reference(record, source_ids_, "unknown_source", "source", span->source_id.value);
        }
    }

    template <typename Name>
    void check_energies(Name const& owner, char const* owner_kind, std::vector<EnergyRecord> const& energies,
                        std::optional<EnergyId> const& named) {
        DuplicateFinder duplicates;
        IdSet ids;
        for (auto const& energy : energies) {
            auto const record = [&] { return numbered("Energy", energy.id.value); };
            check_duplicate(duplicates, record, energy.id.value, owner);
            check_span([&] { return record() + " of " + owner(); }, energy.source);
            ids.insert(energy.id.value);
        }
        if (named && !ids.contains(named->value)) {
            report("unknown_energy", capitalized(owner()) + " names " + numbered("energy", named->value) +
                                         ", which the " + owner_kind + " does not contain.");
        }
    }

    // "State 2 of analysis 5" for each record of a list that has a span.
    template <typename Name, typename Records>
    void check_spans_of(char const* kind, Records const& records, Name const& owner) {
        std::size_t position = 0;
        for (auto const& record : records) {
            ++position;
            check_span([&] { return kind + (" " + std::to_string(position)) + " of " + owner(); }, record.source);
        }
    }

    void check_sources() {
        DuplicateFinder duplicates;
        for (auto const& source : document_.sources) {
            check_duplicate(duplicates, [&] { return numbered("Source", source.id.value); }, source.id.value,
                            the_document);
        }
    }

    void check_systems() {
        DuplicateFinder duplicates;
        for (auto const& system : document_.systems) {
            auto const record = [&] { return numbered("System", system.id.value); };
            check_duplicate(duplicates, record, system.id.value, the_document);
            DuplicateFinder atoms;
            for (auto const& atom : system.topology.atoms) {
                check_duplicate(atoms, [&] { return numbered("Atom", atom.id.value); }, atom.id.value,
                                [&] { return numbered("system", system.id.value); });
            }
            check_span(record, system.source);
        }
    }

    void check_frames() {
        DuplicateFinder duplicates;
        for (auto const& frame : document_.frames) {
            auto const record = [&] { return numbered("Frame", frame.id.value); };
            check_duplicate(duplicates, record, frame.id.value, the_document);
            check_reference(record, system_ids_, "unknown_system", "system", frame.system_id.value);
            auto const atoms = atom_counts_.find(frame.system_id.value);
            if (atoms != atom_counts_.end() && atoms->second != frame.positions_angstrom.size()) {
                report("atom_count_mismatch", record() + " holds " +
                                                  counted(frame.positions_angstrom.size(), "position") + ", but " +
                                                  numbered("system", frame.system_id.value) + " has " +
                                                  counted(atoms->second, "atom") + ".");
            }
            check_span(record, frame.source);
        }
    }

    void check_jobs() {
        DuplicateFinder duplicates;
        for (auto const& job : document_.jobs) {
            auto const record = [&] { return numbered("Job", job.id.value); };
            check_duplicate(duplicates, record, job.id.value, the_document);
            check_reference(record, system_ids_, "unknown_system", "system", job.system_id.value);
            if (job.parent_job_id) {
                check_reference(record, job_ids_, "unknown_job", "parent job", job.parent_job_id->value);
            }
            for (auto const step_id : job.step_ids) {
                check_reference(record, step_ids_, "unknown_step", "step", step_id.value);
            }
            check_span([&] { return "Termination of " + numbered("job", job.id.value); }, job.termination.source);
            check_span(record, job.source);
        }
    }

    void check_steps() {
        DuplicateFinder duplicates;
        for (auto const& step : document_.steps) {
            auto const record = [&] { return numbered("Step", step.id.value); };
            auto const owner = [&] { return numbered("step", step.id.value); };
            check_duplicate(duplicates, record, step.id.value, the_document);
            check_reference(record, job_ids_, "unknown_job", "job", step.job_id.value);
            check_reference(record, system_ids_, "unknown_system", "system", step.system_id.value);
            if (step.frame_id) {
                check_reference(record, frame_ids_, "unknown_frame", "frame", step.frame_id->value);
            }
            check_energies(owner, "step", step.energies, step.primary_energy_id);
            if (step.gradient) {
                check_span([&] { return "Gradient of " + owner(); }, step.gradient->source);
            }
            if (step.convergence) {
                check_span([&] { return "Convergence of " + owner(); }, step.convergence->source);
            }
            check_span(record, step.source);
        }
    }

    template <typename Name>
    void check_payload(Name const& owner, ExcitedStateBlock const& block) {
        check_spans_of("State", block.states, owner);
        check_energies(owner, "block", block.total_energies, block.preferred_total_energy_id);
        check_spans_of("Peak", block.absorption_peaks, owner);
    }

    template <typename Name>
    void check_payload(Name const& owner, DipoleBlock const& block) {
        check_spans_of("Moment", block.moments, owner);
    }

    template <typename Name>
    void check_payload(Name const& owner, ScalarPropertyBlock const& block) {
        check_spans_of("Property", block.properties, owner);
    }

    // These alternatives hold no references. Each alternative is named, so
    // that a new one fails to compile until it says what it checks.
    template <typename Name>
    void check_payload(Name const&, VibrationalBlock const&) {}
    template <typename Name>
    void check_payload(Name const&, OrbitalSetBlock const&) {}
    template <typename Name>
    void check_payload(Name const&, ThermochemistryBlock const&) {}
    template <typename Name>
    void check_payload(Name const&, AtomicChargeBlock const&) {}

    void check_analyses() {
        DuplicateFinder duplicates;
        for (auto const& block : document_.analyses) {
            auto const record = [&] { return numbered("Analysis", block.id.value); };
            check_duplicate(duplicates, record, block.id.value, the_document);
            check_reference(record, job_ids_, "unknown_job", "job", block.job_id.value);
            if (block.reference_step_id) {
                check_reference(record, step_ids_, "unknown_step", "step", block.reference_step_id->value);
            }
            auto const owner = [&] { return numbered("analysis", block.id.value); };
            std::visit([&](auto const& payload) { check_payload(owner, payload); }, block.payload);
            check_span(record, block.source);
        }
    }

    static std::string the_document() { return "the document"; }

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
