#include "framework/line_cursor.hpp"

#include <algorithm>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace morv::qc::import {
namespace {

// How many line breaks the text holds, so that the lines are stored in one
// allocation of the right size.
std::size_t count_line_breaks(std::string_view text) {
    char const* const data = text.data();
    std::size_t count = 0;
    std::size_t i = 0;
#if defined(__SSE2__)
    // Each byte of `sums` counts the breaks in its lane, up to 255 blocks at a
    // time, and one sum of absolute differences adds the lanes up.
    __m128i const newline = _mm_set1_epi8('\n');
    while (i + 16 <= text.size()) {
        __m128i sums = _mm_setzero_si128();
        for (int block = 0; block < 255 && i + 16 <= text.size(); ++block, i += 16) {
            __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(data + i));
            sums = _mm_sub_epi8(sums, _mm_cmpeq_epi8(bytes, newline));
        }
        __m128i const total = _mm_sad_epu8(sums, _mm_setzero_si128());
        count += static_cast<std::size_t>(_mm_cvtsi128_si32(total)) +
                 static_cast<std::size_t>(_mm_extract_epi16(total, 4));
    }
#endif
    return count + static_cast<std::size_t>(std::count(data + i, data + text.size(), '\n'));
}

// The position of the first line break at or after `from`, or the text's
// size. Outputs have short lines, so a call to memchr per line costs more
// than the search: sixteen bytes are compared at once, and the call is inline.
std::size_t next_line_break(std::string_view text, std::size_t from) {
    char const* const data = text.data();
    std::size_t i = from;
#if defined(__SSE2__)
    __m128i const newline = _mm_set1_epi8('\n');
    for (; i + 16 <= text.size(); i += 16) {
        __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(data + i));
        auto const mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, newline)));
        if (mask != 0) {
            return i + static_cast<std::size_t>(__builtin_ctz(mask));
        }
    }
#endif
    while (i < text.size() && data[i] != '\n') {
        ++i;
    }
    return i;
}

}  // namespace

LineCursor::LineCursor(std::string_view text) {
    lines_.reserve(count_line_breaks(text) + 1);
    std::size_t start = 0;
    std::uint64_t number = 1;
    while (start < text.size()) {
        std::size_t const end = next_line_break(text, start);
        std::string_view line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        lines_.push_back(Line{line, start, number++});
        start = end + 1;
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
