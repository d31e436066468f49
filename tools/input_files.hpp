#pragma once

#include <optional>
#include <string>

namespace morv::cli {

// The bytes of one input, or the system's reason why they could not be read.
struct InputText {
    std::string text;
    std::optional<std::string> error;
};

// Reads the whole file at `path`, or standard input when `path` is "-".
InputText read_input(std::string const& path);

// How an input is named in reports: its path, or "<stdin>" for "-".
std::string display_name(std::string const& path);

// The line on standard error for an input that could not be read.
std::string unreadable_message(std::string const& path, std::string const& reason);

// The line on standard error for an output that could not be written.
std::string unwritable_message(std::string const& path, std::string const& reason);

// Replaces `path` with `text` through a temporary file in the same folder and
// a rename, so that an interrupted run leaves either the old file or the new
// one. Returns the system's reason when it fails.
std::optional<std::string> write_file_atomically(std::string const& path, std::string const& text);

}  // namespace morv::cli
