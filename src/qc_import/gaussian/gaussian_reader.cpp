#include "gaussian/gaussian_reader.hpp"

#include "gaussian/route.hpp"

#include "framework/document_builder.hpp"
#include "framework/job_lines.hpp"
#include "framework/job_records.hpp"
#include "framework/records.hpp"
#include "framework/superposition.hpp"
#include "framework/text.hpp"
#include "framework/units.hpp"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morv::qc::import::gaussian {

namespace {

using model::Diagnostic;
using model::Severity;
using model::SourceSpan;

bool is_termination(std::string_view trimmed) {
    return starts_with(trimmed, "Normal termination of Gaussian") || starts_with(trimmed, "Error termination");
}

// The passes over a whole job look for a few lines among many: a line that
// starts with none of `letters` is none of them.
bool starts_with_one_of(std::string_view trimmed, std::string_view letters) {
    return !trimmed.empty() && letters.find(trimmed.front()) != std::string_view::npos;
}

// Lines [begin, end) of one job, and what one walk over the whole output
// learns of it before it is read: Gaussian writes one banner and one
// termination line per job, and the jobs of a Link1 run follow each other in
// one file.
struct JobRange {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool standard_orientation = false;
    bool terminated = false;
    // The lines that start a warning, which a job's reader reads last.
    std::vector<std::size_t> warnings;
};

bool is_warning(std::string_view trimmed) {
    return starts_with(trimmed, "Warning") || starts_with(trimmed, "WARNING") || starts_with(trimmed, "*** WARNING");
}

// Each line is looked at once here, as few of them start with a letter that
// any of these lines starts with.
std::vector<JobRange> survey_jobs(LineCursor const& lines) {
    std::vector<JobRange> jobs;
    // What comes before the first banner counts only if no banner comes.
    JobRange before_banner;
    bool terminated = true;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        auto const text = trim(lines.at(i).text);
        if (!starts_with_one_of(text, "ENSW*")) {
            continue;
        }
        bool const banner = starts_with(text, "Entering Gaussian System");
        bool const link1 = starts_with(text, "Entering Link 1 ");
        if (banner || (link1 && terminated)) {
            if (!jobs.empty()) {
                jobs.back().end = i;
            }
            jobs.push_back({i, lines.size(), false, false, {}});
            terminated = false;
        }
        JobRange& job = jobs.empty() ? before_banner : jobs.back();
        if (is_termination(text)) {
            terminated = true;
            job.terminated = true;
        } else if (text == "Standard orientation:") {
            job.standard_orientation = true;
        } else if (is_warning(text)) {
            job.warnings.push_back(i);
        }
    }
    if (jobs.empty() && lines.size() > 0) {
        before_banner.end = lines.size();
        jobs.push_back(std::move(before_banner));
    }
    return jobs;
}

int multiplicity_of(std::string_view label) {
    static constexpr std::pair<char const*, int> names[] = {
        {"Singlet", 1}, {"Doublet", 2}, {"Triplet", 3}, {"Quartet", 4}, {"Quintet", 5}};
    for (auto const& [name, value] : names) {
        if (label == name) {
            return value;
        }
    }
    return 0;
}

class JobReader : JobLines, JobRecords {
public:
    JobReader(DocumentBuilder& builder, model::SourceId source, LineCursor& lines, JobRange const& range,
              std::vector<Diagnostic>& diagnostics)
        : JobLines(lines, range.end, source), JobRecords(builder), range_(range), diagnostics_(diagnostics) {}

    void read() {
        CalculationJob job;
        job.source = span_of_lines(source_, lines_.at(range_.begin), lines_.at(range_.end - 1));
        job_ = builder_.add_job(std::move(job));
        // The frames are in the standard orientation, which Gaussian prints
        // unless told to keep the input's axes. A job cut before its first
        // standard orientation is read as though it would come, unless the
        // route turns symmetry off, so that a cut output keeps the frames
        // of the whole one.
        use_standard_ = range_.standard_orientation || !range_.terminated;
        lines_.seek(range_.begin);
        while (lines_.index() < range_.end) {
            read_line();
        }
        read_warnings();
        finish();
    }

private:
    void read_line() {
        auto const text = trim(line().text);
        // Most lines are none of these; a switch on the first byte keeps
        // them to one comparison or two.
        switch (text.empty() ? '\0' : text.front()) {
            case '#': read_route_line(); break;
            case '-': read_dash_line(text); break;
            case '<': read_spin_line(text); break;
            case 'A': read_a_line(text); break;
            case 'C': read_c_line(text); break;
            case 'D': read_d_line(text); break;
            case 'E': read_e_line(text); break;
            case 'G': read_g_line(text); break;
            case 'H': read_h_line(text); break;
            case 'I': read_i_line(text); break;
            case 'M': read_m_line(text); break;
            case 'N': read_n_line(text); break;
            case 'Q': read_q_line(text); break;
            case 'R': read_r_line(text); break;
            case 'S': read_s_line(text); break;
            case 'T': read_t_line(text); break;
            case 'W': read_w_line(text); break;
            case 'n': read_nuclear_repulsion_line(text); break;
            default:
                if (!text.empty() && text.front() >= '0' && text.front() <= '9') {
                    read_basis_size_line(text);
                }
                break;
        }
        // A reader that read a table leaves the cursor on its last line, or
        // past the job's end when the job ended inside the table.
        if (lines_.index() < range_.end) {
            lines_.advance();
        }
    }

    void read_route_line() {
        if (!route_read_) {
            read_route();
        }
    }

    void read_dash_line(std::string_view text) {
        if (text == "- Thermochemistry -") {
            read_thermochemistry();
        }
    }

