#include "gaussian/route.hpp"

#include "framework/text.hpp"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace morv::qc::import::gaussian {

namespace {

// "opt=(calcfc,tight)" -> "opt"; "td(nstates=5)" -> "td".
std::string keyword_name(std::string_view token) {
    auto const stop = token.find_first_of("=(");
    return ascii_lower(token.substr(0, stop));
}

// The method without options in parentheses, which Gaussian writes after
// some methods ("CIS(50-50,NStates=5)"); "(T)" of CCSD(T) belongs to the name,
// and so does the "D" that asks CIS for its doubles correction
// ("CIS(D,NStates=5)" is CIS(D)).
std::string method_name(std::string_view text) {
    auto const open = text.find('(');
    if (open != std::string_view::npos) {
        auto const options = text.substr(open);
        if (ascii_upper(text.substr(0, open)) == "CIS") {
            auto const first = ascii_upper(trim(options.substr(1, options.find_first_of(",)") - 1)));
            if (first == "D") {
                return "CIS(D)";
            }
        }
        if (contains(options, "=") || contains(options, ",") || contains(options, "-")) {
            text = text.substr(0, open);
        }
    }
    return ascii_upper(text);
}

bool starts_with_any(std::string const& name, std::initializer_list<char const*> prefixes) {
    for (auto const* prefix : prefixes) {
        if (starts_with(name, prefix)) {
            return true;
        }
    }
    return false;
}

// The families of methods and basis sets that a route names most often; a
// route naming others through "method/basis" needs no list.
bool is_method(std::string const& name) {
    static constexpr std::initializer_list<char const*> exact = {"hf", "rhf", "uhf", "rohf", "am1", "pm3", "pm6",
                                                                 "pm7", "cis", "cisd", "qcisd", "ccd", "ccsd",
                                                                 "ccsd(t)", "qcisd(t)", "bd", "mp2", "mp3", "mp4",
                                                                 "mp5"};
    for (auto const* known : exact) {
        if (name == known) {
            return true;
        }
    }
    return starts_with_any(name, {"eom", "b3", "pbe", "wb97", "cam-", "m06", "bp86", "blyp", "tpss", "b2plyp"});
}

bool is_basis_set(std::string const& name) {
    return starts_with_any(name, {"sto-", "3-21", "6-31", "cc-p", "aug-cc", "def2", "lanl", "sdd", "gen"});
}

}  // namespace

Route parse_route(std::string text) {
    Route route;
    route.text = std::string(trim(text));
    auto add_task = [&route](TaskKind task) {
        if (std::find(route.tasks.begin(), route.tasks.end(), task) == route.tasks.end()) {
            route.tasks.push_back(task);
        }
    };
    // Blanks inside parentheses belong to one keyword.
    std::vector<std::string> tokens;
    std::string token;
    int depth = 0;
    for (char c : route.text) {
        if (c == '(') {
            ++depth;
        } else if (c == ')' && depth > 0) {
            --depth;
        }
        if ((c == ' ' || c == '\t') && depth == 0) {
            if (!token.empty()) {
                tokens.push_back(std::move(token));
                token.clear();
            }
        } else {
            token.push_back(c);
        }
    }
    if (!token.empty()) {
        tokens.push_back(std::move(token));
    }
    for (auto& word : tokens) {
        std::string_view view = word;
        if (!view.empty() && view.front() == '#') {
            view.remove_prefix(1);
            if (!view.empty() && std::string_view("pPnNtT").find(view.front()) != std::string_view::npos &&
                (view.size() == 1 || view[1] == ' ')) {
                view.remove_prefix(1);
            }
        }
        if (view.empty()) {
            continue;
        }
        // "method/basis", where neither the slash nor an "=" before it is
        // inside parentheses: "CIS(50-50,NStates=5)/STO-3G" but not
        // "iop(9/40=2)" nor "geom=a/b".
        std::size_t slash = std::string_view::npos;
        bool assigned = false;
        int level = 0;
        for (std::size_t i = 0; i < view.size() && slash == std::string_view::npos; ++i) {
            if (view[i] == '(') {
                ++level;
            } else if (view[i] == ')' && level > 0) {
                --level;
            } else if (level == 0 && view[i] == '=') {
                assigned = true;
            } else if (level == 0 && view[i] == '/') {
                slash = i;
            }
        }
        if (slash != std::string_view::npos && !assigned && route.method.empty()) {
            route.method = method_name(view.substr(0, slash));
            route.basis_set = ascii_upper(view.substr(slash + 1));
        }
        auto const name = keyword_name(view);
        if (name == "opt") {
            add_task(TaskKind::optimization);
        } else if (name == "freq") {
            add_task(TaskKind::frequency);
        } else if (name == "td" || name == "tda" || name == "cis" || starts_with(name, "eom") ||
                   starts_with(name, "cis/") || starts_with(name, "td/")) {
            add_task(TaskKind::excited_state);
        } else if (name == "scan") {
            add_task(TaskKind::scan);
        } else if (name == "irc") {
            add_task(TaskKind::irc);
        } else if (name == "sp") {
            add_task(TaskKind::single_point);
        }
    }
    // Without "method/basis" the two stand as keywords of their own
    // ("EOMCCSD=(NStates=10) STO-3G").
    if (route.method.empty()) {
        for (auto const& word : tokens) {
            auto const name = keyword_name(word);
            if (route.method.empty() && is_method(name)) {
                route.method = ascii_upper(name);
            } else if (route.basis_set.empty() && is_basis_set(name)) {
                route.basis_set = ascii_upper(word);
            }
        }
    }
    auto const method = ascii_lower(route.method);
    // CISD and QCISD are ground-state methods; CIS, CIS(D), TD and EOM reach
    // excited states.
    if (method == "cis" || method == "cis(d)" || starts_with(method, "td") || starts_with(method, "eom")) {
        add_task(TaskKind::excited_state);
    }
    if (route.tasks.empty()) {
        route.tasks.push_back(TaskKind::single_point);
    }
    return route;
}

}  // namespace morv::qc::import::gaussian
