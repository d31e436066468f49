#pragma once

// The word that stands for each enumerator of the model in a document, held
// once: the writer, the reader, the command-line tool and the Python classes
// all take their words from these tables. A table lists its enumeration's
// words in the order of the values, from 0; `otherwise` is what a value
// outside the table is written as and what a word outside it reads as.

#include <morv/model/diagnostic.hpp>
#include <morv/model/parse_result.hpp>
#include <morv/qc/convergence.hpp>
#include <morv/qc/energy.hpp>
#include <morv/qc/job.hpp>
#include <morv/qc/orbitals.hpp>
#include <morv/qc/program.hpp>

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace morv::qc {

template <typename Enum>
struct WireWords;

template <>
struct WireWords<model::ParseStatus> {
    static constexpr std::array words{"complete", "partial", "failed"};
    static constexpr auto otherwise = model::ParseStatus::failed;
};

template <>
struct WireWords<model::Severity> {
    static constexpr std::array words{"note", "warning", "error"};
    static constexpr auto otherwise = model::Severity::note;
};

template <>
struct WireWords<ResultProfile> {
    static constexpr std::array words{"unknown", "summary", "standard", "full"};
    static constexpr auto otherwise = ResultProfile::unknown;
};

template <>
struct WireWords<ProgramKind> {
    static constexpr std::array words{"unknown", "gaussian", "orca", "gamess"};
    static constexpr auto otherwise = ProgramKind::unknown;
};

template <>
struct WireWords<TerminationKind> {
    static constexpr std::array words{"unknown", "running", "normal", "error", "interrupted", "truncated"};
    static constexpr auto otherwise = TerminationKind::unknown;
};

template <>
struct WireWords<JobRelation> {
    static constexpr std::array words{"none", "link", "restart", "branch", "image"};
    static constexpr auto otherwise = JobRelation::none;
};

template <>
struct WireWords<TaskKind> {
    static constexpr std::array words{"single_point", "optimization", "frequency", "excited_state",
                                      "irc",          "scan",         "neb"};
    static constexpr auto otherwise = TaskKind::single_point;
};

template <>
struct WireWords<EnergyKind> {
    static constexpr std::array words{"unknown",  "electronic", "scf",        "correlated", "excited_state_total",
                                      "gibbs_free", "enthalpy", "zero_point", "thermal_correction"};
    static constexpr auto otherwise = EnergyKind::unknown;
};

template <>
struct WireWords<ConvergenceStatus> {
    static constexpr std::array words{"unknown", "converged", "not_converged"};
    static constexpr auto otherwise = ConvergenceStatus::unknown;
};

template <>
struct WireWords<CriterionKind> {
    static constexpr std::array words{"max_force",     "rms_force",     "max_displacement",    "rms_displacement",
                                      "energy_change", "gradient_norm", "constraint_violation"};
    static constexpr auto otherwise = CriterionKind::gradient_norm;
};

template <>
struct WireWords<SpinChannel> {
    static constexpr std::array words{"none", "alpha", "beta"};
    static constexpr auto otherwise = SpinChannel::none;
};

namespace detail {

// GCC and Clang spell a template's value argument in the function's
// signature: a named enumerator by its name, any other value as a cast such
// as "(morv::qc::TaskKind)7". That tells, at compile time, whether a value
// has a name, which no table kept by hand can.
template <auto Value>
constexpr bool is_named_enumerator() {
    std::string_view const signature = __PRETTY_FUNCTION__;
    return signature.find("= (") == std::string_view::npos;
}

template <typename Enum, std::size_t... Values>
constexpr bool names_every_value(std::index_sequence<Values...>) {
    return (is_named_enumerator<static_cast<Enum>(Values)>() && ...);
}

// The table names the values 0 to size - 1, and the enumeration has no value
// after them: an enumerator added without its word fails to compile.
template <typename Enum>
constexpr bool words_match_enumerators() {
    constexpr std::size_t size = WireWords<Enum>::words.size();
    return names_every_value<Enum>(std::make_index_sequence<size>()) &&
           !is_named_enumerator<static_cast<Enum>(size)>();
}

}  // namespace detail

// The word of `value`, owned by the table.
template <typename Enum>
constexpr char const* wire_word(Enum value) {
    static_assert(detail::words_match_enumerators<Enum>(), "every enumerator needs its word, in value order");
    constexpr auto const& words = WireWords<Enum>::words;
    auto const index = static_cast<std::size_t>(value);
    return index < words.size() ? words[index] : words[static_cast<std::size_t>(WireWords<Enum>::otherwise)];
}

// The enumerator whose word is `text`, byte for byte.
template <typename Enum>
constexpr std::optional<Enum> enumerator_of_word(std::string_view text) {
    static_assert(detail::words_match_enumerators<Enum>(), "every enumerator needs its word, in value order");
    constexpr auto const& words = WireWords<Enum>::words;
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (text == words[index]) {
            return static_cast<Enum>(index);
        }
    }
    return std::nullopt;
}

// The enumerator whose word is `text`, or the table's `otherwise`.
template <typename Enum>
constexpr Enum enumerator_or_otherwise(std::string_view text) {
    return enumerator_of_word<Enum>(text).value_or(WireWords<Enum>::otherwise);
}

}  // namespace morv::qc