    void read_spin_line(std::string_view text) {
        if (starts_with(text, "<Sx>=") && contains(text, "<S**2>=")) {
            scalar(text, "<S**2>=", "spin_squared", "<S**2>", "");
        }
    }

    void read_a_line(std::string_view text) {
        if (starts_with(text, "Alpha  occ. eigenvalues --")) {
            read_orbitals();
        } else if (text == "APT charges:") {
            read_charges("APT");
        }
    }

    void read_c_line(std::string_view text) {
        if (starts_with(text, "Charge =") && !state_) {
            read_charge(text);
        } else if (starts_with(text, "CIS(D) Correction to the CiSingles state")) {
            cisd_state_ = to_integer(fields(text).back());
        } else if (starts_with(text, "CIS(D) Total")) {
            read_cisd_total(text);
        } else if (starts_with(text, "CCSD(T)=")) {
            energy(text, "CCSD(T)=", EnergyKind::correlated, "CCSD(T)", "CCSD(T)");
        } else if (starts_with(text, "Cartesian Forces:")) {
            read_force_summary(text);
        } else if (starts_with(text, "Center") && contains(text, "Forces (Hartrees/Bohr)")) {
            read_forces();
        }
    }

    void read_d_line(std::string_view text) {
        if (starts_with(text, "DEMP5 =")) {
            energy(text, " MP5 =", EnergyKind::correlated, "MP5", "MP5");
        } else if (starts_with(text, "Dipole moment (field-independent basis, Debye):")) {
            read_dipole();
        }
    }

    void read_e_line(std::string_view text) {
        if (starts_with(text, "Excited State ")) {
            read_excited_state(text);
        } else if (starts_with(text, "E4(")) {
            for (auto const* key : {"UMP4(DQ)=", "UMP4(SDQ)=", "UMP4(SDTQ)="}) {
                std::string_view const k = key;
                if (contains(text, k)) {
                    energy(text, k, EnergyKind::correlated, std::string(k.substr(0, k.size() - 1)), "MP4");
                }
            }
        } else if (contains(text, "EUMP2 =")) {
            energy(text, "EUMP2 =", EnergyKind::correlated, "EUMP2", "MP2");
        } else if (contains(text, "EUMP3=")) {
            energy(text, "EUMP3=", EnergyKind::correlated, "EUMP3", "MP3");
        } else if (is_termination(text)) {
            read_termination(text);
        }
    }

    void read_g_line(std::string_view text) {
        if (text == "Ground to excited state transition electric dipole moments (Au):" ||
            text == "Ground to excited state transition velocity dipole moments (Au):") {
            read_peak_table(text.substr(0, text.size() - 1));
        }
    }

    void read_r_line(std::string_view text) {
        if (text == "Rotatory Strengths (R) in cgs (10**-40 erg-esu-cm/Gauss)") {
            read_peak_table(text);
        }
    }

    // The tables above the states of a TD or CIS job, one row a state:
    //        state          X           Y           Z        Dip. S.      Osc.
    //          1         0.1090     -1.1375      0.0000      1.3058      0.1707
    // or, for rotatory strengths, "state XX YY ZZ R(velocity) E-M Angle".
    // The states' energies come later; close_excited() puts them in.
    void read_peak_table(std::string_view title) {
        if (!next()) {
            return;
        }
        auto const header = fields(line().text);
        if (header.size() < 5 || header[0] != "state") {
            return;
        }
        bool const rotatory = starts_with(header[4], "R(");
        std::string const kind = rotatory ? std::string(title) + " " + std::string(header[4]) : std::string(title);
        while (has_next()) {
            auto const row = fields(lines_.at(lines_.index() + 1).text);
            auto const index = row.empty() ? std::nullopt : to_integer(row[0]);
            if (!index || *index < 1 || *index > 1000000 || row.size() < (rotatory ? 5u : 6u)) {
                break;
            }
            next();
            AbsorptionPeak peak;
            peak.spectrum_kind = kind;
            peak.transition = "0 -> " + std::string(row[0]);
            peak.target_state_index = static_cast<int>(*index);
            if (rotatory) {
                peak.rotatory_strength = to_double(row[4]);
            } else {
                auto const x = to_double(row[1]);
                auto const y = to_double(row[2]);
                auto const z = to_double(row[3]);
                if (x && y && z) {
                    peak.transition_moment_au = chem::Vec3{*x, *y, *z};
                }
                peak.strength_label = "Dip. S.";
                peak.strength = to_double(row[4]);
                peak.oscillator_strength = to_double(row[5]);
            }
            peak.source = span_of_line(source_, line());
            pending_peaks_.push_back(std::move(peak));
        }
    }

    void read_h_line(std::string_view text) {
        if (starts_with(text, "Harmonic frequencies")) {
            read_vibrations();
        }
    }

    void read_i_line(std::string_view text) {
        if (!route_read_ && starts_with(text, "Input=")) {
            read_input_name(text.substr(6));
        } else if (text == "Input orientation:") {
            if (use_standard_) {
                read_input_orientation();
            } else {
                read_orientation();
            }
        } else if (starts_with(text, "Item") && contains(text, "Converged?")) {
            read_convergence();
        }
    }

    void read_m_line(std::string_view text) {
        if ((starts_with(text, "Mulliken charges") || starts_with(text, "Mulliken atomic charges")) &&
            !contains(text, "summed")) {
            read_charges("Mulliken");
        }
    }

    void read_n_line(std::string_view text) {
        if (is_termination(text)) {
            read_termination(text);
        }
    }

    void read_q_line(std::string_view text) {
        if (starts_with(text, "QCISD(T)=")) {
            energy(text, "QCISD(T)=", EnergyKind::correlated, "QCISD(T)", "QCISD(T)");
        }
    }

