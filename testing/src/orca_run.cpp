#include "odd_values.hpp"

#include <morv/testing/document_builder.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace morv::testing {
namespace {

using chem::Vec3;
using model::Diagnostic;
using model::Severity;
using model::SourceId;
using model::SourcePosition;
using model::SourceSpan;

// All arithmetic below is +, -, *, /, sqrt and rounding to whole numbers, which
// IEEE 754 defines exactly, and the build forbids fusing a multiply with an
// add; no libm function whose last bit may vary is used. So a seed gives the
// same numbers on every platform.

struct Element {
    char const* symbol;
    std::uint16_t atomic_number;
    double mass_amu;
    // About the total energy of the free atom, in hartree.
    double atom_energy;
    // Basis functions of the element in def2-TZVP.
    long long basis_functions;
    // Share of the element among the atoms of a drug-like molecule.
    double share;
};

constexpr std::array<Element, 7> elements = {{
    {"H", 1, 1.008, -0.4998, 6, 0.45},
    {"C", 6, 12.011, -37.79, 31, 0.35},
    {"N", 7, 14.007, -54.53, 31, 0.07},
    {"O", 8, 15.999, -74.97, 31, 0.08},
    {"F", 9, 18.998, -99.66, 31, 0.02},
    {"S", 16, 32.06, -397.66, 37, 0.015},
    {"Cl", 17, 35.45, -459.68, 37, 0.015},
}};

constexpr double hartree_to_cm1 = 219474.6313632;
constexpr double hartree_to_ev = 27.211386245988;
constexpr double bohr_per_angstrom = 1.8897261245650618;
constexpr double debye_per_au = 2.541746473;
// Curvature of the energy around the minimum, in hartree per bohr squared.
constexpr double force_constant = 0.1;

double length(Vec3 const& v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

Vec3 plus(Vec3 const& a, Vec3 const& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }

Vec3 minus(Vec3 const& a, Vec3 const& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }

Vec3 scaled(Vec3 const& v, double factor) { return {v.x * factor, v.y * factor, v.z * factor}; }

// Largest absolute component and root mean square of the components.
std::pair<double, double> max_and_rms(std::vector<Vec3> const& vectors) {
    double largest = 0.0;
    double squares = 0.0;
    for (auto const& v : vectors) {
        largest = std::max({largest, std::abs(v.x), std::abs(v.y), std::abs(v.z)});
        squares += v.x * v.x + v.y * v.y + v.z * v.z;
    }
    return {largest, std::sqrt(squares / static_cast<double>(3 * vectors.size()))};
}

std::string hex_digest(Choices& random) {
    static char const digits[] = "0123456789abcdef";
    std::string text;
    for (int i = 0; i < 64; ++i) {
        text += digits[random.below(16)];
    }
    return text;
}

std::string formatted(char const* format, double a, double b, double c) {
    char buffer[96];
    std::snprintf(buffer, sizeof buffer, format, a, b, c);
    return buffer;
}

// Walks through the program's output file in the order in which the program
// writes it, so that spans come in file order and the file's size is where
// the walk ends.
class OutputFile {
public:
    OutputFile(Choices& random, SourceId id) : random_(random), id_(id) {}

    SourcePosition here() const { return {offset_, line_, 1}; }

    void lines(std::uint64_t count) {
        for (std::uint64_t i = 0; i < count; ++i) {
            offset_ += 20 + random_.below(81) + 1;
            ++line_;
        }
    }

    SourceSpan span_from(SourcePosition const& begin) const { return {id_, begin, here()}; }

    SourceSpan span(std::uint64_t count) {
        SourcePosition const begin = here();
        lines(count);
        return span_from(begin);
    }

    std::uint64_t size_bytes() const { return offset_; }

private:
    Choices& random_;
    SourceId id_;
    std::uint64_t offset_ = 0;
    std::uint64_t line_ = 1;
};

struct Shape {
    std::size_t atoms;
    std::size_t steps;
};

// Bigger molecules take more optimisation steps and have more excited states
// worth asking for.
std::size_t steps_for(std::size_t atoms) { return 3 + atoms / 8; }

std::size_t excited_states_for(std::size_t atoms) { return std::min<std::size_t>(1 + atoms / 8, 40); }

// The factor by which the distance from the minimum shrinks each cycle, such
// that the last of `steps` cycles is within a thousandth of the start and so
// meets every convergence threshold.
double shrink_factor(std::size_t steps) {
    double factor = 0.95;
    for (;;) {
        double left = 1.0;
        for (std::size_t i = 1; i < steps; ++i) {
            left *= factor;
        }
        if (left <= 1e-3) {
            return factor;
        }
        factor -= 0.01;
    }
}

// Bytes of compact text that each kind of record takes, measured on generated
// documents. The vector objects dominate: a position, a displacement and a
// gradient differ only in how many characters their numbers print with.
constexpr double position_bytes = 74.5;
constexpr double displacement_bytes = 78.0;
constexpr double gradient_vector_bytes = 85.0;
constexpr double mode_bytes = 330.0;
constexpr double frame_bytes = 165.0;
constexpr double step_bytes = 2450.0;
constexpr double orbital_bytes = 186.0;
constexpr double charge_record_bytes = 96.0;
constexpr double atom_bytes = 102.0;
constexpr double excited_state_bytes = 2900.0;
constexpr double fixed_bytes = 8500.0;

double estimated_bytes(std::size_t atoms) {
    double const n = static_cast<double>(atoms);
    double const steps = static_cast<double>(steps_for(atoms));
    double const modes = 3.0 * n - 6.0;
    double const per_atom = 4.0 * orbital_bytes + 2.0 * charge_record_bytes + atom_bytes;
    return position_bytes * steps * n + displacement_bytes * modes * n + gradient_vector_bytes * (steps + 1.0) * n +
           mode_bytes * modes + (frame_bytes + step_bytes) * steps + per_atom * n +
           excited_state_bytes * static_cast<double>(excited_states_for(atoms)) + fixed_bytes;
}

// The molecule whose estimate comes closest to the target; three atoms at
// least, so that there are vibrational modes.
Shape shape_for(std::size_t target_bytes) {
    double const target = static_cast<double>(target_bytes);
    std::size_t atoms = 3;
    while (estimated_bytes(atoms + 1) <= target) {
        ++atoms;
    }
    if (target - estimated_bytes(atoms) > estimated_bytes(atoms + 1) - target) {
        ++atoms;
    }
    return {atoms, steps_for(atoms)};
}

struct Atom {
    Element const* element;
    // Where the optimisation ends, in angstrom.
    Vec3 position;
};

class RunBuilder {
public:
    RunBuilder(Choices& choices, Shape shape) : random_(choices), output_(random_, SourceId(1)), shape_(shape) {}

    model::ParseResult<qc::Document> build() {
        make_molecule();
        describe_program();
        output_.lines(60);
        add_system();
        add_optimisation();
        add_final_analyses();
        add_frequency_job();
        add_excited_state_job();
        output_.lines(8);
        document_.program.termination.source = output_.span(2);
        add_sources();
        add_metadata();
        model::ParseResult<qc::Document> result;
        result.value = std::move(document_);
        result.status = model::ParseStatus::complete;
        result.diagnostics = std::move(diagnostics_);
        return result;
    }

private:
    static constexpr std::uint32_t system_id = 1;
    static constexpr std::uint32_t input_source = 2;
    static constexpr std::uint32_t optimisation_job = 1;
    static constexpr std::uint32_t frequency_job = 2;
    static constexpr std::uint32_t excited_state_job = 3;

    Element const& pick_element() {
        double share = random_.unit();
        for (auto const& element : elements) {
            if (share < element.share) {
                return element;
            }
            share -= element.share;
        }
        return elements[1];
    }

    // A tree of bonds: each atom hangs off an earlier heavy atom, at a bond
    // length that fits the pair.
    void make_molecule() {
        std::vector<std::size_t> heavy;
        for (std::size_t i = 0; i < shape_.atoms; ++i) {
            Element const& element = i == 0 ? elements[1] : pick_element();
            Vec3 position{};
            if (i > 0) {
                std::size_t const parent = heavy[random_.below(heavy.size())];
                Vec3 direction = random_.vector(1.0);
                double const norm = length(direction);
                direction = norm > 1e-6 ? scaled(direction, 1.0 / norm) : Vec3{0.0, 0.0, 1.0};
                double const bond = element.atomic_number == 1 ? 1.09 : random_.uniform(1.35, 1.55);
                position = plus(atoms_[parent].position, scaled(direction, bond));
            }
            if (element.atomic_number > 1) {
                heavy.push_back(i);
            }
            atoms_.push_back({&element, position});
            electrons_ += element.atomic_number;
            energy_ += element.atom_energy - (element.atomic_number == 1 ? 0.12 : 0.25);
        }
        // A closed shell: an odd electron count makes the molecule a cation.
        charge_ = electrons_ % 2;
        electrons_ -= charge_;
        occupied_ = static_cast<std::size_t>(electrons_ / 2);
        energy_ += random_.uniform(-0.05, 0.05);
        // The run starts a little away from the minimum.
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            start_offsets_.push_back(random_.vector(0.05));
        }
    }

    void describe_program() {
        auto& program = document_.program;
        program.kind = qc::ProgramKind::orca;
        program.name = "ORCA";
        program.version = "5.0.4";
        program.input_file_name = "job.inp";
        program.termination.kind = qc::TerminationKind::normal;
        program.termination.reason = "ORCA TERMINATED NORMALLY";
        document_.normalization.profile = qc::ResultProfile::full;
    }

    // Hill order: carbon, hydrogen, then the rest alphabetically.
    std::string formula() const {
        std::map<std::string, int> counts;
        for (auto const& atom : atoms_) {
            ++counts[atom.element->symbol];
        }
        std::string text;
        auto const take = [&](std::string const& symbol, int count) {
            text += symbol + (count > 1 ? std::to_string(count) : "");
        };
        for (char const* first : {"C", "H"}) {
            if (auto const found = counts.find(first); found != counts.end()) {
                take(found->first, found->second);
                counts.erase(found);
            }
        }
        for (auto const& [symbol, count] : counts) {
            take(symbol, count);
        }
        return text;
    }

    void add_system() {
        chem::ChemicalSystem system;
        system.id = chem::SystemId(system_id);
        system.label = formula();
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            chem::AtomSite site;
            site.id = chem::AtomId(static_cast<std::uint32_t>(i + 1));
            site.symbol = atoms_[i].element->symbol;
            // The input numbers every fifth atom, as people do for the ones
            // they mean to constrain or look at.
            site.raw_label = i % 5 == 0 ? site.symbol + std::to_string(i + 1) : site.symbol;
            site.atomic_number = atoms_[i].element->atomic_number;
            if (site.symbol == "H" && i % 23 == 7) {
                site.isotope = 2;
            }
            system.topology.atoms.push_back(site);
        }
        // The first nitrogen bonded to an oxygen after it is drawn as an
        // N-oxide, with the charges on both atoms.
        auto& atoms = system.topology.atoms;
        for (std::size_t i = 0; i + 1 < atoms.size(); ++i) {
            if (atoms[i].symbol == "N" && atoms[i + 1].symbol == "O") {
                atoms[i].formal_charge = 1;
                atoms[i + 1].formal_charge = -1;
                break;
            }
        }
        system.electronic_state = chem::ElectronicState{charge_, 1};
        system.source = write_input(atoms);
        document_.systems.push_back(std::move(system));
    }

