// Drives the built morv-qc-json binary as a user would: arguments, standard
// input, files, environment; asserts exit status and exact output.

#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>
#include <morv/qc/json/version.hpp>
#include <morv/qc/model.hpp>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

std::string read_file(fs::path const& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void write_file(fs::path const& path, std::string const& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// `text` as one word of a shell command.
std::string quoted(std::string const& text) {
    std::string word = "'";
    for (char c : text) {
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return word + "'";
}

const std::string partial_text =
    R"({"schema":"morv.qc.document.v2","program":{"kind":"orca"},"systems":[{"id":1,"topology":{"atoms":[]}}],)"
    R"("jobs":[{"id":1,"system_id":1}],"steps":[{"id":1}]})";
const std::string failed_text = R"({"schema":"morv.qc.document.v1"})";

const std::string partial_report =
    "partial, 2 errors, 0 warnings, 0 notes; sources 0, systems 1, frames 0, jobs 1, steps 0, analyses 0\n"
    "  error qc.json.missing_field: Missing required field: job_id\n"
    "  error qc.json.missing_field: Missing required field: system_id\n";
const std::string failed_report =
    "failed, 1 error, 0 warnings, 0 notes; sources 0, systems 0, frames 0, jobs 0, steps 0, analyses 0\n"
    "  error qc.json.unsupported_schema: Unsupported QC document schema: morv.qc.document.v1\n";

class CliTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "morv-cli-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        example = fs::path(MORV_EXAMPLES_DIR) / "orca_water_opt_freq.json";
        partial = folder / "partial.json";
        failed = folder / "failed.json";
        write_file(partial, partial_text);
        write_file(failed, failed_text);
    }

    void TearDown() override { fs::remove_all(folder); }

    // The tool run in the scratch folder, so that relative paths in
    // arguments and messages are the folder's, without NO_COLOR from the
    // caller's environment but with `extra_environment`; with `one_stream`,
    // standard error goes to standard output.
    Outcome run(std::vector<std::string> const& arguments, std::string const& input = "",
                std::vector<std::string> const& extra_environment = {}, bool one_stream = false) const {
        write_file(folder / "stdin", input);
        std::string command = "cd " + quoted(folder) + " && env -u NO_COLOR";
        for (auto const& variable : extra_environment) {
            command += " " + quoted(variable);
        }
        command += " " + quoted(MORV_CLI);
        for (auto const& argument : arguments) {
            command += " " + quoted(argument);
        }
        char const* const redirection = one_stream ? " <stdin >stdout 2>&1" : " <stdin >stdout 2>stderr";
        int const status = std::system((command + redirection).c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_file(folder / "stdout"),
                read_file(folder / "stderr")};
    }

    fs::path folder;
    fs::path example;
    fs::path partial;
    fs::path failed;
};

std::string formatted(std::string const& text, bool pretty, std::uint32_t indent, bool with_diagnostics) {
    morv::qc::json::SerializeOptions options;
    options.pretty = pretty;
    options.indent = indent;
    auto const result = morv::qc::json::deserialize(text);
    std::string const written = with_diagnostics ? morv::qc::json::serialize(result, options)
                                                 : morv::qc::json::serialize(result.value, options);
    return pretty ? written : written + "\n";
}

TEST_F(CliTest, CheckPrintsOneReportPerFileInArgumentOrderAndExitsWithTheWorstStatus) {
    Outcome const both = run({"check", partial, failed});
    EXPECT_EQ(both.status, 2);
    EXPECT_EQ(both.out, partial.string() + ": " + partial_report + failed.string() + ": " + failed_report);
    EXPECT_EQ(both.err, "");
    // A dash stands for standard input.
    Outcome const standard_input = run({"check", "-"}, partial_text);
    EXPECT_EQ(standard_input.status, 1);
    EXPECT_EQ(standard_input.out, "<stdin>: " + partial_report);
    // The worst status decides, wherever its file stands.
    EXPECT_EQ(run({"check", example}).status, 0);
    EXPECT_EQ(run({"check", failed, example, partial}).status, 2);
}

TEST_F(CliTest, CheckReportsInputsThatCannotBeReadAndChecksTheOthers) {
    // Reading /proc/self/mem from offset 0 fails even for root, for whom no
    // file mode makes a file unreadable.
    Outcome const result = run({"check", (folder / "missing.json").string(), partial, folder, "/proc/self/mem"});
    EXPECT_EQ(result.status, 66);
    EXPECT_EQ(result.out, partial.string() + ": " + partial_report);
    EXPECT_EQ(result.err, "morv-qc-json: cannot read " + (folder / "missing.json").string() +
                              ": No such file or directory\n"
                              "morv-qc-json: cannot read " + folder.string() + ": Is a directory\n"
                              "morv-qc-json: cannot read /proc/self/mem: Input/output error\n");
}

TEST_F(CliTest, CheckKeepsReportsAndErrorsInOrderWhereTheyShareAStream) {
    Outcome const result = run({"check", partial, "missing.json", failed}, "", {}, true);
    EXPECT_EQ(result.out, partial.string() + ": " + partial_report +
                              "morv-qc-json: cannot read missing.json: No such file or directory\n" +
                              failed.string() + ": " + failed_report);
}

TEST_F(CliTest, CheckWritesJsonLines) {
    Outcome const result = run({"check", "--json", "--color=always", partial, "-"}, failed_text);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out,
              R"({"path":")" + partial.string() +
                  R"(","status":"partial","errors":2,"warnings":0,"notes":0,)"
                  R"("records":{"sources":0,"systems":1,"frames":0,"jobs":1,"steps":0,"analyses":0},)"
                  R"("diagnostics":[{"severity":"error","code":"qc.json.missing_field","message":"Missing required field: job_id"},)"
                  R"({"severity":"error","code":"qc.json.missing_field","message":"Missing required field: system_id"}]})"
                  "\n"
                  R"({"path":"<stdin>","status":"failed","errors":1,"warnings":0,"notes":0,)"
                  R"("records":{"sources":0,"systems":0,"frames":0,"jobs":0,"steps":0,"analyses":0},)"
                  R"("diagnostics":[{"severity":"error","code":"qc.json.unsupported_schema",)"
                  R"("message":"Unsupported QC document schema: morv.qc.document.v1"}]})"
                  "\n");
}

