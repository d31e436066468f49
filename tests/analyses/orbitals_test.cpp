#include "support/analysis_blocks.hpp"

namespace morv::testing {

TEST(Orbitals, SetAndOrbitalKeepTheirOwnSpinAndKind) {
    std::string const zero = R"({"energy":)" + zero_energy;
    expect_blocks({
        {"", {}, R"({"kind":"canonical","orbitals":[],"spin":"none"})"},
        {R"("spin": ["alpha"], "kind": [], "orbitals": {})", {invalid("spin"), invalid("kind")},
         R"({"kind":"canonical","orbitals":[],"spin":"none"})"},
        // An orbital inherits nothing from its set; a plain number is no energy.
        {R"("spin": "beta", "kind": "", "orbitals": [{}, null, {"spin": "Alpha", "energy": -0.5, "kind": "",
             "occupation": 0, "index": -1}, {"spin": "alpha", "energy": {"hartree": 0}, "kind": "core", "symmetry": "A1"}])",
         {bad_energy, bad_energy, bad_energy},
         R"({"kind":"","orbitals":[)" + zero + R"(,"spin":"none"},)" + zero + R"(,"spin":"none"},)" + zero +
             R"(,"index":-1,"occupation":0,"spin":"none"},)" + zero + R"(,"kind":"core","spin":"alpha","symmetry":"A1"}],)"
             R"("spin":"beta"})"},
        {R"("spin": 7, "orbitals": [{"index": "i", "spin": [], "occupation": "o", "energy": {"hartree": null},
             "symmetry": [], "kind": {}}])",
         {invalid("index"), invalid("spin"), invalid("occupation"), missing("hartree"), invalid("symmetry"), invalid("kind")},
         R"({"kind":"canonical","orbitals":[)" + zero + R"(,"spin":"none"}],"spin":"none"})"},
    }, "orbital_set");
}

}  // namespace morv::testing
