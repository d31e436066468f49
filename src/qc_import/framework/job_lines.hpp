#pragma once
// The lines of one job of an output, which the job's reader walks without
// stepping past the job's last line into the next job.
#include "framework/line_cursor.hpp"
#include "framework/text.hpp"

#include <cstddef>
#include <string_view>

namespace morv::qc::import {

class JobLines {
protected:
    JobLines(LineCursor& lines, std::size_t end, model::SourceId source) : lines_(lines), source_(source), end_(end) {}

    Line const& line() const { return lines_.current(); }
    bool has_next() const { return lines_.index() + 1 < end_; }
    // Moves to the next line of the job if there is one; else the cursor
    // goes past the job's last line, which ends the job's reading.
    bool next() {
        if (!has_next()) {
            lines_.seek(end_);
            return false;
        }
        lines_.advance();
        return true;
    }
    // The trimmed text `ahead` lines below the current one; empty past the
    // job's end.
    std::string_view peek(std::size_t ahead) const {
        auto const at = lines_.index() + ahead;
        return at < end_ ? trim(lines_.at(at).text) : std::string_view();
    }
    model::SourceSpan span(std::string_view part) const { return span_of_part(source_, line(), part); }

    LineCursor& lines_;
    model::SourceId source_;

private:
    std::size_t end_;
};

}  // namespace morv::qc::import