TEST_F(CliTest, CheckPrintsSpansAndReplacesBytesThatAreNotUtf8InJson) {
    std::string const text =
        "{\"schema\":\"morv.qc.document.v2\",\"program\":{\"kind\":\"orca\"},\"systems\":[{\"id\":1,\"topology\":{\"atoms\":[]}}],"
        "\"diagnostics\":[{\"severity\":\"note\",\"code\":\"orca.x\",\"message\":\"caf\xe9\","
        "\"source\":{\"source_id\":2,\"begin\":{\"offset\":10,\"line\":3,\"column\":4},"
        "\"end\":{\"offset\":20,\"line\":5,\"column\":6}}}]}";
    Outcome const plain = run({"check", "-"}, text);
    EXPECT_NE(plain.out.find("\n  note orca.x: caf\xe9 (source 2, 3:4-5:6)\n"), std::string::npos) << plain.out;
    Outcome const json = run({"check", "--json", "-"}, text);
    EXPECT_NE(json.out.find(R"({"severity":"note","code":"orca.x","message":"caf)"
                            "\xef\xbf\xbd"
                            R"(","source":{"source_id":2,"begin":{"offset":10,"line":3,"column":4},)"
                            R"("end":{"offset":20,"line":5,"column":6}}})"),
              std::string::npos)
        << json.out;
}

TEST_F(CliTest, CheckColoursSeveritiesAndStatusOnlyWhenAskedOrOnATerminal) {
    std::string const coloured = partial.string() +
                                 ": \033[33mpartial\033[0m, 2 errors, 0 warnings, 0 notes; sources 0, systems 1, "
                                 "frames 0, jobs 1, steps 0, analyses 0\n"
                                 "  \033[1;31merror\033[0m qc.json.missing_field: Missing required field: job_id\n"
                                 "  \033[1;31merror\033[0m qc.json.missing_field: Missing required field: system_id\n";
    std::string const plain = partial.string() + ": " + partial_report;
    struct Case {
        std::vector<std::string> arguments;
        std::vector<std::string> environment;
        std::string out;
    };
    std::vector<Case> const cases{
        {{"check", "--color=always", partial}, {}, coloured},
        {{"check", "--color", "always", partial}, {"NO_COLOR=1"}, coloured},
        {{"check", "--color=never", partial}, {}, plain},
        {{"check", "--color=auto", partial}, {}, plain},
        {{"check", partial}, {}, plain},
    };
    for (auto const& [arguments, environment, out] : cases) {
        EXPECT_EQ(run(arguments, "", environment).out, out) << arguments[1];
    }
}