    void read_s_line(std::string_view text) {
        if (text == "Standard orientation:") {
            if (use_standard_) {
                read_orientation();
            }
        } else if (starts_with(text, "SCF Done:")) {
            read_scf(text);
        } else if (starts_with(text, "Step number")) {
            read_step_number(text);
        }
    }

    void read_t_line(std::string_view text) {
        if (starts_with(text, "Total Energy, E(")) {
            read_excited_total(text);
        }
    }

    void read_w_line(std::string_view text) {
        if (starts_with(text, "Wavefunction amplitudes converged. E(Corr)=")) {
            // The same line ends CCD, CCSD and QCISD, and the (T) step of
            // CCSD(T) and QCISD(T) follows it.
            auto const method = ascii_lower(route_.method);
            std::string const name = starts_with(method, "qcisd") ? "QCISD" : method == "ccd" ? "CCD" : "CCSD";
            energy(text, "E(Corr)=", EnergyKind::correlated, name, name);
        }
    }

    void read_nuclear_repulsion_line(std::string_view text) {
        if (starts_with(text, "nuclear repulsion energy")) {
            scalar(text, "nuclear repulsion energy", "nuclear_repulsion_energy", "Nuclear repulsion energy",
                   "hartree");
        }
    }

    // "   100 basis functions,   188 primitive gaussians, ..."
    void read_basis_size_line(std::string_view text) {
        if (!contains(text, "basis functions,") || !contains(text, "primitive gaussians")) {
            return;
        }
        auto const values = fields(text);
        if (auto const count = to_double(values.front())) {
            add_scalar("basis_functions", "Number of basis functions", *count, span(values.front()));
        }
    }

    // "Input=/path/water.com", which Gaussian writes when it was given the
    // input's name: the input becomes a source of the document, and its
    // name the program's input file name.
    void read_input_name(std::string_view path) {
        path = trim(path);
        if (path.empty()) {
            return;
        }
        builder_.source_for(std::string(path), std::nullopt);
        auto& program = builder_.document().program;
        if (program.input_file_name.empty()) {
            auto const slash = path.find_last_of('/');
            program.input_file_name = std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
        }
    }

    void read_route() {
        std::string text(line().text);
        while (has_next()) {
            next();
            if (is_dashes(line().text)) {
                break;
            }
            text += std::string(line().text.substr(line().text.empty() ? 0 : 1));
        }
        route_ = parse_route(text);
        route_read_ = true;
        if (!range_.terminated && (contains(ascii_lower(text), "nosym") || contains(ascii_lower(text), "symmetry=none"))) {
            use_standard_ = false;
        }
        route_line_ = lines_.index();
        auto& job = builder_.job(job_);
        job.keywords = route_.text;
        job.method = route_.method;
        job.basis_set = route_.basis_set;
        job.tasks = route_.tasks;
        job.primary_task = route_.tasks.front();
    }

    void read_charge(std::string_view text) {
        read_title();
        auto const values = fields(text);
        if (values.size() >= 6) {
            auto const charge = to_integer(values[2]);
            auto const multiplicity = to_integer(values[5]);
            if (charge && multiplicity && *multiplicity > 0 && *multiplicity < 1000 && *charge > -1000 &&
                *charge < 1000) {
                state_ = chem::ElectronicState{static_cast<std::int32_t>(*charge),
                                               static_cast<std::uint32_t>(*multiplicity)};
            }
        }
    }

    // The title card, which Gaussian prints between dashes just before the
    // charge, or before "Symbolic Z-matrix:" when the molecule is given in
    // the input; its lines are joined with blanks.
    void read_title() {
        std::size_t i = lines_.index();
        if (i > range_.begin && trim(lines_.at(i - 1).text) == "Symbolic Z-matrix:") {
            --i;
        }
        if (i < range_.begin + 2 || !is_dashes(lines_.at(i - 1).text)) {
            return;
        }
        std::string title;
        // A title runs to a few lines; the bound keeps a text of many charge
        // lines linear.
        std::size_t const stop = i > range_.begin + 12 ? i - 12 : range_.begin;
        for (std::size_t j = i - 1; j-- > stop;) {
            if (is_dashes(lines_.at(j).text)) {
                title_ = title;
                return;
            }
            auto const part = trim(lines_.at(j).text);
            title = title.empty() ? std::string(part) : std::string(part) + " " + title;
        }
    }

    struct Table {
        std::vector<int> numbers;
        std::vector<chem::Vec3> positions;
        SourceSpan span;
    };

    // Header, column names on two lines, dashes, one row for each atom,
    // dashes. A table cut before its closing dashes is left out.
    std::optional<Table> read_table() {
        Line const first = line();
        Table table;
        int dashes = 0;
        while (next()) {
            auto const text = line().text;
            if (is_dashes(text)) {
                if (++dashes == 3) {
                    break;
                }
                continue;
            }
            if (dashes != 2) {
                continue;
            }
            auto const values = fields(text);
            if (values.size() < 5) {
                return std::nullopt;
            }
            auto const number = to_integer(values[1]);
            auto const x = to_double(values[values.size() - 3]);
            auto const y = to_double(values[values.size() - 2]);
            auto const z = to_double(values[values.size() - 1]);
            if (!number || !x || !y || !z || *number < 0 || *number > 200) {
                return std::nullopt;
            }
            table.numbers.push_back(static_cast<int>(*number));
            table.positions.push_back({*x, *y, *z});
        }
        if (dashes != 3 || table.numbers.empty()) {
            return std::nullopt;
        }
        table.span = span_of_lines(source_, first, line());
        return table;
    }

    // Kept to carry the forces, which Gaussian prints in these axes, over to
    // the standard orientation of the step's frame.
    void read_input_orientation() {
        if (auto table = read_table()) {
            input_positions_ = std::move(table->positions);
        }
    }

