#include "framework/line_cursor.hpp"

namespace morv::qc::import {

LineCursor::LineCursor(std::string_view text) {
    // Room for lines of 40 bytes on average, about what programs print;
    // counting the lines first would cost more than growing now and then.
    lines_.reserve(text.size() / 40 + 16);
    std::size_t start = 0;
    std::uint64_t number = 1;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        std::size_t const next = end == std::string_view::npos ? text.size() : end + 1;
        if (end == std::string_view::npos) {
            end = text.size();
        }
        std::string_view line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        lines_.push_back(Line{line, start, number++});
        start = next;
    }
}

model::SourceSpan span_in_line(model::SourceId source, Line const& line, std::size_t begin, std::size_t end) {
    if (end > line.text.size()) {
        end = line.text.size();
    }
    if (begin > end) {
        begin = end;
    }
    return model::SourceSpan{source,
                             {line.offset + begin, line.number, begin + 1},
                             {line.offset + end, line.number, end + 1}};
}

model::SourceSpan span_of_line(model::SourceId source, Line const& line) {
    return span_in_line(source, line, 0, line.text.size());
}

model::SourceSpan span_of_lines(model::SourceId source, Line const& first, Line const& last) {
    auto span = span_of_line(source, first);
    span.end = span_of_line(source, last).end;
    return span;
}

model::SourceSpan span_of_part(model::SourceId source, Line const& line, std::string_view part) {
    auto const begin = static_cast<std::size_t>(part.data() - line.text.data());
    return span_in_line(source, line, begin, begin + part.size());
}

}  // namespace morv::qc::import
