#include "commands.hpp"
#include "document_text.hpp"
#include "exit_status.hpp"
#include "file_reports.hpp"
#include "file_runner.hpp"
#include "input_files.hpp"

#include <morv/qc/import.hpp>

#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>

#include <unistd.h>

namespace morv::cli {
namespace {

namespace fs = std::filesystem;

// The output's file name without its last extension, then ".json": water.log
// gives water.json, a.b.out gives a.b.json.
fs::path document_name(std::string const& path) {
    fs::path const name = fs::path(path).filename();
    return (name.has_extension() ? name.stem() : name).string() + ".json";
}

// -o names a folder, as cp's last argument does, when there is more than one
// output, when it is a folder already or when it ends in a slash.
bool names_folder(std::string const& output, std::size_t inputs) {
    std::error_code ignored;
    return inputs > 1 || (!output.empty() && output.back() == '/') || fs::is_directory(output, ignored);
}

struct Placement {
    std::vector<std::string> targets;
    std::optional<std::string> folder;
    // Why the arguments cannot be carried out; empty when they can.
    std::string refusal;
};

Placement place(ImportOptions const& options) {
    Placement placement;
    bool const into_folder = options.output && names_folder(*options.output, options.paths.size());
    if (into_folder) {
        placement.folder = *options.output;
    }
    // Two outputs written to one file would leave only the last, and an
    // output replaced by its own document would be lost: both are refused
    // before anything is read.
    std::map<fs::path, std::string const*> claimed;
    for (auto const& path : options.paths) {
        if (path == "-" && (!options.output || into_folder)) {
            placement.refusal = "standard input has no file name to derive a document's from; give -o FILE";
            return placement;
        }
        fs::path const target = !options.output ? fs::path(path).parent_path() / document_name(path)
                                : into_folder   ? fs::path(*options.output) / document_name(path)
                                                : fs::path(*options.output);
        fs::path const normal = target.lexically_normal();
        if (normal == fs::path(path).lexically_normal()) {
            placement.refusal = path + " would be replaced by its own document";
            return placement;
        }
        if (auto const [found, added] = claimed.emplace(normal, &path); !added) {
            placement.refusal =
                *found->second + " and " + path + " would both be written to " + target.string();
            return placement;
        }
        placement.targets.push_back(target.string());
    }
    return placement;
}

// The name under which an output knows itself in its document: its file name
// alone, so that the document is the same wherever the output was read from.
std::string source_name(std::string const& path) {
    return path == "-" ? std::string() : fs::path(path).filename().string();
}

FileOutcome import_file(std::string const& path, std::string const& text, std::string const& target,
                        ImportOptions const& options, bool color) {
    auto const result = qc::import_output(text, source_name(path));
    FileOutcome outcome{exit_status_of(result.status), "", ""};
    std::optional<std::string> written;
    // A failed import holds nothing worth writing, and writing it could
    // replace a good document with an empty one. The document keeps the
    // import's status and diagnostics, so that a partial import reads back
    // as partial and says what was lost.
    if (result.status != model::ParseStatus::failed) {
        DocumentTextOptions const text_options{options.pretty, options.indent, true};
        if (auto const reason = write_file_atomically(target, document_text(result, text_options))) {
            outcome.exit_status = exit_cannot_create;
            outcome.error = unwritable_message(target, *reason);
        } else {
            written = target;
        }
    }
    std::string const name = display_name(path);
    if (options.json) {
        Json report = check_report_json(name, result);
        report["output"] = written ? Json(*written) : Json(nullptr);
        outcome.output = json_line(report);
    } else {
        outcome.output = check_report_text(written ? name + " -> " + *written : name, result, color);
    }
    return outcome;
}

}  // namespace

int run_import(ImportOptions const& options) {
    Placement const placement = place(options);
    if (!placement.refusal.empty()) {
        std::fputs(("morv-qc-json import: " + placement.refusal + "\n").c_str(), stderr);
        return exit_usage;
    }
    if (placement.folder) {
        std::error_code error;
        fs::create_directories(*placement.folder, error);
        if (error) {
            std::fputs(("morv-qc-json: cannot create " + *placement.folder + ": " + error.message() + "\n").c_str(),
                       stderr);
            return exit_cannot_create;
        }
    }
    bool const color = !options.json && use_color(options.color, STDOUT_FILENO);
    return run_over_files(options.paths, options.jobs, "imported",
                          [&](std::size_t index, std::string const& path, std::string const& text) {
                              return import_file(path, text, placement.targets[index], options, color);
                          });
}

}  // namespace morv::cli