    void read_orientation() {
        auto read = read_table();
        if (!read) {
            return;
        }
        auto& numbers = read->numbers;
        auto& positions = read->positions;
        auto const table = read->span;
        if (!takes_geometry(numbers, title_, table)) {
            return;
        }
        // Gaussian prints the geometry again where nothing moved, after an
        // optimisation has converged for one: that is the same step.
        if (step_ && builder_.step_is_at(*step_, positions)) {
            return;
        }
        close_step();
        auto const frame = builder_.add_frame(*system_, std::move(positions), table);
        step_ = builder_.add_step(job_, frame, table);
        step_input_positions_ = std::move(input_positions_);
        input_positions_.clear();
    }

    StepId current_step() { return open_step(span_of_line(source_, line())); }

    void extend_step(SourceSpan const& record) { builder_.extend_step(current_step(), record); }

    void add_energy(EnergyKind kind, std::string label, std::string method, double value, SourceSpan where) {
        builder_.record_energy(current_step(), kind, std::move(label), std::move(method), value, where);
    }

    void energy(std::string_view text, std::string_view key, EnergyKind kind, std::string label,
                std::string method) {
        if (auto const found = number_after(text, key)) {
            add_energy(kind, std::move(label), std::move(method), found->value, span(found->field));
        }
    }

    // "SCF Done:  E(RB3LYP) =  -382.294279146     A.U. after   12 cycles"
    void read_scf(std::string_view text) {
        auto const open = text.find("E(");
        auto const close = text.find(')', open);
        if (open == std::string_view::npos || close == std::string_view::npos) {
            return;
        }
        std::string const method(text.substr(open + 2, close - open - 2));
        energy(text.substr(close), ")", EnergyKind::scf, "SCF Done", method);
    }

    void read_excited_total(std::string_view text) {
        auto const open = text.find("E(");
        auto const close = text.find(")", open);
        if (close == std::string_view::npos) {
            return;
        }
        auto const found = number_after(text.substr(close), ")");
        if (!found) {
            return;
        }
        std::string const method(text.substr(open + 2, close - open - 2));
        add_energy(EnergyKind::excited_state_total, "E(" + method + ")", method, found->value, span(found->field));
        // The label names the method of the states above it more exactly
        // than the route does ("CIS/TDA" for the guess of an EOM-CCSD job).
        if (excited_ && !excited_->states.empty()) {
            followed_state_ = excited_->states.back().index;
            excited_->states.back().total_energy = found->value;
            excited_->method = method;
            for (auto& state : excited_->states) {
                state.method = method;
            }
        }
    }

    // "CIS(D) Total   : -0.255548936760E-02        E(CIS(D))=  -74.6308293204",
    // once for each state, after "CIS(D) Correction to the CiSingles state  1".
    // The step's primary energy stays that of the state whose CIS total
    // Gaussian printed, the one it follows.
    void read_cisd_total(std::string_view text) {
        auto const found = number_after(text, "E(CIS(D))=");
        if (!found || !cisd_state_) {
            return;
        }
        auto const step = current_step();
        auto const primary = builder_.step(step).primary_energy_id;
        add_energy(EnergyKind::excited_state_total, "E(CIS(D)) state " + std::to_string(*cisd_state_), "CIS(D)",
                   found->value, span(found->field));
        if (followed_state_ && *followed_state_ != *cisd_state_) {
            builder_.step(step).primary_energy_id = primary;
        }
        cisd_state_.reset();
    }

    // "Excited State   1:      Singlet-BU     5.3351 eV  232.39 nm  f=0.1707  <S**2>=0.000"
    // followed by its promotions, "34 -> 36  0.48145" ("<-" for de-excitations).
    void read_excited_state(std::string_view text) {
        auto const values = fields(text);
        if (values.size() < 9 || values[5] != "eV") {
            return;
        }
        auto index_field = values[2];
        if (!index_field.empty() && index_field.back() == ':') {
            index_field.remove_suffix(1);
        }
        auto const index = to_integer(index_field);
        auto const ev = to_double(values[4]);
        auto const nm = to_double(values[6]);
        if (!index || !ev || !nm || !starts_with(values[8], "f=")) {
            return;
        }
        ExcitedState state;
        state.index = static_cast<int>(*index);
        auto const label = values[3];
        auto const dash = label.find('-');
        state.multiplicity_label = std::string(label.substr(0, dash));
        if (dash != std::string_view::npos) {
            state.symmetry = std::string(label.substr(dash + 1));
        }
        if (int const m = multiplicity_of(state.multiplicity_label); m > 0) {
            state.multiplicity = m;
        }
        state.excitation_energy = *ev / units::hartree_in_ev;
        state.reported_wavelength_nm = *nm;
        state.oscillator_strength = to_double(values[8].substr(2));
        if (values.size() > 9 && starts_with(values[9], "<S**2>=")) {
            state.spin_squared = to_double(values[9].substr(7));
        }
        state.method = excited_method();
        Line const first = line();
        Line last = first;
        while (has_next()) {
            auto const row = fields(lines_.at(lines_.index() + 1).text);
            if (row.size() != 4 || (row[1] != "->" && row[1] != "<-")) {
                break;
            }
            next();
            last = line();
            ExcitationContribution contribution;
            contribution.label = std::string(trim(line().text.substr(0, line().text.find(row[2]) + row[2].size())));
            auto orbital = [](std::string_view field) -> std::optional<int> {
                if (!field.empty() && (field.back() == 'A' || field.back() == 'B')) {
                    field.remove_suffix(1);
                }
                auto const n = to_integer(field);
                if (!n || *n < 0 || *n > 10000000) {
                    return std::nullopt;
                }
                return static_cast<int>(*n);
            };
            contribution.from_orbital = orbital(row[0]);
            contribution.to_orbital = orbital(row[2]);
            contribution.coefficient = to_double(row[3]);
            contribution.reverse = row[1] == "<-";
            state.contributions.push_back(std::move(contribution));
        }
        state.source = span_of_lines(source_, first, last);
        // Numbering starts again with each set of states: the guess of an
        // EOM-CCSD job and its results, say.
        if (excited_ && !excited_->states.empty() && excited_->states.back().index >= state.index) {
            close_excited();
        }
        if (!excited_) {
            excited_.emplace();
            excited_->method = state.method;
            excited_->section = "Excitation energies and oscillator strengths";
            excited_span_ = *state.source;
            excited_step_ = current_step();
        }
        excited_span_.end = state.source->end;
        excited_->states.push_back(std::move(state));
    }

