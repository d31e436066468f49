#include "framework/line_cursor.hpp"
#include "framework/text.hpp"

#include <gtest/gtest.h>

namespace morv::qc::import {
namespace {

// Offsets count bytes of the whole text, lines and columns from 1; a CRLF
// ending belongs to no line's text.
TEST(LineCursor, PositionsOfLines) {
    LineCursor lines("ab\r\n\ncd  x");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines.at(0).text, "ab");
    EXPECT_EQ(lines.at(1).text, "");
    EXPECT_EQ(lines.at(2).offset, 5u);
    EXPECT_EQ(lines.at(2).number, 3u);
    auto const span = span_of_part(model::SourceId(4), lines.at(2), lines.at(2).text.substr(4, 1));
    EXPECT_EQ(span.source_id, model::SourceId(4));
    EXPECT_EQ(span.begin.offset, 9u);
    EXPECT_EQ(span.begin.column, 5u);
    EXPECT_EQ(span.end.offset, 10u);
    EXPECT_EQ(span.end.column, 6u);
}

TEST(Text, NumbersAsProgramsPrintThem) {
    struct Case {
        char const* field;
        std::optional<double> value;
    };
    Case const cases[] = {{"-0.75002282127454D+02", -75.002282127454},
                          {"1.5E-3", 1.5e-3},
                          {"-382.294279146", -382.294279146},
                          {"0x10", std::nullopt},
                          {"inf", std::nullopt},
                          {"1e999", std::nullopt},
                          {"12.5A", std::nullopt},
                          {"", std::nullopt}};
    for (auto const& c : cases) {
        EXPECT_EQ(to_double(c.field), c.value) << c.field;
    }
}

}  // namespace
}  // namespace morv::qc::import
