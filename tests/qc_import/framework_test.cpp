#include "framework/document_builder.hpp"
#include "framework/line_cursor.hpp"
#include "framework/sha256.hpp"
#include "framework/superposition.hpp"
#include "framework/text.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace morv::qc::import {
namespace {

// Offsets count bytes of the whole text, lines and columns from 1; a CRLF
// ending belongs to no line's text.
TEST(LineCursor, PositionsOfLines) {
    LineCursor lines("ab\r\n\ncd  x");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(std::make_tuple(lines.at(0).text, lines.at(1).text, lines.at(2).offset, lines.at(2).number),
              std::make_tuple("ab", "", 5u, 3u));
    auto const span = span_of_part(model::SourceId(4), lines.at(2), lines.at(2).text.substr(4, 1));
    EXPECT_EQ(span, (model::SourceSpan{model::SourceId(4), {9, 3, 5}, {10, 3, 6}}));
    // A reader that ran out of lines stands on the last one.
    lines.seek(lines.size());
    EXPECT_EQ(lines.current().number, 3u);
    EXPECT_EQ(LineCursor("").current().text, "");
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
                          {"nan", std::nullopt},
                          {"1D2D3", std::nullopt},
                          {"+2.5", 2.5},
                          {"+-2.5", std::nullopt},
                          {"", std::nullopt}};
    for (auto const& c : cases) {
        EXPECT_EQ(to_double(c.field), c.value) << c.field;
    }
}

// Every kind of blank parts fields, wherever the line's bytes fall in the
// blocks read together, and a line of more fields than are kept in place.
TEST(Text, FieldsOfALine) {
    std::string line = "\t 1\f2\v3\r";
    for (int i = 4; i <= 30; ++i) {
        line += "   " + std::to_string(i);
    }
    auto const split = fields(line);
    ASSERT_EQ(split.size(), 30u);
    for (std::size_t i = 0; i < split.size(); ++i) {
        EXPECT_EQ(split[i], std::to_string(i + 1));
    }
}

// Digits in order and in lower case, for nothing and for a short text.
TEST(Sha256, Digests) {
    struct Case {
        std::string data;
        char const* digest;
    };
    Case const cases[] = {
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(sha256_hex(c.data), c.digest) << c.data.size();
    }
}

// A quarter turn about z and a shift; a mirror image, which no rotation
// gives; lists of different lengths.
TEST(Superposition, RotationBetweenPointSets) {
    std::vector<chem::Vec3> const from = {{1, 0, 0}, {0, 2, 0}, {0, 0, 3}, {1, 1, 1}};
    std::vector<chem::Vec3> turned;
    std::vector<chem::Vec3> mirrored;
    for (auto const& p : from) {
        turned.push_back({-p.y + 5, p.x, p.z - 1});
        mirrored.push_back({p.x, p.y, -p.z});
    }
    auto const rotation = rotation_between(from, turned, 1e-9);
    ASSERT_TRUE(rotation);
    auto const v = rotate(*rotation, {1, 2, 3});
    EXPECT_LT(std::abs(v.x + 2) + std::abs(v.y - 1) + std::abs(v.z - 3), 1e-12);
    EXPECT_FALSE(rotation_between(from, mirrored, 1e-3));
    EXPECT_FALSE(rotation_between(from, {from[0]}, 1e-3));
}

// Ids count from 1 per kind, energies across the whole document; a step takes
// its job's system; a label printed again in a step replaces its value.
TEST(DocumentBuilder, IdsAndReferences) {
    DocumentBuilder builder;
    auto const water = builder.system_for({8, 1, 1}, chem::ElectronicState{0, 1}, "water", std::nullopt);
    EXPECT_EQ(builder.system_for({8, 1, 1}, chem::ElectronicState{0, 1}, "again", std::nullopt), water);
    EXPECT_NE(builder.system_for({8, 1, 1}, chem::ElectronicState{1, 2}, "cation", std::nullopt), water);
    CalculationJob job;
    job.system_id = water;
    auto const first = builder.add_job(job);
    auto const second = builder.add_job(job);
    EXPECT_EQ(builder.job(second).parent_job_id, first);
    auto const a = builder.add_step(first, std::nullopt, std::nullopt);
    auto const b = builder.add_step(second, std::nullopt, std::nullopt);
    builder.add_energy(a, EnergyKind::scf, "SCF Done", "RHF", -1.0, std::nullopt);
    builder.add_energy(b, EnergyKind::scf, "SCF Done", "RHF", -2.0, std::nullopt);
    builder.add_energy(b, EnergyKind::correlated, "EUMP2", "MP2", -3.0, std::nullopt);
    builder.add_energy(b, EnergyKind::scf, "SCF Done", "RHF", -4.0, std::nullopt);
    auto const& step = builder.step(b);
    EXPECT_EQ(step.ordinal, 1u);
    EXPECT_EQ(step.system_id, water);
    ASSERT_EQ(step.energies.size(), 2u);
    EXPECT_EQ(std::make_tuple(step.energies[0].id, step.energies[0].value, step.primary_energy_id),
              std::make_tuple(EnergyId(2), -4.0, std::optional<EnergyId>(EnergyId(2))));
    EXPECT_EQ(builder.document().systems[0].topology.atoms[1].symbol, "H");
}

}  // namespace
}  // namespace morv::qc::import
