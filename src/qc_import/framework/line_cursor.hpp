#pragma once
// Walks an output line by line. It knows where each line lies in the text so
// that whatever a reader finds can point back at the bytes it came from; it
// knows nothing of any program.
#include <morv/model/diagnostic.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace morv::qc::import {

struct Line {
    // Without the line break; a carriage return before it is dropped too.
    std::string_view text;
    std::uint64_t offset = 0;
    // 1-based.
    std::uint64_t number = 0;
};

class LineCursor {
public:
    explicit LineCursor(std::string_view text);

    bool at_end() const { return index_ >= lines_.size(); }
    // Past the end, the last line (a line with no text in an empty text):
    // a reader that ran out of lines inside a table ends its span there.
    Line const& current() const {
        static Line const none;
        return lines_.empty() ? none : lines_[index_ < lines_.size() ? index_ : lines_.size() - 1];
    }
    void advance() { ++index_; }
    std::size_t index() const { return index_; }
    void seek(std::size_t index) { index_ = index; }
    std::size_t size() const { return lines_.size(); }
    Line const& at(std::size_t index) const { return lines_[index]; }

private:
    std::vector<Line> lines_;
    std::size_t index_ = 0;
};

// The bytes [begin, end) of one line, columns counted in bytes from 1 and the
// end position just past the last byte.
model::SourceSpan span_in_line(model::SourceId source, Line const& line, std::size_t begin, std::size_t end);
// A whole line.
model::SourceSpan span_of_line(model::SourceId source, Line const& line);
// From the start of `first` to the end of `last`.
model::SourceSpan span_of_lines(model::SourceId source, Line const& first, Line const& last);
// The part of `line` that `part`, a view into the line's text, covers.
model::SourceSpan span_of_part(model::SourceId source, Line const& line, std::string_view part);

}  // namespace morv::qc::import