    std::string excited_method() const {
        auto const method = ascii_lower(route_.method);
        if (starts_with(method, "cis")) {
            return "CIS";
        }
        if (starts_with(method, "eom")) {
            return route_.method;
        }
        if (contains(ascii_lower(route_.text), "tda")) {
            return "TDA";
        }
        return "TD";
    }

    void close_excited() {
        if (excited_) {
            take_pending_peaks();
            builder_.add_analysis(job_, excited_step_, std::move(*excited_), excited_span_);
            excited_.reset();
        }
    }

    // The peaks read before these states get their energies and wavelengths.
    void take_pending_peaks() {
        for (auto& peak : pending_peaks_) {
            for (auto const& state : excited_->states) {
                if (state.index == peak.target_state_index) {
                    peak.excitation_energy = state.excitation_energy.value_or(0.0);
                    peak.reported_wavelength_nm = state.reported_wavelength_nm;
                    break;
                }
            }
        }
        excited_->absorption_peaks = std::move(pending_peaks_);
        pending_peaks_.clear();
    }

    // Center, atomic number, then the force on the atom; the gradient is its
    // opposite.
    void read_forces() {
        Line const first = line();
        std::vector<chem::Vec3> gradient;
        int dashes = 0;
        while (next()) {
            if (is_dashes(line().text)) {
                if (++dashes == 2) {
                    break;
                }
                continue;
            }
            if (dashes != 1) {
                continue;
            }
            auto const values = fields(line().text);
            if (values.size() != 5) {
                return;
            }
            auto const x = to_double(values[2]);
            auto const y = to_double(values[3]);
            auto const z = to_double(values[4]);
            if (!x || !y || !z) {
                return;
            }
            gradient.push_back({-*x, -*y, -*z});
        }
        if (dashes != 2 || gradient.empty() || (atom_count_ != 0 && gradient.size() != atom_count_)) {
            return;
        }
        auto const where = span_of_lines(source_, first, line());
        if (use_standard_ && !to_standard_axes(gradient, where)) {
            return;
        }
        auto& step = builder_.step(current_step());
        GradientRecord record;
        record.vectors = std::move(gradient);
        record.source = where;
        step.gradient = std::move(record);
        extend_step(where);
    }

    // Gaussian prints the forces in the input orientation ("Axes restored to
    // original set"); the frames are in the standard one. The rotation
    // between the step's two printed geometries carries them over.
    bool to_standard_axes(std::vector<chem::Vec3>& vectors, SourceSpan const& where) {
        std::optional<Rotation> rotation;
        if (step_ && builder_.step(*step_).frame_id) {
            auto const& frame = builder_.document().frames.at(builder_.step(*step_).frame_id->value - 1);
            // Coordinates are printed to 1e-6 angstrom.
            rotation = rotation_between(step_input_positions_, frame.positions_angstrom, 1e-4);
        }
        if (!rotation) {
            diagnostics_.push_back({Severity::warning, "gaussian.gradient_axes",
                                    "forces left out: no rotation carries the input orientation onto the "
                                    "standard orientation of their step",
                                    where});
            return false;
        }
        for (auto& v : vectors) {
            v = rotate(*rotation, v);
        }
        return true;
    }

    // "Cartesian Forces:  Max     0.050454775 RMS     0.015077523", the
    // largest component and the root mean square of the forces just printed.
    void read_force_summary(std::string_view text) {
        if (step_) {
            read_gradient_summary(builder_.step(*step_).gradient, text, "Max", "RMS");
        }
    }

    // "Step number   2 out of a maximum of  100 [on scan point 2 out of 13]":
    // the optimiser's own count, and a relaxed scan where the route alone
    // does not tell one.
    void read_step_number(std::string_view text) {
        auto const values = fields(text);
        if (values.size() < 3) {
            return;
        }
        if (auto const number = to_integer(values[2]); number && *number >= 0 && *number < 100000000) {
            builder_.step(current_step()).native_cycle = static_cast<std::int32_t>(*number);
        }
        if (contains(text, "on scan point")) {
            auto& tasks = builder_.job(job_).tasks;
            if (std::find(tasks.begin(), tasks.end(), TaskKind::scan) == tasks.end()) {
                tasks.push_back(TaskKind::scan);
            }
        }
    }

    void read_convergence() {
        static constexpr std::pair<char const*, CriterionKind> rows[] = {
            {"Maximum Force", CriterionKind::max_force},
            {"RMS     Force", CriterionKind::rms_force},
            {"Maximum Displacement", CriterionKind::max_displacement},
            {"RMS     Displacement", CriterionKind::rms_displacement}};
        Line const first = line();
        ConvergenceRecord record;
        bool all = true;
        for (auto const& [name, kind] : rows) {
            if (!has_next() || !starts_with(trim(lines_.at(lines_.index() + 1).text), name)) {
                break;
            }
            next();
            auto const values = fields(trim(line().text).substr(std::string_view(name).size()));
            if (values.size() != 3) {
                break;
            }
            auto const value = to_double(values[0]);
            auto const threshold = to_double(values[1]);
            if (!value || !threshold || (values[2] != "YES" && values[2] != "NO")) {
                break;
            }
            bool const satisfied = values[2] == "YES";
            all = all && satisfied;
            bool const force = kind == CriterionKind::max_force || kind == CriterionKind::rms_force;
            record.criteria.push_back({kind, *value, *threshold, satisfied, force ? "hartree/bohr" : "bohr"});
        }
        if (record.criteria.size() != 4) {
            return;
        }
        record.status = all ? ConvergenceStatus::converged : ConvergenceStatus::not_converged;
        record.source = span_of_lines(source_, first, line());
        builder_.step(current_step()).convergence = record;
        extend_step(*record.source);
    }

