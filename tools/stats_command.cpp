#include "commands.hpp"
#include "file_reports.hpp"
#include "file_runner.hpp"

#include <morv/qc/json/codec.hpp>
#include <morv/qc/model.hpp>

#include <array>
#include <charconv>
#include <cstdio>
#include <map>
#include <optional>

namespace morv::cli {
namespace {

using Result = model::ParseResult<qc::Document>;

struct Tally {
    std::size_t records = 0;
    // What the records add to the compact text of the document.
    std::size_t bytes = 0;
};

struct JobSummary {
    qc::CalculationJob const* job = nullptr;
    std::size_t steps = 0;
    qc::CalculationStep const* final_step = nullptr;
    qc::EnergyRecord const* final_energy = nullptr;
};

struct DocumentStats {
    std::size_t compact_bytes = 0;
    std::vector<std::pair<char const*, Tally>> sections;
    std::map<std::size_t, Tally> analyses_by_type;
    std::size_t atoms = 0;
    std::vector<JobSummary> jobs;
};

std::size_t compact_size(qc::Document const& document) { return qc::json::serialize(document).size(); }

// Sizes come from writing a document that holds only the part measured, less
// the document that holds nothing, so that they add up to the whole text.
template <typename Field>
Tally tally_of(qc::Document const& document, Field qc::Document::*field, std::size_t empty_bytes) {
    qc::Document only;
    only.*field = document.*field;
    return {(document.*field).size(), compact_size(only) - empty_bytes};
}

// The program block together with the normalization record, the one record
// of the root that is not a list or a table.
Tally tally_program(qc::Document const& document, std::size_t empty_bytes) {
    qc::Document only;
    only.program = document.program;
    only.normalization = document.normalization;
    return {1, compact_size(only) - empty_bytes};
}

std::map<std::size_t, Tally> tally_analyses(qc::Document const& document, std::size_t empty_bytes) {
    std::map<std::size_t, qc::Document> by_type;
    for (auto const& block : document.analyses) {
        by_type[block.payload.index()].analyses.push_back(block);
    }
    std::map<std::size_t, Tally> tallies;
    for (auto const& [type, only] : by_type) {
        tallies[type] = {only.analyses.size(), compact_size(only) - empty_bytes};
    }
    return tallies;
}

// A job's final energy is that of its step with the highest ordinal among
// those that hold energies (the later one on a tie): the energy that the step
// names as primary, or else its last one.
JobSummary summarise_job(qc::Document const& document, qc::CalculationJob const& job) {
    JobSummary summary{&job};
    for (auto const& step : document.steps) {
        if (step.job_id != job.id) {
            continue;
        }
        ++summary.steps;
        if (!step.energies.empty() && (!summary.final_step || step.ordinal >= summary.final_step->ordinal)) {
            summary.final_step = &step;
        }
    }
    if (summary.final_step) {
        auto const& energies = summary.final_step->energies;
        summary.final_energy = &energies.back();
        for (auto const& energy : energies) {
            if (summary.final_step->primary_energy_id == energy.id) {
                summary.final_energy = &energy;
            }
        }
    }
    return summary;
}

DocumentStats gather_stats(qc::Document const& document) {
    std::size_t const empty_bytes = compact_size(qc::Document{});
    DocumentStats stats;
    stats.compact_bytes = compact_size(document);
    stats.sections = {
        {"program", tally_program(document, empty_bytes)},
        {"sources", tally_of(document, &qc::Document::sources, empty_bytes)},
        {"systems", tally_of(document, &qc::Document::systems, empty_bytes)},
        {"frames", tally_of(document, &qc::Document::frames, empty_bytes)},
        {"jobs", tally_of(document, &qc::Document::jobs, empty_bytes)},
        {"steps", tally_of(document, &qc::Document::steps, empty_bytes)},
        {"analyses", tally_of(document, &qc::Document::analyses, empty_bytes)},
        {"metadata", tally_of(document, &qc::Document::metadata, empty_bytes)},
        {"extensions", tally_of(document, &qc::Document::extensions, empty_bytes)},
    };
    stats.analyses_by_type = tally_analyses(document, empty_bytes);
    for (auto const& system : document.systems) {
        stats.atoms += system.topology.atoms.size();
    }
    for (auto const& job : document.jobs) {
        stats.jobs.push_back(summarise_job(document, job));
    }
    return stats;
}

std::string shortest_text(double value) {
    char buffer[32];
    auto const end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return std::string(buffer, end);
}

std::string table_row(char const* name, Tally const& tally) {
    char line[96];
    std::snprintf(line, sizeof line, "  %-18s %8zu %10zu\n", name, tally.records, tally.bytes);
    return line;
}

std::string job_line(JobSummary const& summary) {
    auto const& job = *summary.job;
    std::string line = "  job " + std::to_string(job.id.value);
    if (job.primary_task) {
        line += std::string(" (") + qc::to_string(*job.primary_task) + ")";
    }
    line += ": " + std::to_string(summary.steps) + (summary.steps == 1 ? " step" : " steps");
    if (!summary.final_energy) {
        return line + ", no energy\n";
    }
    return line + ", final energy " + shortest_text(summary.final_energy->value) + " hartree (step " +
           std::to_string(summary.final_step->id.value) + ", " + qc::to_string(summary.final_energy->kind) + ")\n";
}

std::string stats_text(std::string const& name, std::size_t bytes, Result const& result) {
    DocumentStats const stats = gather_stats(result.value);
    std::string text = name + ": " + qc::to_string(result.status) + ", " + std::to_string(bytes) + " bytes read, " +
                       std::to_string(stats.compact_bytes) + " bytes compact\n";
    text += "  section             records      bytes\n";
    for (auto const& [section, tally] : stats.sections) {
        text += table_row(section, tally);
    }
    if (!stats.analyses_by_type.empty()) {
        text += "  analysis type       records      bytes\n";
        for (auto const& [type, tally] : stats.analyses_by_type) {
            text += table_row(qc::analysis_type_words[type], tally);
        }
    }
    text += "  atoms " + std::to_string(stats.atoms) + "\n";
    for (auto const& job : stats.jobs) {
        text += job_line(job);
    }
    return text;
}

Json tally_json(Tally const& tally) { return Json{{"records", tally.records}, {"bytes", tally.bytes}}; }

Json job_json(JobSummary const& summary) {
    auto const& job = *summary.job;
    Json object{{"id", job.id.value}};
    object["primary_task"] = job.primary_task ? Json(qc::to_string(*job.primary_task)) : Json();
    object["steps"] = summary.steps;
    object["final_energy"] = Json();
    if (summary.final_energy) {
        object["final_energy"] = Json{{"hartree", summary.final_energy->value},
                                      {"kind", qc::to_string(summary.final_energy->kind)},
                                      {"step_id", summary.final_step->id.value}};
    }
    return object;
}

Json stats_json(std::string const& name, std::size_t bytes, Result const& result) {
    DocumentStats const stats = gather_stats(result.value);
    Json sections = Json::object();
    for (auto const& [section, tally] : stats.sections) {
        sections[section] = tally_json(tally);
    }
    Json analyses = Json::object();
    for (auto const& [type, tally] : stats.analyses_by_type) {
        analyses[qc::analysis_type_words[type]] = tally_json(tally);
    }
    Json jobs = Json::array();
    for (auto const& job : stats.jobs) {
        jobs.push_back(job_json(job));
    }
    return Json{{"path", name},
                {"status", qc::to_string(result.status)},
                {"bytes", bytes},
                {"compact_bytes", stats.compact_bytes},
                {"sections", std::move(sections)},
                {"analysis_types", std::move(analyses)},
                {"atoms", stats.atoms},
                {"jobs", std::move(jobs)}};
}

}  // namespace

int run_stats(StatsOptions const& options) {
    return process_files(options.paths, options.jobs, "read",
                         [&](std::string const& name, std::size_t bytes, Result const& result) {
                             return options.json ? json_line(stats_json(name, bytes, result))
                                                 : stats_text(name, bytes, result);
                         });
}

}  // namespace morv::cli