TEST_F(CliTest, CheckInParallelKeepsTheOrderOfTheArguments) {
    std::vector<std::string> arguments{"check", "--jobs", "1"};
    for (int i = 0; i < 24; ++i) {
        arguments.push_back(i % 3 == 0 ? example.string() : i % 3 == 1 ? partial.string() : failed.string());
    }
    Outcome const serial = run(arguments);
    arguments[2] = "3";
    Outcome const parallel = run(arguments);
    EXPECT_EQ(parallel.status, 2);
    EXPECT_EQ(parallel.out, serial.out);
}

TEST_F(CliTest, UsageErrorsExitWith64AndHelpAndVersionWith0) {
    for (auto const& arguments : std::vector<std::vector<std::string>>{{},
                                                                       {"check"},
                                                                       {"lint", "x.json"},
                                                                       {"check", "--jobs", "0", "x.json"},
                                                                       {"check", "--color=sometimes", "x.json"},
                                                                       {"format", "a.json", "b.json"},
                                                                       {"format", "--indent", "x", "a.json"},
                                                                       {"import"},
                                                                       {"import", "--jobs", "0", "x.log"},
                                                                       {"import", "--indent", "x", "x.log"}}) {
        Outcome const result = run(arguments);
        EXPECT_EQ(result.status, 64) << (arguments.empty() ? "" : arguments[0]);
        EXPECT_NE(result.err, "");
    }
    Outcome const version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, std::string("morv-qc-json ") + morv::qc::json::library_version +
                              "\nschema morv.qc.document.v2 (share/morv_qc_json/morv.qc.document.v2.schema.json "
                              "under the installation prefix)\n");
    for (auto const* command : {"check", "format", "stats", "import"}) {
        Outcome const help = run({command, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_NE(help.out.find(std::string("Examples:\n  morv-qc-json ") + command), std::string::npos) << command;
    }
}

TEST_F(CliTest, FormatWritesWhatTheLibraryWrites) {
    std::string const text = read_file(example);
    struct Case {
        std::vector<std::string> arguments;
        std::string out;
    };
    std::vector<Case> const cases{
        {{"format", example}, formatted(text, false, 2, false)},
        {{"format", "--pretty", example}, formatted(text, true, 2, false)},
        {{"format", "--indent", "5", example}, formatted(text, true, 5, false)},
        {{"format", "--with-diagnostics", example}, formatted(text, false, 2, true)},
        {{"format", "--with-diagnostics", partial}, formatted(partial_text, false, 2, true)},
    };
    for (auto const& [arguments, out] : cases) {
        Outcome const result = run(arguments);
        EXPECT_EQ(result.out, out) << arguments[1];
    }
    Outcome const damaged = run({"format", partial});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_EQ(damaged.err, partial.string() + ": " + partial_report);
}

TEST_F(CliTest, FormatReplacesAnOutputFileWholeAndKeepsItsMode) {
    fs::path const copy = folder / "copy.json";
    write_file(copy, partial_text);
    ::chmod(copy.c_str(), 0640);
    Outcome const result = run({"format", copy, "-o", copy, "--pretty"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(read_file(copy), formatted(partial_text, true, 2, false));
    struct stat status {};
    ::stat(copy.c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    for (auto const& entry : fs::directory_iterator(folder)) {
        EXPECT_NE(entry.path().filename().string().rfind(".copy.json.", 0), 0u) << "left behind: " << entry.path();
    }
}

TEST_F(CliTest, FormatWritesNothingForADocumentThatFailed) {
    fs::path const output = folder / "out.json";
    write_file(output, "precious");
    Outcome const result = run({"format", failed, "-o", output});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, failed.string() + ": " + failed_report);
    EXPECT_EQ(read_file(output), "precious");

    Outcome const unwritable = run({"format", partial, "-o", (folder / "no" / "out.json").string()});
    EXPECT_EQ(unwritable.status, 73);
    EXPECT_EQ(unwritable.err.substr(unwritable.err.find("morv-qc-json: cannot write")),
              "morv-qc-json: cannot write " + (folder / "no" / "out.json").string() + ": No such file or directory\n");
    Outcome const missing = run({"format", (folder / "missing.json").string()});
    EXPECT_EQ(missing.status, 66);
}

TEST_F(CliTest, StatsSumsSectionsAndFindsEachJobsFinalEnergy) {
    std::string const text =
        R"({"schema":"morv.qc.document.v2","program":{"kind":"gaussian","name":"g"},)"
        R"("systems":[{"id":1,"topology":{"atoms":[{"id":1,"symbol":"H"},{"id":2,"symbol":"H"}]}}],)"
        R"("jobs":[{"id":1,"system_id":1,"primary_task":"optimization"},{"id":2,"system_id":1}],)"
        R"("steps":[{"id":1,"job_id":1,"system_id":1,"ordinal":2,"energies":[{"id":1,"kind":"scf","value":{"hartree":-1.5}}]},)"
        R"({"id":2,"job_id":1,"system_id":1,"ordinal":1,"energies":[{"id":2,"kind":"scf","value":{"hartree":-1.25}}]},)"
        R"({"id":3,"job_id":1,"system_id":1,"ordinal":3},)"
        R"({"id":4,"job_id":2,"system_id":1,"ordinal":1,"primary_energy_id":6,"energies":[)"
        R"({"id":6,"kind":"electronic","value":{"hartree":-1.75}},{"id":7,"kind":"zero_point","value":{"hartree":0.01}}]}],)"
        R"("analyses":[{"id":1,"job_id":2,"type":"dipoles","dipoles":[]}],"metadata":{"a":"b"}})";
    Outcome const result = run({"stats", "-"}, text);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.substr(result.out.find("  atoms")),
              "  atoms 2\n"
              "  job 1 (optimization): 3 steps, final energy -1.5 hartree (step 1, scf)\n"
              "  job 2: 1 step, final energy -1.75 hartree (step 4, electronic)\n");

    auto const stats = nlohmann::ordered_json::parse(run({"stats", "--json", "-"}, text).out);
    std::size_t const empty_bytes = morv::qc::json::serialize(morv::qc::Document{}).size();
    std::size_t sum = empty_bytes;
    for (auto const& section : stats["sections"]) {
        sum += section["bytes"].get<std::size_t>();
    }
    EXPECT_EQ(stats["compact_bytes"], morv::qc::json::serialize(morv::qc::json::deserialize(text).value).size());
    EXPECT_EQ(stats["compact_bytes"], sum);
    EXPECT_EQ(stats["sections"]["steps"]["records"], 4);
    EXPECT_EQ(stats["analysis_types"].dump(), R"({"dipoles":{"records":1,"bytes":)" +
                                                   stats["sections"]["analyses"]["bytes"].dump() + "}}");
    EXPECT_EQ(stats["jobs"].dump(),
              R"([{"id":1,"primary_task":"optimization","steps":3,"final_energy":{"hartree":-1.5,"kind":"scf","step_id":1}},)"
              R"({"id":2,"primary_task":null,"steps":1,"final_energy":{"hartree":-1.75,"kind":"electronic","step_id":4}}])");
}

const std::string unknown_report =
    "failed, 1 error, 0 warnings, 0 notes; sources 0, systems 0, frames 0, jobs 0, steps 0, analyses 0\n"
    "  error qc.import.unknown_program: not an output of a known program\n";

TEST_F(CliTest, ImportReportsOutputsOfNoKnownProgramAndLeavesTheirDocumentsAlone) {
    for (auto const& [name, text] : std::vector<std::pair<std::string, std::string>>{
             {"notes.txt", "hello\n"}, {"empty.log", ""}, {"document.out", read_file(example)}}) {
        std::string const target = fs::path(name).stem().string() + ".json";
        write_file(folder / name, text);
        write_file(folder / target, "precious");
        Outcome const result = run({"import", "./" + name});
        EXPECT_EQ(result.status, 2) << name;
        EXPECT_EQ(result.out, "./" + name + ": " + unknown_report);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(read_file(folder / target), "precious") << name;
    }
    // The lines of `check --json`, each with the document it wrote.
    std::string const json = run({"import", "--json", "notes.txt"}).out;
    EXPECT_EQ(json.substr(json.find("}],")), R"(}],"output":null})" "\n");
}

TEST_F(CliTest, ImportPlacesDocumentsBesideTheOutputsInAFileOrInAFolder) {
    std::string const text = read_file(fs::path(MORV_EXAMPLES_DIR) / "gaussian" / "water_mp2.log");
    fs::create_directories(folder / "in");
    for (auto const* name : {"in/water.log", "in/water.out", "in/a.b.out"}) {
        write_file(folder / name, text);
    }
    struct Case {
        std::vector<std::string> arguments;
        int status;
        std::string err;
        std::vector<std::string> documents;
    };
    std::vector<Case> const cases{
        {{"in/water.log"}, 0, "", {"in/water.json"}},
        {{"in/a.b.out", "-o", "out.json"}, 0, "", {"out.json"}},
        {{"in/water.log", "-o", "in"}, 0, "", {"in/water.json"}},
        {{"in/water.log", "-o", "one/"}, 0, "", {"one/water.json"}},
        {{"in/water.log", "in/a.b.out", "-o", "new/docs"}, 0, "", {"new/docs/water.json", "new/docs/a.b.json"}},
        {{"in/water.log", "in/water.out"}, 64, "in/water.log and in/water.out would both be written to in/water.json", {}},
        {{"in/water.out", "in/water.log", "-o", "docs"}, 64, "in/water.out and in/water.log would both be written to docs/water.json", {}},
        {{"in/water.log", "-o", "./in/water.log"}, 64, "in/water.log would be replaced by its own document", {}},
        {{"-", "-o", "in"}, 64, "standard input has no file name to derive a document's from; give -o FILE", {}},
    };
    for (auto const& [arguments, status, err, documents] : cases) {
        std::vector<std::string> command{"import"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        Outcome const result = run(command);
        EXPECT_EQ(result.status, status) << arguments.back();
        EXPECT_EQ(result.err, err.empty() ? "" : "morv-qc-json import: " + err + "\n");
        for (auto const& path : documents) {
            EXPECT_TRUE(fs::is_directory((folder / path).parent_path())) << path;
            EXPECT_TRUE(fs::exists(folder / path)) << path;
            fs::remove(folder / path);
        }
    }
}

TEST_F(CliTest, ImportReportsOutputsItCannotReadAndFoldersItCannotCreate) {
    write_file(folder / "notes.txt", "hello\n");
    Outcome const unreadable = run({"import", "missing.log", "notes.txt", "."});
    EXPECT_EQ(unreadable.status, 66);
    EXPECT_EQ(unreadable.out, "notes.txt: " + unknown_report);
    EXPECT_EQ(unreadable.err, "morv-qc-json: cannot read missing.log: No such file or directory\n"
                              "morv-qc-json: cannot read .: Is a directory\n");
    Outcome const uncreatable = run({"import", "notes.txt", "-o", "notes.txt/docs/"});
    EXPECT_EQ(uncreatable.status, 73);
    EXPECT_EQ(uncreatable.out, "");
    EXPECT_EQ(uncreatable.err, "morv-qc-json: cannot create notes.txt/docs/: Not a directory\n");
}

// A document that the tool imported decodes as it was written: with the
// import's status and exactly the importer's findings.
TEST_F(CliTest, CheckFindsImportedDocumentsWithTheImportersStatusAndFindings) {
    for (auto const& entry : fs::directory_iterator(MORV_GAUSSIAN_DATA_DIR)) {
        auto const name = entry.path().filename().string();
        if (entry.path().extension() != ".log" && entry.path().extension() != ".out") {
            continue;
        }
        std::string const text = read_file(entry.path());
        write_file(folder / name, text);
        ASSERT_EQ(run({"import", name, "-o", "imported.json"}).err, "") << name;
        auto report = nlohmann::json::parse(run({"check", "--json", "imported.json"}).out);
        auto const imported = morv::qc::import_output(text, name);
        auto findings = nlohmann::json::array();
        for (auto const& d : imported.diagnostics) {
            findings.push_back({{"severity", morv::qc::to_string(d.severity)}, {"code", d.code}, {"message", d.message}});
        }
        for (auto& d : report["diagnostics"]) {
            d.erase("source");
        }
        EXPECT_EQ(report["status"], morv::qc::to_string(imported.status)) << name;
        EXPECT_EQ(report["diagnostics"], findings) << name;
    }
}

}  // namespace
