// What reading does to text that the codec wrote itself: limits of yaml-cpp's
// loader that make such text fail to load, and re-typings that take a second
// read to settle, one from yaml-cpp's number conversion and one from the
// typing of extension numbers by their text. Each case is the smallest
// document that shows it. The fuzzers' round-trip check
// (fuzz/settled_round_trip.cpp) allows exactly the re-typings named here, and
// README.md lists all of them under "Known limits".

#include "support/json_text.hpp"

#include <morv/model/extension_value.hpp>

#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using model::ExtensionValue;
using model::ParseStatus;
using Items = std::vector<ExtensionValue>;
using Strings = std::vector<std::string>;

ExtensionValue nested_arrays(int depth) {
    ExtensionValue value{nullptr};
    for (int level = 0; level < depth; ++level) {
        value = ExtensionValue{Items{value}};
    }
    return value;
}

Document with_extension(std::string const& key, ExtensionValue value) {
    Document document;
    document.extensions.emplace(key, std::move(value));
    return document;
}

Document with_metadata(std::string const& key, MetadataValue value) {
    Document document;
    document.metadata.emplace(key, std::move(value));
    return document;
}

// Loading refuses the whole text, so nothing of the document comes back.
Lines not_loaded(int column, std::string const& what) {
    return {parse_failed("yaml-cpp: error at line 1, column " + std::to_string(column) + ": " + what)};
}

TEST(YamlLoadLimits, TextThatTheWriterProducesButTheLoaderRefuses) {
    std::string accents;
    for (int i = 0; i < 512; ++i) {
        accents += "\xc3\xa9";
    }
    struct Case {
        char const* name;
        Document document;
        Lines diagnostics;
    };
    Case const cases[] = {
        // The loader counts every node it descends into, the root object and
        // the innermost scalar included, and stops short of 500.
        {"497 arrays deep", with_extension("x", nested_arrays(497)), {}},
        {"498 arrays deep", with_extension("x", nested_arrays(498)), not_loaded(1, "bad file")},
        // A key may be 1024 characters long as written, its quotes included.
        {"1022-byte extension key", with_extension(std::string(1022, 'k'), {nullptr}), {}},
        {"1023-byte extension key", with_extension(std::string(1023, 'k'), {nullptr}),
         not_loaded(55, "end of map flow not found")},
        {"1023-byte metadata key", with_metadata(std::string(1023, 'k'), 1ll),
         not_loaded(67, "end of map flow not found")},
        // Escapes count as written: 171 NUL bytes are 1026 characters.
        {"171 NUL bytes as a key", with_extension(std::string(171, '\0'), {nullptr}),
         not_loaded(2, "end of map flow not found")},
        // Bytes are counted, not characters.
        {"512 two-byte characters as a key", with_extension(accents, {nullptr}),
         not_loaded(399, "end of map flow not found")},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        auto const read = deserialize(serialize(c.document));
        EXPECT_EQ(describe(read.diagnostics), c.diagnostics);
        EXPECT_EQ(read.status, c.diagnostics.empty() ? ParseStatus::complete : ParseStatus::failed);
        EXPECT_EQ(read.value, c.diagnostics.empty() ? c.document : Document{});
    }
}

// The "metadata" object of each of `writes` texts, every one written from
// what the one before it read as; the first is written from `document`.
Lines metadata_over_writes(Document document, int writes) {
    Lines texts;
    for (int i = 0; i < writes; ++i) {
        std::string const text = serialize(document);
        std::size_t const begin = text.find(R"("metadata":)");
        texts.push_back(text.substr(begin, text.find('}', begin) + 1 - begin));
        document = deserialize(text).value;
    }
    return texts;
}

TEST(RetypingOverReads, QuotedInfinityAndNanTextsInAMetadataArrayBecomeNumbersThenEmptyTexts) {
    // The array reader converts each element with yaml-cpp, which takes
    // ".inf" and ".nan" whatever their quotes; the writer prints a number that
    // is not finite as null, and null makes the array texts again.
    struct Case {
        MetadataValue written;
        Lines texts;
    };
    Case const cases[] = {
        {Strings{".inf"}, {R"("metadata":{"a":[".inf"]})", R"("metadata":{"a":[null]})", R"("metadata":{"a":[""]})",
                           R"("metadata":{"a":[""]})"}},
        {Strings{"1", "-.Inf", ".NaN"},
         {R"("metadata":{"a":["1","-.Inf",".NaN"]})", R"("metadata":{"a":[1,null,null]})",
          R"("metadata":{"a":["1","",""]})", R"("metadata":{"a":["1","",""]})"}},
        // Texts of finite numbers settle on the first read; yaml-cpp takes a
        // trailing blank but not a leading one.
        {Strings{"1", " 2"}, {R"("metadata":{"a":["1"," 2"]})", R"("metadata":{"a":["1"," 2"]})"}},
        {Strings{"1", "2 "}, {R"("metadata":{"a":["1","2 "]})", R"("metadata":{"a":[1,2]})",
                              R"("metadata":{"a":[1,2]})"}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.texts.front());
        EXPECT_EQ(metadata_over_writes(with_metadata("a", c.written), static_cast<int>(c.texts.size())), c.texts);
    }
}

TEST(RetypingOverReads, ANegativeZeroExtensionBecomesSignedThenUnsigned) {
    // -0.0 is written as -0; a text that begins with "-" and converts whole
    // is signed, and the signed 0 is written as 0, which reads unsigned.
    std::vector<ExtensionValue> reads{ExtensionValue{-0.0}};
    for (int i = 0; i < 3; ++i) {
        reads.push_back(deserialize(serialize(with_extension("x", reads.back()))).value.extensions.at("x"));
    }
    EXPECT_EQ(reads, (std::vector<ExtensionValue>{{-0.0}, {0ll}, {0ull}, {0ull}}));
}

}  // namespace
}  // namespace morv::qc::json