    // Gaussian prints the modes three to a group: numbers, symmetries,
    // labelled rows ("Frequencies --", "Red. masses --", ...) and the
    // displacements of each atom. With HPModes a first table of five to a
    // group comes before it, with "---" after the labels; the three-column
    // table, which every frequency job prints, is the one read.
    void read_vibrations() {
        Line const first = line();
        std::size_t const start = lines_.index();
        // Look for the three-column table's first "Frequencies --".
        std::size_t i = start + 1;
        // The next header, if it comes first, is read on its own.
        for (; i < range_.end; ++i) {
            auto const text = trim(lines_.at(i).text);
            if (starts_with(text, "Frequencies --") && !starts_with(text, "Frequencies ---")) {
                break;
            }
            if (starts_with(text, "- Thermochemistry -") || starts_with(text, "Harmonic frequencies")) {
                return;
            }
        }
        if (i >= range_.end || i < start + 3) {
            return;
        }
        std::vector<VibrationalMode> modes;
        std::size_t last_line = i;
        while (i < range_.end && i >= 2) {
            auto const text = trim(lines_.at(i).text);
            if (!starts_with(text, "Frequencies --")) {
                break;
            }
            auto const numbers = fields(lines_.at(i - 2).text);
            auto const symmetries = fields(lines_.at(i - 1).text);
            std::vector<VibrationalMode> group;
            for (auto const field : fields(text.substr(14))) {
                auto const value = to_double(field);
                if (!value) {
                    return finish_vibrations(std::move(modes), first, last_line);
                }
                VibrationalMode mode;
                mode.frequency_cm1 = *value;
                group.push_back(std::move(mode));
            }
            if (group.empty() || group.size() > 3) {
                break;
            }
            for (std::size_t k = 0; k < group.size(); ++k) {
                if (numbers.size() == group.size()) {
                    if (auto const n = to_integer(numbers[k]); n && *n > 0 && *n < 1000000) {
                        group[k].index = static_cast<int>(*n);
                    }
                }
                if (symmetries.size() == group.size()) {
                    group[k].symmetry = std::string(symmetries[k]);
                }
            }
            // Labelled rows up to the displacements' header.
            ++i;
            for (; i < range_.end; ++i) {
                auto const row = trim(lines_.at(i).text);
                auto const dashes = row.find("--");
                if (starts_with(row, "Atom") || dashes == std::string_view::npos) {
                    break;
                }
                auto const label = trim(row.substr(0, dashes));
                auto const values = fields(row.substr(dashes + 2));
                if (values.size() != group.size()) {
                    continue;
                }
                for (std::size_t k = 0; k < group.size(); ++k) {
                    auto const value = to_double(values[k]);
                    if (label == "Red. masses") {
                        group[k].reduced_mass_amu = value;
                    } else if (label == "Frc consts") {
                        group[k].force_constant_mdyne_per_angstrom = value;
                    } else if (label == "IR Inten") {
                        group[k].ir_intensity_km_per_mol = value;
                    } else if (label == "Raman Activ") {
                        group[k].raman_activity = value;
                    }
                }
            }
            if (i >= range_.end || !starts_with(trim(lines_.at(i).text), "Atom")) {
                break;
            }
            // One row per atom: atom, atomic number, x y z for each mode.
            ++i;
            for (; i < range_.end; ++i) {
                auto const row = fields(lines_.at(i).text);
                if (row.size() != 2 + 3 * group.size() || !to_integer(row[0])) {
                    break;
                }
                for (std::size_t k = 0; k < group.size(); ++k) {
                    auto const x = to_double(row[2 + 3 * k]);
                    auto const y = to_double(row[3 + 3 * k]);
                    auto const z = to_double(row[4 + 3 * k]);
                    group[k].displacements.push_back({x.value_or(0.0), y.value_or(0.0), z.value_or(0.0)});
                }
            }
            if (atom_count_ != 0 && group.front().displacements.size() != atom_count_) {
                break;
            }
            for (auto& mode : group) {
                modes.push_back(std::move(mode));
            }
            last_line = i - 1;
            // The next group's "Frequencies --" comes two lines later.
            i += 2;
        }
        finish_vibrations(std::move(modes), first, last_line);
    }

    void finish_vibrations(std::vector<VibrationalMode> modes, Line const& first, std::size_t last_line) {
        if (modes.empty()) {
            return;
        }
        lines_.seek(last_line);
        VibrationalBlock block;
        block.modes = std::move(modes);
        builder_.add_analysis(job_, current_step(), std::move(block), span_of_lines(source_, first, line()));
    }

