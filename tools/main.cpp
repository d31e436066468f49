// morv-qc-json: checks, formats and summarises "morv.qc.document.v2" files,
// and imports program outputs into them.

#include "commands.hpp"
#include "exit_status.hpp"

#include <morv/qc/json/codec.hpp>
#include <morv/qc/json/version.hpp>

#include <CLI/CLI.hpp>

#include <map>
#include <string>

namespace {

using morv::cli::ColorMode;

std::string version_text() {
    return std::string("morv-qc-json ") + morv::qc::json::library_version + "\nschema " + morv::qc::json::schema_id +
           " (share/morv_qc_json/" + morv::qc::json::schema_id + ".schema.json under the installation prefix)";
}

void add_color_option(CLI::App& command, ColorMode& mode) {
    static std::map<std::string, ColorMode> const modes{
        {"auto", ColorMode::automatic}, {"always", ColorMode::always}, {"never", ColorMode::never}};
    command
        .add_option("--color", mode,
                    "Colour by severity: auto (when writing to a terminal and NO_COLOR is unset), always or never")
        ->transform(CLI::CheckedTransformer(modes))
        ->option_text("WHEN (auto|always|never, default auto)");
}

void add_jobs_option(CLI::App& command, unsigned& jobs) {
    command.add_option("-j,--jobs", jobs, "Files read in parallel; reports keep the order of the arguments")
        ->check(CLI::Range(1u, 1024u))
        ->option_text("N (default: one per core)");
}

void add_indent_options(CLI::App& command, bool& pretty, std::uint32_t& indent) {
    command.add_flag("--pretty", pretty, "Indented output (compact output also ends with a line feed)");
    command.add_option("--indent", indent, "Blanks per level; implies --pretty")
        ->check(CLI::Range(0u, 32u))
        ->option_text("N (0 to 32, default 2)")
        ->each([&pretty](std::string const&) { pretty = true; });
}

void add_check_command(CLI::App& app, morv::cli::CheckOptions& options) {
    auto* check = app.add_subcommand("check", "Decode files and report their status and diagnostics");
    check->add_option("files", options.paths, "Files to check (- for standard input)")->required();
    check->add_flag("--json", options.json, "One JSON object per file (JSON Lines)");
    add_color_option(*check, options.color);
    add_jobs_option(*check, options.jobs);
    check->footer(
        "Exit status: 0 every file complete, 1 the worst is partial, 2 any failed, 66 a file could not be read.\n\n"
        "Examples:\n"
        "  morv-qc-json check run.json\n"
        "  morv-qc-json check --json --jobs 4 results/*.json > report.jsonl");
}

void add_format_command(CLI::App& app, morv::cli::FormatOptions& options) {
    auto* format = app.add_subcommand("format", "Decode a file and write the document back");
    format->add_option("file", options.path, "File to format (- for standard input)")->required();
    format->add_option("-o,--output", options.output,
                       "Where to write (default standard output); replaced through a temporary file");
    add_indent_options(*format, options.pretty, options.indent);
    format->add_flag("--with-diagnostics", options.with_diagnostics,
                     "Keep the decode's status and diagnostics in the output");
    add_color_option(*format, options.color);
    format->footer(
        "A document that fails to decode is not written. Exit status as for check, 73 when the output\n"
        "cannot be written.\n\n"
        "Examples:\n"
        "  morv-qc-json format --pretty run.json\n"
        "  morv-qc-json format run.json -o run.json");
}

void add_stats_command(CLI::App& app, morv::cli::StatsOptions& options) {
    auto* stats = app.add_subcommand(
        "stats", "Sizes and counts per section and analysis type, atoms, and each job's steps and final energy");
    stats->add_option("files", options.paths, "Files to read (- for standard input)")->required();
    stats->add_flag("--json", options.json, "One JSON object per file (JSON Lines)");
    add_jobs_option(*stats, options.jobs);
    stats->footer(
        "Bytes are what each part adds to the document's compact text.\n\n"
        "Examples:\n"
        "  morv-qc-json stats run.json\n"
        "  morv-qc-json stats --json results/*.json");
}

void add_import_command(CLI::App& app, morv::cli::ImportOptions& options) {
    auto* import = app.add_subcommand("import", "Read quantum-chemistry program outputs into documents");
    import->add_option("outputs", options.paths, "Program outputs to read (- for standard input, with -o FILE)")
        ->required();
    import->add_option("-o,--output", options.output,
                       "The document's file for one output; a folder, created if missing, for several outputs or "
                       "when it is a folder or ends in /. Default: NAME.json beside each output NAME.EXT");
    add_indent_options(*import, options.pretty, options.indent);
    import->add_flag("--json", options.json, "Reports as one JSON object per output (JSON Lines)");
    add_color_option(*import, options.color);
    add_jobs_option(*import, options.jobs);
    import->footer(
        "Prints a report per output as check does. A failed import writes nothing; a document replaces its\n"
        "file through a temporary file. Two outputs that would be written to one file are refused.\n"
        "Exit status: 0 every import complete, 1 the worst is partial, 2 any failed, 64 bad arguments,\n"
        "66 an output could not be read, 73 a document could not be written.\n\n"
        "Examples:\n"
        "  morv-qc-json import water.log\n"
        "  morv-qc-json import --pretty water.log -o water.json\n"
        "  morv-qc-json import --jobs 4 runs/*.log -o documents/");
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Check, format and summarise quantum-chemistry result documents (" +
                     std::string(morv::qc::json::schema_id) + ").",
                 "morv-qc-json");
    app.set_version_flag("--version", version_text());
    app.require_subcommand(1);
    app.footer(
        "Examples:\n"
        "  morv-qc-json check run.json\n"
        "  morv-qc-json format --pretty run.json -o clean.json\n"
        "  morv-qc-json stats run.json\n"
        "  morv-qc-json import water.log -o water.json\n\n"
        "Run 'morv-qc-json COMMAND --help' for the options of a command.");

    morv::cli::CheckOptions check;
    morv::cli::FormatOptions format;
    morv::cli::StatsOptions stats;
    morv::cli::ImportOptions import;
    add_check_command(app, check);
    add_format_command(app, format);
    add_stats_command(app, stats);
    add_import_command(app, import);

    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        int const status = app.exit(error);
        return status == 0 ? 0 : morv::cli::exit_usage;
    }

    if (app.got_subcommand("check")) {
        return morv::cli::run_check(check);
    }
    if (app.got_subcommand("format")) {
        return morv::cli::run_format(format);
    }
    if (app.got_subcommand("import")) {
        return morv::cli::run_import(import);
    }
    return morv::cli::run_stats(stats);
}