    qc::EnergyRecord energy(std::uint32_t id, qc::EnergyKind kind, char const* label, char const* method,
                            double value) {
        output_.lines(random_.below(4));
        return {qc::EnergyId(id), kind, label, method, value, output_.span(1)};
    }

    qc::GradientRecord gradient(std::vector<Vec3> vectors) {
        qc::GradientRecord record;
        SourcePosition const begin = output_.here();
        output_.lines(5 + vectors.size());
        auto const [largest, rms] = max_and_rms(vectors);
        record.norm = rms * std::sqrt(static_cast<double>(3 * vectors.size()));
        record.rms = rms;
        record.max = largest;
        record.vectors = std::move(vectors);
        record.source = output_.span_from(begin);
        return record;
    }

    static qc::ConvergenceCriterion criterion(qc::CriterionKind kind, double value, double threshold,
                                              char const* unit) {
        return {kind, value, threshold, std::abs(value) < threshold, unit};
    }

    // The geometry relaxes towards the molecule's minimum, and everything
    // that depends on the distance from it (gradient, energy, step size)
    // shrinks by a constant factor each cycle.
    void add_optimisation() {
        double start_energy = 0.0;
        for (auto const& offset : start_offsets_) {
            double const bohr = length(offset) * bohr_per_angstrom;
            start_energy += 0.5 * force_constant * bohr * bohr;
        }
        qc::CalculationJob job;
        job.id = qc::JobId(optimisation_job);
        job.system_id = chem::SystemId(system_id);
        job.ordinal = 1;
        job.tasks = {qc::TaskKind::optimization};
        job.primary_task = qc::TaskKind::optimization;
        job.method = "RI-MP2";
        job.basis_set = "def2-TZVP";
        job.keywords = input_.substr(0, input_.find('\n'));
        SourcePosition const job_begin = output_.here();
        double const shrink = shrink_factor(shape_.steps);
        double amplitude = 1.0;
        double previous_energy = 0.0;
        std::vector<Vec3> positions = positions_at(amplitude);
        for (std::size_t cycle = 0; cycle < shape_.steps; ++cycle) {
            auto const id = static_cast<std::uint32_t>(cycle + 1);
            std::vector<Vec3> const next = positions_at(amplitude * shrink);
            std::vector<Vec3> forces;
            std::vector<Vec3> moves;
            for (std::size_t i = 0; i < atoms_.size(); ++i) {
                double const gradient_per_angstrom = force_constant * bohr_per_angstrom * amplitude;
                forces.push_back(plus(scaled(start_offsets_[i], gradient_per_angstrom), random_.vector(1e-7)));
                moves.push_back(scaled(minus(next[i], positions[i]), bohr_per_angstrom));
            }
            double const mp2 = energy_ + start_energy * amplitude * amplitude;
            double const scf = mp2 + 0.0165 * electrons_ + random_.uniform(-1e-4, 1e-4);

            output_.lines(40);
            SourcePosition const step_begin = output_.here();
            output_.lines(30 + atoms_.size());
            chem::GeometryFrame frame{chem::FrameId(id), chem::SystemId(system_id), positions,
                                      output_.span_from(step_begin)};
            qc::CalculationStep step;
            step.id = qc::StepId(id);
            step.job_id = qc::JobId(optimisation_job);
            step.system_id = chem::SystemId(system_id);
            step.ordinal = id;
            step.native_cycle = static_cast<std::int32_t>(id);
            step.frame_id = chem::FrameId(id);
            step.energies.push_back(energy(1, qc::EnergyKind::scf, "SCF energy", "HF", scf));
            step.energies.push_back(energy(2, qc::EnergyKind::correlated, "MP2 total energy", "RI-MP2", mp2));
            step.primary_energy_id = qc::EnergyId(2);
            step.gradient = gradient(forces);
            auto const [max_force, rms_force] = max_and_rms(forces);
            auto const [max_move, rms_move] = max_and_rms(moves);
            qc::ConvergenceRecord convergence;
            SourcePosition const convergence_begin = output_.here();
            output_.lines(12);
            if (cycle > 0) {
                convergence.criteria.push_back(
                    criterion(qc::CriterionKind::energy_change, mp2 - previous_energy, 5e-6, "Eh"));
            }
            convergence.criteria.push_back(criterion(qc::CriterionKind::rms_force, rms_force, 1e-4, "Eh/bohr"));
            convergence.criteria.push_back(criterion(qc::CriterionKind::max_force, max_force, 3e-4, "Eh/bohr"));
            convergence.criteria.push_back(criterion(qc::CriterionKind::rms_displacement, rms_move, 2e-3, "bohr"));
            convergence.criteria.push_back(criterion(qc::CriterionKind::max_displacement, max_move, 4e-3, "bohr"));
            bool const converged = std::all_of(convergence.criteria.begin(), convergence.criteria.end(),
                                               [](auto const& c) { return *c.satisfied; });
            convergence.status = converged ? qc::ConvergenceStatus::converged : qc::ConvergenceStatus::not_converged;
            convergence.source = output_.span_from(convergence_begin);
            step.convergence = std::move(convergence);
            step.source = output_.span_from(step_begin);
            if (cycle == 2) {
                diagnostics_.push_back({Severity::warning, "orca.scf.damping",
                                        "SCF needed damping to converge in cycle " + std::to_string(id) + ".",
                                        step.energies.front().source});
            }
            if (cycle + 1 == shape_.steps) {
                diagnostics_.push_back({Severity::note, "orca.opt.converged", "The optimization has converged.",
                                        step.convergence->source});
                final_step_ = id;
                final_gradient_ = step.gradient->vectors;
                final_energy_ = mp2;
                final_scf_energy_ = scf;
            }
            document_.frames.push_back(std::move(frame));
            document_.steps.push_back(std::move(step));
            job.step_ids.push_back(qc::StepId(id));
            previous_energy = mp2;
            amplitude *= shrink;
            positions = next;
        }
        output_.lines(20);
        job.termination = {qc::TerminationKind::normal, "OPTIMIZATION RUN DONE", output_.span(1)};
        job.source = output_.span_from(job_begin);
        document_.jobs.push_back(std::move(job));
    }

