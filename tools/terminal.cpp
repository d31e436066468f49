#include "terminal.hpp"

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace morv::cli {
namespace {

constexpr char const* reset = "\033[0m";

std::string paint_with(std::string_view text, char const* style, bool color) {
    if (!color) {
        return std::string(text);
    }
    return std::string(style) + std::string(text) + reset;
}

}  // namespace

bool use_color(ColorMode mode, int fd) {
    if (mode != ColorMode::automatic) {
        return mode == ColorMode::always;
    }
    char const* const no_color = std::getenv("NO_COLOR");
    return (no_color == nullptr || *no_color == '\0') && ::isatty(fd) == 1;
}

std::string paint(std::string_view text, model::Severity severity, bool color) {
    switch (severity) {
        case model::Severity::error: return paint_with(text, "\033[1;31m", color);
        case model::Severity::warning: return paint_with(text, "\033[33m", color);
        default: return paint_with(text, "\033[36m", color);
    }
}

std::string paint(std::string_view text, model::ParseStatus status, bool color) {
    switch (status) {
        case model::ParseStatus::complete: return paint_with(text, "\033[32m", color);
        case model::ParseStatus::partial: return paint_with(text, "\033[33m", color);
        default: return paint_with(text, "\033[1;31m", color);
    }
}

ProgressLine::ProgressLine(std::string_view verb, std::size_t total)
    : verb_(verb), total_(total), enabled_(total > 1 && ::isatty(STDERR_FILENO) == 1) {}

void ProgressLine::clear() {
    if (shown_) {
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
        shown_ = false;
    }
}

void ProgressLine::show(std::size_t done) {
    if (!enabled_ || done == total_) {
        return;
    }
    // The reports printed before it go out first, should they share the
    // terminal.
    std::fflush(stdout);
    std::fprintf(stderr, "\r\033[K%s %zu of %zu files", verb_.c_str(), done, total_);
    std::fflush(stderr);
    shown_ = true;
}

}  // namespace morv::cli
