#include "orca/simple_input.hpp"

#include "framework/text.hpp"

#include <algorithm>
#include <initializer_list>

namespace morv::qc::import::orca {

namespace {

bool starts_with_any(std::string_view name, std::initializer_list<char const*> prefixes) {
    return std::any_of(prefixes.begin(), prefixes.end(), [&](char const* prefix) { return starts_with(name, prefix); });
}

bool is_any(std::string_view name, std::initializer_list<char const*> names) {
    return std::any_of(names.begin(), names.end(), [&](char const* known) { return name == known; });
}

// Orbital basis sets; auxiliary ones ("def2/J", "def2-SVP/C") carry a slash.
bool is_basis_set(std::string_view name) {
    return !contains(name, "/") &&
           starts_with_any(name, {"sto-", "3-21", "6-31", "def2-", "def-", "cc-p", "aug-cc", "ma-def2", "pc-", "pcseg",
                                  "pcs", "sarc", "x2c-", "dkh-", "zora-", "ano-", "minix", "midi", "mini"});
}

void add_task(std::vector<TaskKind>& tasks, TaskKind task) {
    if (std::find(tasks.begin(), tasks.end(), task) == tasks.end()) {
        tasks.push_back(task);
    }
}

// Keywords that tune a run without naming its method: references, SCF
// settings, integral approximations, grids, symmetry, printing, solvation and
// dispersion models.
bool is_setting(std::string_view name) {
    return is_any(name, {"rks", "uks", "roks", "rhf", "uhf", "rohf", "sp", "engrad", "numgrad", "nori", "ri", "rijcosx",
                         "rijk", "rijonx", "nocosx", "cosx", "usesym", "nousesym", "noautostart", "autostart",
                         "autoaux", "nmr", "printbasis", "largeprint", "miniprint", "smallprint", "normalprint",
                         "printmos", "slowconv", "veryslowconv", "kdiis", "soscf", "nososcf", "trah", "notrah",
                         "moread", "keepints", "allpop", "bohrs", "angs", "d2", "d3", "d3bj", "d3zero", "d4",
                         "normalpno", "tightpno", "loosepno", "nofrozencore", "frozencore", "uno", "uco"}) ||
           starts_with_any(name, {"tightscf", "verytightscf", "extremescf", "loosescf", "normalscf", "sloppyscf",
                                  "strongscf", "defgrid", "grid", "finalgrid", "nofinalgrid", "pal", "cpcm", "smd",
                                  "maxcore", "xyzfile"});
}

}  // namespace

SimpleInput parse_simple_input(std::string_view keywords) {
    SimpleInput input;
    input.text = std::string(trim(keywords));
    bool excited = false;
    for (auto field : fields(keywords)) {
        while (!field.empty() && field.front() == '!') {
            field.remove_prefix(1);
        }
        auto const name = ascii_lower(field);
        if (is_any(name, {"opt", "copt", "zopt", "gdiis-opt", "tightopt", "looseopt", "verytightopt", "optts"})) {
            add_task(input.tasks, TaskKind::optimization);
        } else if (is_any(name, {"freq", "numfreq", "anfreq"})) {
            add_task(input.tasks, TaskKind::frequency);
        } else if (name == "irc") {
            add_task(input.tasks, TaskKind::irc);
        } else if (starts_with(name, "neb")) {
            add_task(input.tasks, TaskKind::neb);
        } else if (is_basis_set(name)) {
            if (input.basis_set.empty()) {
                input.basis_set = ascii_upper(field);
            }
        } else if (!name.empty() && !is_setting(name) && !contains(name, "/") && input.method.empty()) {
            input.method = ascii_upper(field);
            excited = contains(name, "eom-") || is_any(name, {"cis", "cis(d)"}) ||
                      starts_with_any(name, {"adc", "rocis"});
        }
    }
    // ORCA runs Hartree-Fock when no keyword names a method.
    if (input.method.empty()) {
        input.method = "HF";
    }
    if (excited) {
        add_task(input.tasks, TaskKind::excited_state);
    }
    return input;
}

}  // namespace morv::qc::import::orca