    // The minimum plus `amplitude` times the start's distance from it.
    std::vector<Vec3> positions_at(double amplitude) const {
        std::vector<Vec3> positions;
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            positions.push_back(plus(atoms_[i].position, scaled(start_offsets_[i], amplitude)));
        }
        return positions;
    }

    qc::AnalysisBlock analysis(std::uint32_t job, std::uint32_t step, qc::AnalysisPayload payload,
                               SourcePosition const& begin) {
        auto const id = static_cast<std::uint32_t>(document_.analyses.size() + 1);
        return {qc::AnalysisId(id), qc::JobId(job), id, qc::StepId(step), std::move(payload),
                output_.span_from(begin)};
    }

    void add_final_analyses() {
        add_orbitals();
        add_charges("Mulliken", 1.0);
        add_charges("Loewdin", 0.6);
        add_dipoles();
        add_scalar_properties();
    }

    // Core orbitals lie deep, one 1s for each heavy atom; valence and virtual
    // orbitals fill bands around the gap.
    void add_orbitals() {
        std::size_t const count = std::max(4 * atoms_.size(), occupied_ + 10);
        std::vector<double> occupied;
        for (auto const& atom : atoms_) {
            double const z = atom.element->atomic_number;
            if (z > 1 && occupied.size() < occupied_) {
                occupied.push_back(-0.32 * z * z + random_.uniform(-0.05, 0.05));
            }
        }
        while (occupied.size() < occupied_) {
            occupied.push_back(random_.uniform(-1.6, -0.3));
        }
        std::vector<double> virtuals;
        while (virtuals.size() + occupied_ < count) {
            virtuals.push_back(random_.uniform(0.03, 4.5));
        }
        std::sort(occupied.begin(), occupied.end());
        std::sort(virtuals.begin(), virtuals.end());
        homo_ = occupied.back();
        lumo_ = virtuals.front();
        qc::OrbitalSetBlock block;
        block.kind = "canonical";
        int index = 0;
        for (double const energy : occupied) {
            block.orbitals.push_back({index++, qc::SpinChannel::none, 2.0, energy, "A", ""});
        }
        for (double const energy : virtuals) {
            block.orbitals.push_back({index++, qc::SpinChannel::none, 0.0, energy, "A", ""});
        }
        SourcePosition const begin = output_.here();
        output_.lines(6 + count);
        document_.analyses.push_back(analysis(optimisation_job, final_step_, std::move(block), begin));
    }

    // Hydrogens give electrons away, the electronegative atoms take them; the
    // charges are then shifted to sum to the molecule's charge.
    void add_charges(char const* scheme, double scale) {
        std::vector<double> charges;
        double sum = 0.0;
        for (auto const& atom : atoms_) {
            double base = 0.0;
            switch (atom.element->atomic_number) {
                case 1: base = 0.15; break;
                case 6: base = -0.05; break;
                case 16: base = 0.2; break;
                case 17: base = -0.1; break;
                default: base = -0.4; break;
            }
            charges.push_back(scale * (base + random_.uniform(-0.15, 0.15)));
            sum += charges.back();
        }
        double const shift = (static_cast<double>(charge_) - sum) / static_cast<double>(charges.size());
        qc::AtomicChargeBlock block;
        block.scheme = scheme;
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            double const charge = charges[i] + shift;
            qc::AtomicChargeRecord record;
            record.atom_index = static_cast<int>(i);
            record.element = atoms_[i].element->symbol;
            record.population = atoms_[i].element->atomic_number - charge;
            record.charge = charge;
            block.records.push_back(record);
        }
        SourcePosition const begin = output_.here();
        output_.lines(8 + atoms_.size());
        document_.analyses.push_back(analysis(optimisation_job, final_step_, std::move(block), begin));
    }

    qc::PermanentDipole dipole(Vec3 const& vector, char const* method, char const* density) {
        output_.lines(3);
        double const magnitude = length(vector);
        return {vector, magnitude, magnitude * debye_per_au, method, density, output_.span(6)};
    }

    void add_dipoles() {
        SourcePosition const begin = output_.here();
        Vec3 const scf = random_.vector(0.8);
        Vec3 const relaxed = plus(scaled(scf, 0.92), random_.vector(0.02));
        qc::DipoleBlock block;
        block.moments.push_back(dipole(scf, "HF", "scf"));
        block.moments.push_back(dipole(relaxed, "RI-MP2", "relaxed"));
        document_.analyses.push_back(analysis(optimisation_job, final_step_, std::move(block), begin));
    }

    double nuclear_repulsion() const {
        double total = 0.0;
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            for (std::size_t j = i + 1; j < atoms_.size(); ++j) {
                double const distance =
                    length(minus(atoms_[i].position, atoms_[j].position)) * bohr_per_angstrom;
                total += atoms_[i].element->atomic_number * atoms_[j].element->atomic_number /
                         std::max(distance, 0.1);
            }
        }
        return total;
    }

    qc::ScalarProperty property(char const* key, char const* label, double value, char const* unit) {
        output_.lines(random_.below(10));
        return {key, label, value, unit, output_.span(1)};
    }

    void add_scalar_properties() {
        SourcePosition const begin = output_.here();
        qc::ScalarPropertyBlock block;
        block.properties.push_back(property("nuclear_repulsion", "Nuclear Repulsion", nuclear_repulsion(), "Eh"));
        block.properties.push_back(property("mp2_correlation_energy", "MP2 correlation energy",
                                            final_energy_ - final_scf_energy_, "Eh"));
        block.properties.push_back(
            property("homo_lumo_gap", "HOMO-LUMO gap", (lumo_ - homo_) * hartree_to_ev, "eV"));
        block.properties.push_back(property("scf_iterations", "SCF iterations", 14.0, ""));
        block.properties.push_back(property("s_squared", "<S**2>", 0.0, ""));
        document_.analyses.push_back(analysis(optimisation_job, final_step_, std::move(block), begin));
    }

    // The frequency and TD-DFT jobs each run one step on the optimised
    // geometry, linked to the optimisation.
    qc::CalculationStep follow_up_step(std::uint32_t job_id, std::uint32_t step_id) const {
        qc::CalculationStep step;
        step.id = qc::StepId(step_id);
        step.job_id = qc::JobId(job_id);
        step.system_id = chem::SystemId(system_id);
        step.ordinal = 1;
        step.frame_id = chem::FrameId(final_step_);
        return step;
    }

    qc::CalculationJob follow_up_job(std::uint32_t job_id, std::uint32_t ordinal, std::uint32_t step_id,
                                     SourcePosition const& job_begin) {
        qc::CalculationJob job;
        job.id = qc::JobId(job_id);
        job.system_id = chem::SystemId(system_id);
        job.ordinal = ordinal;
        job.parent_job_id = qc::JobId(optimisation_job);
        job.relation = qc::JobRelation::link;
        job.basis_set = "def2-TZVP";
        job.step_ids = {qc::StepId(step_id)};
        job.termination = {qc::TerminationKind::normal, "", output_.span(1)};
        job.source = output_.span_from(job_begin);
        return job;
    }

    void add_frequency_job() {
        auto const step_id = static_cast<std::uint32_t>(shape_.steps + 1);
        SourcePosition const job_begin = output_.here();
        qc::CalculationStep step = follow_up_step(frequency_job, step_id);
        step.energies.push_back(energy(1, qc::EnergyKind::scf, "SCF energy", "HF", final_scf_energy_));
        step.energies.push_back(energy(2, qc::EnergyKind::correlated, "MP2 total energy", "RI-MP2", final_energy_));
        step.primary_energy_id = qc::EnergyId(2);
        step.gradient = gradient(final_gradient_);
        step.source = output_.span_from(job_begin);
        document_.steps.push_back(std::move(step));

        double const zero_point = add_vibrations(step_id);
        add_thermochemistry(step_id, zero_point);

        qc::CalculationJob job = follow_up_job(frequency_job, 2, step_id, job_begin);
        job.tasks = {qc::TaskKind::frequency};
        job.primary_task = qc::TaskKind::frequency;
        job.method = "RI-MP2";
        document_.jobs.push_back(std::move(job));
    }

    // 3N - 6 modes: the stretches of bonds to hydrogen near 3000 cm-1, the
    // rest spread below 1800 cm-1. Returns the zero-point energy in hartree.
    double add_vibrations(std::uint32_t step_id) {
        std::size_t const count = 3 * atoms_.size() - 6;
        std::size_t hydrogens = 0;
        for (auto const& atom : atoms_) {
            hydrogens += atom.element->atomic_number == 1 ? 1 : 0;
        }
        std::vector<double> frequencies;
        for (std::size_t i = 0; i < count; ++i) {
            frequencies.push_back(i < hydrogens ? random_.uniform(2900.0, 3250.0) : random_.uniform(25.0, 1800.0));
        }
        std::sort(frequencies.begin(), frequencies.end());
        qc::VibrationalBlock block;
        double zero_point = 0.0;
        for (std::size_t i = 0; i < count; ++i) {
            qc::VibrationalMode mode;
            mode.index = static_cast<int>(i + 6);
            mode.frequency_cm1 = frequencies[i];
            mode.symmetry = "A";
            double const reduced_mass = random_.uniform(1.0, 12.0);
            mode.reduced_mass_amu = reduced_mass;
            mode.force_constant_mdyne_per_angstrom = 5.8915e-7 * reduced_mass * frequencies[i] * frequencies[i];
            double const intensity = random_.unit();
            mode.ir_intensity_km_per_mol = 250.0 * intensity * intensity * intensity;
            mode.raman_activity = 60.0 * random_.unit() * random_.unit();
            double squares = 0.0;
            for (std::size_t atom = 0; atom < atoms_.size(); ++atom) {
                mode.displacements.push_back(random_.vector(1.0));
                double const norm = length(mode.displacements.back());
                squares += norm * norm;
            }
            double const normalise = 1.0 / std::sqrt(squares);
            for (auto& displacement : mode.displacements) {
                displacement = scaled(displacement, normalise);
            }
            block.modes.push_back(std::move(mode));
            zero_point += 0.5 * frequencies[i] / hartree_to_cm1;
        }
        SourcePosition const begin = output_.here();
        output_.lines(20 + count + count / 6 * (atoms_.size() * 3 + 4));
        document_.analyses.push_back(analysis(frequency_job, step_id, std::move(block), begin));
        return zero_point;
    }

    void add_thermochemistry(std::uint32_t step_id, double zero_point) {
        double mass = 0.0;
        for (auto const& atom : atoms_) {
            mass += atom.element->mass_amu;
        }
        // Boltzmann's constant times 298.15 K, in hartree.
        double const kt = 0.0009441841;
        double const thermal = zero_point + 3.0 * kt + 0.04 * zero_point;
        double const enthalpy = thermal + kt;
        double const entropy = 0.03 + 0.0006 * static_cast<double>(atoms_.size());
        qc::ThermochemistryBlock block;
        block.temperature_kelvin = 298.15;
        block.pressure_atmosphere = 1.0;
        block.total_mass_amu = mass;
        block.electronic_energy = final_energy_;
        block.zero_point_energy = zero_point;
        block.thermal_energy = final_energy_ + thermal;
        block.thermal_correction = thermal;
        block.enthalpy = final_energy_ + enthalpy;
        block.enthalpy_correction = enthalpy;
        block.entropy_correction = entropy;
        block.gibbs_free_energy = final_energy_ + enthalpy - entropy;
        block.gibbs_correction = enthalpy - entropy;
        SourcePosition const begin = output_.here();
        output_.lines(90);
        document_.analyses.push_back(analysis(frequency_job, step_id, std::move(block), begin));
    }

    void add_excited_state_job() {
        auto const step_id = static_cast<std::uint32_t>(shape_.steps + 2);
        SourcePosition const job_begin = output_.here();
        double const ground = final_scf_energy_ - 0.009 * electrons_ + random_.uniform(-0.01, 0.01);
        qc::CalculationStep step = follow_up_step(excited_state_job, step_id);
        step.energies.push_back(energy(1, qc::EnergyKind::scf, "Total Energy", "CAM-B3LYP", ground));
        step.primary_energy_id = qc::EnergyId(1);
        output_.lines(30);
        step.source = output_.span_from(job_begin);
        document_.steps.push_back(std::move(step));

        add_excited_states(step_id, ground);

        qc::CalculationJob job = follow_up_job(excited_state_job, 3, step_id, job_begin);
        job.tasks = {qc::TaskKind::single_point, qc::TaskKind::excited_state};
        job.primary_task = qc::TaskKind::excited_state;
        job.method = "CAM-B3LYP";
        job.keywords = "! CAM-B3LYP def2-TZVP TightSCF";
        document_.jobs.push_back(std::move(job));
    }

    // Promotions from the top occupied orbitals into the lowest virtual ones;
    // the first carries most of the weight.
    std::vector<qc::ExcitationContribution> contributions(std::size_t state) {
        std::vector<qc::ExcitationContribution> list;
        double remaining = 1.0;
        std::size_t const count = 2 + state % 3;
        for (std::size_t i = 0; i < count; ++i) {
            std::size_t const below_gap = random_.below(std::min<std::size_t>(occupied_, 5));
            int const from = static_cast<int>(occupied_ - 1 - below_gap);
            int const to = static_cast<int>(occupied_ + random_.below(6));
            double const weight = i == 0 ? random_.uniform(0.55, 0.95) : remaining * random_.uniform(0.2, 0.6);
            remaining -= weight;
            double const coefficient = (random_.below(2) == 0 ? -1.0 : 1.0) * std::sqrt(weight);
            bool const reverse = i + 1 == count && state % 4 == 3;
            std::string const occupied = std::to_string(from) + "a";
            std::string const virtual_orbital = std::to_string(to) + "a";
            std::string label = reverse ? virtual_orbital + " <- " + occupied : occupied + " -> " + virtual_orbital;
            list.push_back({std::move(label), from, to, "occupied", "virtual", 'a', 'a', coefficient, weight, reverse});
        }
        return list;
    }

    // The row of a spectrum for the transition into `state`.
    static qc::AbsorptionPeak spectrum_row(char const* kind, qc::ExcitedState const& state, double energy) {
        qc::AbsorptionPeak peak;
        peak.spectrum_kind = kind;
        peak.transition = "0-1A -> " + std::to_string(*state.index) + "-1A";
        peak.target_state_index = state.index;
        peak.excitation_energy = energy;
        peak.reported_wavenumber_cm1 = state.reported_wavenumber_cm1;
        peak.reported_wavelength_nm = state.reported_wavelength_nm;
        return peak;
    }

    void add_excited_states(std::uint32_t step_id, double ground) {
        std::size_t const count = excited_states_for(atoms_.size());
        std::vector<double> energies;
        for (std::size_t i = 0; i < count; ++i) {
            energies.push_back(random_.uniform(0.12, 0.36));
        }
        std::sort(energies.begin(), energies.end());
        SourcePosition const begin = output_.here();
        qc::ExcitedStateBlock block;
        block.block_index = 1;
        block.method = "TD-DFT";
        block.section = "TD-DFT EXCITED STATES (SINGLETS)";
        block.comment = "Full TD-DFT, no Tamm-Dancoff approximation";
        for (std::size_t i = 0; i < count; ++i) {
            auto const index = static_cast<int>(i + 1);
            double const wavenumber = std::round(energies[i] * hartree_to_cm1 * 10.0) / 10.0;
            double const strength = random_.unit() * random_.unit() * random_.unit() * 0.8;
            qc::ExcitedState state;
            state.index = index;
            state.root_label = "STATE " + std::to_string(index);
            state.method = "TD-DFT";
            state.section = block.section;
            state.multiplicity_label = "Singlet";
            state.multiplicity = 1;
            state.total_energy = ground + energies[i];
            state.excitation_energy = energies[i];
            state.reported_wavenumber_cm1 = wavenumber;
            state.reported_wavelength_nm = std::round(1e8 / wavenumber) / 10.0;
            state.oscillator_strength = strength;
            state.contributions = contributions(i);
            output_.lines(1);
            state.source = output_.span(state.contributions.size() + 1);
            block.states.push_back(std::move(state));
        }
        for (std::size_t i = 0; i < count; ++i) {
            auto const id = static_cast<std::uint32_t>(i + 1);
            std::string const label = "E(tot) state " + std::to_string(id);
            block.total_energies.push_back(
                energy(id, qc::EnergyKind::excited_state_total, label.c_str(), "TD-DFT", ground + energies[i]));
        }
        block.preferred_total_energy_id = qc::EnergyId(1);
        output_.lines(12);
        for (std::size_t i = 0; i < count; ++i) {
            auto const& state = block.states[i];
            double const moment_squared = 1.5 * *state.oscillator_strength / energies[i];
            Vec3 direction = random_.vector(1.0);
            direction = scaled(direction, std::sqrt(moment_squared) / std::max(length(direction), 1e-6));
            qc::AbsorptionPeak peak = spectrum_row("absorption_electric_dipole", state, energies[i]);
            peak.oscillator_strength = state.oscillator_strength;
            peak.strength_label = "fosc";
            peak.strength = state.oscillator_strength;
            peak.transition_moment_au = direction;
            peak.source = output_.span(1);
            block.absorption_peaks.push_back(peak);
        }
        output_.lines(12);
        for (std::size_t i = 0; i < count; ++i) {
            auto const& state = block.states[i];
            double const rotatory = random_.uniform(-40.0, 40.0);
            qc::AbsorptionPeak peak = spectrum_row("cd_electric_dipole", state, energies[i]);
            peak.strength_label = "R";
            peak.strength = rotatory;
            peak.rotatory_strength = rotatory;
            peak.source = output_.span(1);
            block.absorption_peaks.push_back(peak);
        }
        qc::AnalysisBlock analysis_block = analysis(excited_state_job, step_id, std::move(block), begin);
        diagnostics_.push_back({Severity::note, "orca.tddft.full",
                                "Full TD-DFT was run; de-excitations are listed as reverse contributions.",
                                analysis_block.source});
        document_.analyses.push_back(std::move(analysis_block));
    }

    // The input file that the run read, which the document carries whole:
    // keyword lines and the starting geometry. Returns the span of the
    // geometry block.
    SourceSpan write_input(std::vector<chem::AtomSite> const& atoms) {
        input_ = "! RI-MP2 def2-TZVP def2-TZVP/C TightSCF Opt Freq\n%maxcore 4000\n%pal nprocs 16 end\n";
        SourcePosition const begin{input_.size(), 4, 1};
        input_ += "* xyz " + std::to_string(charge_) + " 1\n";
        for (std::size_t i = 0; i < atoms.size(); ++i) {
            std::string label = atoms[i].raw_label;
            label.resize(std::max<std::size_t>(label.size(), 4), ' ');
            Vec3 const p = plus(atoms_[i].position, start_offsets_[i]);
            input_ += "  " + label + formatted(" %14.8f %14.8f %14.8f\n", p.x, p.y, p.z);
        }
        input_ += "*\n";
        return {SourceId(input_source), begin, {input_.size(), 6 + atoms.size(), 1}};
    }

    void add_sources() {
        model::SourceFile output{SourceId(1), "job.out", hex_digest(random_), output_.size_bytes(), std::nullopt};
        model::SourceFile input{SourceId(input_source), "job.inp", hex_digest(random_), input_.size(), input_};
        document_.sources.push_back(std::move(output));
        document_.sources.push_back(std::move(input));
    }

    // Every kind of value that the table holds. A double keeps a fraction, and
    // a list of texts holds a word, so that each reads back as the kind it
    // was written as.
    void add_metadata() {
        long long basis = 0;
        for (auto const& atom : atoms_) {
            basis += atom.element->basis_functions;
        }
        std::vector<double> energies;
        for (auto const& step : document_.steps) {
            if (step.job_id == qc::JobId(optimisation_job)) {
                energies.push_back(step.energies.back().value);
            }
        }
        auto& metadata = document_.metadata;
        metadata["basis_functions"] = basis;
        metadata["nprocs"] = 16LL;
        metadata["ri_approximation"] = true;
        metadata["symmetry_used"] = false;
        metadata["wall_time_seconds"] = 45.25 * static_cast<double>(shape_.steps) + random_.uniform(0.01, 0.99);
        metadata["scf_tolerance"] = 1e-8;
        metadata["host"] = std::string("node042.cluster.example.org");
        metadata["keywords"] =
            std::vector<std::string>{"RI-MP2", "def2-TZVP", "def2-TZVP/C", "TightSCF", "Opt", "Freq"};
        metadata["optimisation_energies"] = std::move(energies);
    }

    Choices& random_;
    OutputFile output_;
    Shape shape_;
    qc::Document document_;
    std::vector<Diagnostic> diagnostics_;
    std::vector<Atom> atoms_;
    std::vector<Vec3> start_offsets_;
    std::string input_;
    int charge_ = 0;
    int electrons_ = 0;
    std::size_t occupied_ = 0;
    double energy_ = 0.0;
    std::uint32_t final_step_ = 0;
    std::vector<Vec3> final_gradient_;
    double final_energy_ = 0.0;
    double final_scf_energy_ = 0.0;
    double homo_ = 0.0;
    double lumo_ = 0.0;
};

}  // namespace

BuiltResult build_result(Choices& choices, std::size_t target_bytes, Departures departures) {
    BuiltResult built{RunBuilder(choices, shape_for(target_bytes)).build()};
    OddValues odd(choices, departures);
    odd.vary(built.result.status);
    odd.vary(built.result.value);
    odd.vary(built.result.diagnostics);
    built.all_text_is_utf8 = odd.all_text_is_utf8();
    return built;
}

model::ParseResult<qc::Document> generate_result(std::uint64_t seed, std::size_t target_bytes) {
    Choices choices(seed);
    return build_result(choices, target_bytes).result;
}

model::ParseResult<qc::Document> odd_result(std::uint64_t seed, Departures departures) {
    constexpr std::size_t bytes_for_every_field = 1 << 16;
    Choices random(seed);
    std::string bytes;
    while (bytes.size() < bytes_for_every_field) {
        bytes += static_cast<char>(random.next());
    }
    ChoicesFromBytes choices(bytes);
    return build_result(choices, 0, departures).result;
}

}  // namespace morv::testing