    void read_thermochemistry() {
        Line const first = line();
        ThermochemistryBlock block;
        bool complete = false;
        while (next()) {
            auto const text = trim(line().text);
            auto take = [&](char const* key, std::optional<double>& into) {
                if (auto const found = number_after(text, key)) {
                    into = found->value;
                }
            };
            if (starts_with(text, "Temperature")) {
                take("Temperature", block.temperature_kelvin);
                take("Pressure", block.pressure_atmosphere);
            } else if (starts_with(text, "Molecular mass:")) {
                take("Molecular mass:", block.total_mass_amu);
            } else if (starts_with(text, "Zero-point correction=")) {
                take("Zero-point correction=", block.zero_point_energy);
            } else if (starts_with(text, "Thermal correction to Energy=")) {
                take("Thermal correction to Energy=", block.thermal_correction);
            } else if (starts_with(text, "Thermal correction to Enthalpy=")) {
                take("Thermal correction to Enthalpy=", block.enthalpy_correction);
            } else if (starts_with(text, "Thermal correction to Gibbs Free Energy=")) {
                take("Thermal correction to Gibbs Free Energy=", block.gibbs_correction);
            } else if (starts_with(text, "Sum of electronic and thermal Energies=")) {
                take("Sum of electronic and thermal Energies=", block.thermal_energy);
            } else if (starts_with(text, "Sum of electronic and thermal Enthalpies=")) {
                take("Sum of electronic and thermal Enthalpies=", block.enthalpy);
            } else if (starts_with(text, "Sum of electronic and thermal Free Energies=")) {
                take("Sum of electronic and thermal Free Energies=", block.gibbs_free_energy);
                complete = true;
                break;
            } else if (is_termination(text)) {
                lines_.seek(lines_.index() - 1);
                break;
            }
        }
        if (!complete) {
            return;
        }
        auto const step = current_step();
        if (auto const& primary = builder_.step(step).primary_energy_id) {
            for (auto const& energy : builder_.step(step).energies) {
                if (energy.id == *primary) {
                    block.electronic_energy = energy.value;
                }
            }
        }
        builder_.add_analysis(job_, step, block, span_of_lines(source_, first, line()));
    }

    // "Alpha  occ. eigenvalues --  -10.02022 -10.02017 ..." in columns ten
    // wide, which run together when a value fills its column.
    static std::vector<double> eigenvalues(std::string_view text) {
        std::vector<double> values;
        auto const dashes = text.find("--");
        if (dashes == std::string_view::npos) {
            return values;
        }
        // The label ends in "-- ", and each value fills ten columns after it.
        auto rest = text.substr(std::min(text.size(), dashes + 3));
        while (!rest.empty() && rest.back() == ' ') {
            rest.remove_suffix(1);
        }
        for (std::size_t at = 0; at < rest.size(); at += 10) {
            auto const value = to_double(trim(rest.substr(at, 10)));
            if (!value) {
                return {};
            }
            values.push_back(*value);
        }
        return values;
    }

    void read_orbitals() {
        Line const first = line();
        std::vector<Orbital> alpha;
        std::vector<Orbital> beta;
        while (true) {
            auto const text = trim(line().text);
            bool const is_alpha = starts_with(text, "Alpha ");
            bool const is_beta = starts_with(text, "Beta ");
            bool const occupied = contains(text, " occ. eigenvalues --");
            if (!(is_alpha || is_beta) || !(occupied || contains(text, " virt. eigenvalues --"))) {
                lines_.seek(lines_.index() - 1);
                break;
            }
            // Eigenvalues cut off by the end of the output are left out.
            if (!has_next()) {
                return;
            }
            auto& into = is_alpha ? alpha : beta;
            for (double const energy : eigenvalues(line().text)) {
                Orbital orbital;
                orbital.index = static_cast<int>(into.size());
                orbital.energy = energy;
                orbital.occupation = occupied ? 1.0 : 0.0;
                orbital.kind = occupied ? "occupied" : "virtual";
                into.push_back(std::move(orbital));
            }
            next();
        }
        auto const where = span_of_lines(source_, first, line());
        auto add = [&](std::vector<Orbital> orbitals, SpinChannel spin, double occupied) {
            for (auto& orbital : orbitals) {
                orbital.spin = spin;
                orbital.occupation = *orbital.occupation * occupied;
            }
            OrbitalSetBlock block;
            block.spin = spin;
            block.kind = "canonical";
            block.orbitals = std::move(orbitals);
            builder_.add_analysis(job_, current_step(), std::move(block), where);
        };
        if (alpha.empty()) {
            return;
        }
        if (beta.empty()) {
            add(std::move(alpha), SpinChannel::none, 2.0);
        } else {
            add(std::move(alpha), SpinChannel::alpha, 1.0);
            add(std::move(beta), SpinChannel::beta, 1.0);
        }
    }

    // A header row of column numbers, then "1  O  -0.319889 [spin]" per atom
    // up to "Sum of Mulliken ..." (or "Sum of APT ...", from the atomic polar
    // tensors of a frequency job).
    void read_charges(std::string const& scheme) {
        Line const first = line();
        if (!next()) {
            return;
        }
        AtomicChargeBlock block;
        block.scheme = scheme;
        while (next()) {
            auto const values = fields(line().text);
            if (values.size() < 3 || values.size() > 4) {
                break;
            }
            auto const index = to_integer(values[0]);
            auto const charge = to_double(values[2]);
            if (!index || !charge || *index < 1 || *index > 1000000) {
                break;
            }
            AtomicChargeRecord record;
            record.atom_index = static_cast<int>(*index - 1);
            record.element = std::string(values[1]);
            record.charge = charge;
            if (values.size() == 4) {
                record.spin_population = to_double(values[3]);
            }
            block.records.push_back(std::move(record));
        }
        if (lines_.index() >= range_.end) {
            return;
        }
        if (!starts_with(trim(line().text), "Sum of " + scheme) || block.records.empty()) {
            return;
        }
        builder_.add_analysis(job_, current_step(), std::move(block), span_of_lines(source_, first, line()));
    }

