#pragma once

#include <morv/model/diagnostic.hpp>
#include <morv/model/parse_result.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace morv::cli {

enum class ColorMode { automatic, always, never };

// `always` and `never` decide alone; `automatic` colours a terminal unless
// NO_COLOR is set to anything but the empty string.
bool use_color(ColorMode mode, int fd);

std::string paint(std::string_view text, model::Severity severity, bool color);
std::string paint(std::string_view text, model::ParseStatus status, bool color);

// One line on standard error that tells how many of the files are done,
// shown only when standard error is a terminal and there is more than one
// file. Reports printed meanwhile first clear it.
class ProgressLine {
public:
    ProgressLine(std::string_view verb, std::size_t total);
    void clear();
    void show(std::size_t done);

private:
    std::string verb_;
    std::size_t total_;
    bool enabled_;
    bool shown_ = false;
};

}  // namespace morv::cli
