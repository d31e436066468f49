#include "file_runner.hpp"

#include "exit_status.hpp"
#include "input_files.hpp"
#include "terminal.hpp"

#include <morv/qc/json/codec.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <mutex>
#include <optional>
#include <thread>

namespace morv::cli {
namespace {

// Standard input is read once, at its first "-": later ones find it
// drained, whichever thread gets to them first, as they would one by one.
FileOutcome process_file(std::size_t index, std::string const& path, ProcessText const& process,
                         bool input_drained) {
    InputText const input = input_drained ? InputText{} : read_input(path);
    if (input.error) {
        return {exit_no_input, "", unreadable_message(path, *input.error)};
    }
    return process(index, path, input.text);
}

// The files of a run, handed out to whichever thread asks next, and their
// outcomes, kept until they are printed in index order.
class SharedFiles {
public:
    explicit SharedFiles(std::size_t count) : outcomes_(count) {}

    // The index of a file that no thread has taken yet, or the count once
    // every file is taken.
    std::size_t claim() { return std::min(next_++, outcomes_.size()); }

    void put(std::size_t index, FileOutcome outcome) {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            outcomes_[index] = std::move(outcome);
        }
        ready_.notify_all();
    }

    // The outcome of `index`, if it is there yet.
    std::optional<FileOutcome> try_take(std::size_t index) {
        std::lock_guard<std::mutex> lock(mutex_);
        return take_locked(index);
    }

    FileOutcome take(std::size_t index) {
        std::unique_lock<std::mutex> lock(mutex_);
        ready_.wait(lock, [&] { return outcomes_[index].has_value(); });
        return *take_locked(index);
    }

private:
    std::optional<FileOutcome> take_locked(std::size_t index) {
        std::optional<FileOutcome> outcome = std::move(outcomes_[index]);
        outcomes_[index].reset();
        return outcome;
    }

    std::atomic<std::size_t> next_{0};
    std::vector<std::optional<FileOutcome>> outcomes_;
    std::mutex mutex_;
    std::condition_variable ready_;
};

// How long a report may wait in the buffer of standard output.
constexpr std::chrono::milliseconds flush_interval{50};

// Standard output goes out in blocks: a write for each report would cost a
// small file that a pipe reads about half as much as its decode. It is
// flushed before anything goes to standard error, so that the two keep their
// order where they share a file, and once `flush_interval` has passed, so
// that a report waits at most for the file after it.
class OutcomePrinter {
public:
    void print(FileOutcome const& outcome) {
        std::fwrite(outcome.output.data(), 1, outcome.output.size(), stdout);
        auto const now = std::chrono::steady_clock::now();
        if (!outcome.error.empty() || now - last_flush_ >= flush_interval) {
            std::fflush(stdout);
            last_flush_ = now;
        }
        std::fputs(outcome.error.c_str(), stderr);
    }

private:
    std::chrono::steady_clock::time_point last_flush_ = std::chrono::steady_clock::now();
};

// Prints the outcome that `take` gives for each index in turn, and returns
// the status of the run.
template <typename Take>
int print_in_order(std::size_t count, std::string_view verb, Take take) {
    ProgressLine progress(verb, count);
    OutcomePrinter printer;
    int status = exit_complete;
    for (std::size_t index = 0; index < count; ++index) {
        FileOutcome const outcome = take(index);
        progress.clear();
        printer.print(outcome);
        status = worse_exit_status(status, outcome.exit_status);
        progress.show(index + 1);
    }
    std::fflush(stdout);
    return status;
}

}  // namespace

unsigned one_job_per_core() { return std::max(std::thread::hardware_concurrency(), 1u); }

int run_over_files(std::vector<std::string> const& paths, unsigned jobs, std::string_view verb,
                   ProcessText const& process) {
    SharedFiles files(paths.size());
    auto const first_standard_input = std::find(paths.begin(), paths.end(), "-") - paths.begin();
    auto const work_on = [&](std::size_t index) {
        bool const drained = paths[index] == "-" && static_cast<std::ptrdiff_t>(index) != first_standard_input;
        return process_file(index, paths[index], process, drained);
    };
    // The calling thread is one of the `jobs`.
    std::size_t const thread_count = std::min<std::size_t>(std::max(jobs, 1u), paths.size());
    std::vector<std::thread> helpers;
    for (std::size_t i = 1; i < thread_count; ++i) {
        helpers.emplace_back([&] {
            for (std::size_t index = files.claim(); index < paths.size(); index = files.claim()) {
                files.put(index, work_on(index));
            }
        });
    }
    // The printing thread works on files too rather than wait for the
    // helpers: with as many threads as cores none of them sits idle, and a
    // small file costs no hand-over between threads when its printer read it.
    int const status = print_in_order(paths.size(), verb, [&](std::size_t index) {
        for (;;) {
            if (std::optional<FileOutcome> ready = files.try_take(index)) {
                return std::move(*ready);
            }
            std::size_t const claimed = files.claim();
            if (claimed == paths.size()) {
                return files.take(index);
            }
            FileOutcome outcome = work_on(claimed);
            if (claimed == index) {
                return outcome;
            }
            files.put(claimed, std::move(outcome));
        }
    });
    for (auto& helper : helpers) {
        helper.join();
    }
    return status;
}

int process_files(std::vector<std::string> const& paths, unsigned jobs, std::string_view verb,
                  DescribeFile const& describe) {
    return run_over_files(paths, jobs, verb, [&](std::size_t, std::string const& path, std::string const& text) {
        auto const result = qc::json::deserialize(text);
        return FileOutcome{exit_status_of(result.status), describe(display_name(path), text.size(), result), ""};
    });
}

}  // namespace morv::cli
