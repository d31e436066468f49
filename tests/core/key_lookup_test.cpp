#include "core/json_tree.hpp"
#include "core/node.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

std::string value_at(Node const& map, std::string const& key) {
    Node const value = map[key];
    return value.defined() ? std::string(value.scalar()) : "<none>";
}

// A lookup on the tree starts where the last one matched; whatever the order
// of the keys asked, on one and the same node, it finds what yaml-cpp finds.
TEST(KeyLookup, AnyOrderOfKeysFindsWhatYamlCppFinds) {
    std::string many_keys = "{";
    for (int i = 0; i < 70; ++i) {
        many_keys += "\"k" + std::to_string(i) + "\":" + std::to_string(i) + ",";
    }
    many_keys += "\"k3\":-3}";
    struct Case {
        std::string json;
        std::vector<std::string> keys;
    };
    Case const cases[] = {
        {R"({"x":1,"y":2,"z":3})", {"x", "y", "z", "x", "z", "y", "w", "y"}},
        {R"({"x":1,"y":2,"x":3})", {"x", "y", "x", "y", "x"}},
        {R"({"a":1,"ab":2,"b":3,"a":4})", {"ab", "b", "a", "b", "ab"}},
        {R"({"\u0078":1,"x":2,"a\u0000b":3})", {"x", "x", "a"}},
        {many_keys, {"k2", "k3", "k69", "k3", "k70"}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        auto const tree = load_strict_json(c.json);
        ASSERT_TRUE(tree);
        Node const on_tree(*tree, 0);
        Node const on_yaml = load_text(c.json);
        for (std::string const& key : c.keys) {
            EXPECT_EQ(value_at(on_tree, key), value_at(on_yaml, key)) << key;
        }
    }
}

}  // namespace
}  // namespace morv::qc::json