    // "X= -0.0000 Y= -0.0000 Z= -1.5994 Tot= 1.5994", in debye.
    void read_dipole() {
        Line const first = line();
        if (!next()) {
            return;
        }
        auto const text = line().text;
        auto const x = number_after(text, "X=");
        auto const y = number_after(text, "Y=");
        auto const z = number_after(text, "Z=");
        auto const total = number_after(text, "Tot=");
        if (!x || !y || !z || !total) {
            return;
        }
        auto moment = dipole_from_debye(x->value, y->value, z->value, total->value);
        moment.method = route_.method;
        moment.density_type = "electronic";
        moment.source = span_of_lines(source_, first, line());
        DipoleBlock block;
        block.moments.push_back(std::move(moment));
        builder_.add_analysis(job_, current_step(), std::move(block), span_of_lines(source_, first, line()));
    }

    void scalar(std::string_view text, std::string_view key, char const* name, char const* label,
                char const* unit) {
        if (auto const found = number_after(text, key)) {
            ScalarProperty property{name, label, found->value, unit, span(found->field)};
            add_property(std::move(property));
        }
    }

    void add_scalar(char const* name, char const* label, double value, SourceSpan where) {
        add_property(ScalarProperty{name, label, value, "", where});
    }

    // Kept for the step they belong to and written when it closes, a later
    // value of the same quantity replacing the earlier one.
    void add_property(ScalarProperty property) {
        current_step();
        set_property(scalars_, std::move(property));
    }

    void close_step() {
        close_excited();
        if (step_ && !scalars_.properties.empty()) {
            auto const where = span_of_properties(scalars_);
            builder_.add_analysis(job_, step_, std::move(scalars_), where);
        }
        scalars_ = {};
    }

    // Gaussian's warnings, wherever they stand, tables included. Those before
    // the route belong to the licence text of the banner.
    void read_warnings() {
        if (!route_read_) {
            return;
        }
        std::size_t next = route_line_;
        for (auto const first : range_.warnings) {
            if (first >= next) {
                next = read_warning(first) + 1;
            }
        }
    }

    // A warning goes on over the lines indented deeper than its first:
    //  Warning -- explicit consideration of  11 degrees of freedom as
    //            vibrations may cause significant error
    // Returns the index of its last line.
    std::size_t read_warning(std::size_t first) {
        auto const& head = lines_.at(first);
        auto const head_text = trim(head.text);
        auto const indent = static_cast<std::size_t>(head_text.data() - head.text.data());
        std::string message(head_text);
        std::size_t last = first;
        while (last + 1 < range_.end) {
            auto const& next_line = lines_.at(last + 1);
            auto const next_text = trim(next_line.text);
            if (next_text.empty() || static_cast<std::size_t>(next_text.data() - next_line.text.data()) <= indent) {
                break;
            }
            message += ' ';
            message += next_text;
            ++last;
        }
        auto source = span_of_part(source_, head, head_text);
        auto const& tail = lines_.at(last);
        source.end = span_of_part(source_, tail, trim(tail.text)).end;
        diagnostics_.push_back({Severity::warning, "gaussian.warning", std::move(message), source});
        return last;
    }

    void read_termination(std::string_view text) {
        auto& termination = builder_.job(job_).termination;
        if (starts_with(text, "Normal termination")) {
            termination.kind = TerminationKind::normal;
            termination.reason = std::string(text);
            termination.source = span(text);
            return;
        }
        // Gaussian writes why it stopped on the line before this one.
        diagnostics_.push_back(error_termination(termination, lines_, lines_.index(), range_.begin, source_, "",
                                                 "gaussian.error_termination", "Gaussian"));
    }

    void finish() {
        close_step();
        finish_job(title_);
    }

    JobRange const& range_;
    std::vector<Diagnostic>& diagnostics_;

    bool use_standard_ = false;
    bool route_read_ = false;
    std::size_t route_line_ = 0;
    Route route_;
    std::string title_;
    std::vector<chem::Vec3> input_positions_;
    std::vector<chem::Vec3> step_input_positions_;
    ScalarPropertyBlock scalars_;
    std::optional<ExcitedStateBlock> excited_;
    std::vector<AbsorptionPeak> pending_peaks_;
    SourceSpan excited_span_;
    std::optional<StepId> excited_step_;
    std::optional<long long> followed_state_;
    std::optional<long long> cisd_state_;
};

// "Gaussian 16:  ES64L-G16RevA.03 25-Dec-2016" -> "16 Revision A.03".
std::string read_version(LineCursor const& lines) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        auto const text = trim(lines.at(i).text);
        if (!starts_with(text, "Gaussian ") || text.size() < 12 || text[11] != ':') {
            continue;
        }
        std::string version(text.substr(9, 2));
        auto const values = fields(text.substr(12));
        if (!values.empty()) {
            auto const rev = values.front().find("Rev");
            if (rev != std::string_view::npos) {
                version += " Revision " + std::string(values.front().substr(rev + 3));
            }
        }
        return version;
    }
    return "";
}

}  // namespace

bool recognises(std::string_view text) {
    auto const head = text.substr(0, 1 << 16);
    return contains(head, "Entering Gaussian System") ||
           (contains(head, "Gaussian, Inc.") && (contains(head, "Gaussian 16:") || contains(head, "Gaussian 09:")));
}

model::ParseResult<Document> read(std::string_view text, std::string_view file_name) {
    model::ParseResult<Document> result;
    DocumentBuilder builder;
    auto const source = builder.add_output(file_name, text, ProgramKind::gaussian, "Gaussian");
    LineCursor lines(text);
    auto& program = builder.document().program;
    program.version = read_version(lines);

    for (auto const& range : survey_jobs(lines)) {
        if (range.end <= range.begin) {
            continue;
        }
        JobReader(builder, source, lines, range, result.diagnostics).read();
    }

    builder.finish_import(result, lines, source, "gaussian.truncated", "Gaussian");
    return result;
}

}  // namespace morv::qc::import::gaussian
