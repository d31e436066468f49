#include "gamess/options.hpp"


namespace morv::qc::import::gamess {

namespace {

bool is_blank(char c) { return c == ' ' || c == '\t'; }

bool is_none(std::string_view value) { return value.empty() || value == "NONE"; }

bool is_semi_empirical(std::string_view gbasis) {
    return gbasis == "MNDO" || gbasis == "AM1" || gbasis == "PM3" || gbasis == "RM1";
}

}  // namespace

void Options::add_line(std::string_view line) {
    std::size_t at = 0;
    while ((at = line.find('=', at)) != std::string_view::npos) {
        // The key is the word before the '=', blanks between allowed.
        std::size_t key_end = at;
        while (key_end > 0 && is_blank(line[key_end - 1])) {
            --key_end;
        }
        std::size_t key_begin = key_end;
        while (key_begin > 0 && !is_blank(line[key_begin - 1])) {
            --key_begin;
        }
        std::size_t value_begin = at + 1;
        while (value_begin < line.size() && is_blank(line[value_begin])) {
            ++value_begin;
        }
        std::size_t value_end = value_begin;
        while (value_end < line.size() && !is_blank(line[value_end])) {
            ++value_end;
        }
        if (key_begin < key_end) {
            pairs_.emplace_back(line.substr(key_begin, key_end - key_begin),
                                line.substr(value_begin, value_end - value_begin));
        }
        at = value_end > at ? value_end : at + 1;
    }
}

std::string_view Options::value(std::string_view key) const {
    for (auto it = pairs_.rbegin(); it != pairs_.rend(); ++it) {
        if (it->first == key) {
            return it->second;
        }
    }
    return {};
}

std::string method_of(Options const& options) {
    if (auto const cc = options.value("CCTYP"); !is_none(cc)) {
        return std::string(cc);
    }
    if (auto const ci = options.value("CITYP"); !is_none(ci)) {
        return std::string(ci);
    }
    if (auto const level = options.value("MPLEVL"); !level.empty() && level != "0") {
        return "MP" + std::string(level);
    }
    if (auto const dft = options.value("DFTTYP"); !is_none(dft)) {
        return std::string(dft);
    }
    if (auto const gbasis = options.value("GBASIS"); is_semi_empirical(gbasis)) {
        return std::string(gbasis);
    }
    return std::string(options.value("SCFTYP"));
}

std::string basis_of(Options const& options) {
    auto const gbasis = options.value("GBASIS");
    if (is_semi_empirical(gbasis)) {
        return "";
    }
    auto const gaussians = std::string(options.value("IGAUSS"));
    if (gbasis == "STO") {
        return "STO-" + gaussians + "G";
    }
    if (gbasis != "N21" && gbasis != "N31" && gbasis != "N311") {
        return std::string(gbasis);
    }
    auto name = gaussians + "-" + std::string(gbasis.substr(1));
    if (options.value("DIFFSP") == "T") {
        name += options.value("DIFFS") == "T" ? "++" : "+";
    }
    name += "G";
    // Polarisation in Pople's notation: the heavy atoms' shells, then the
    // hydrogens' after a comma, "(2df,p)".
    auto shells = [&](std::string_view key, char const* shell) -> std::string {
        auto const count = options.value(key);
        if (count.empty() || count == "0") {
            return "";
        }
        return count == "1" ? std::string(shell) : std::string(count) + shell;
    };
    auto const heavy = shells("NDFUNC", "d") + shells("NFFUNC", "f");
    auto const light = shells("NPFUNC", "p");
    if (heavy.empty() && light.empty()) {
        return name;
    }
    return name + "(" + heavy + (light.empty() ? "" : "," + light) + ")";
}

std::vector<TaskKind> tasks_of(Options const& options) {
    static constexpr std::pair<char const*, TaskKind> runtypes[] = {
        {"OPTIMIZE", TaskKind::optimization}, {"SADPOINT", TaskKind::optimization},
        {"HESSIAN", TaskKind::frequency},     {"IRC", TaskKind::irc},
    };
    bool const excited = !is_none(options.value("TDDFT")) || options.value("CITYP") == "CIS";
    auto const runtype = options.value("RUNTYP");
    for (auto const& [name, task] : runtypes) {
        if (runtype == name) {
            return excited ? std::vector<TaskKind>{task, TaskKind::excited_state} : std::vector<TaskKind>{task};
        }
    }
    return {excited ? TaskKind::excited_state : TaskKind::single_point};
}

}  // namespace morv::qc::import::gamess
