// The fast decode against the decode through YAML::Load, which defines every
// result: same status, same diagnostics with their spans, same text written
// back, or a finding.
//
// Every input goes in as it is. When it is strict JSON, it also goes in
// spelled anew, with choices seeded by a hash of the input: other blanks and
// line breaks, escapes for plain characters, other spellings of the same
// numbers, numbers in quotes, duplicated pairs, long keys and extra nesting,
// with now and then a spelling that yaml-cpp reads differently or refuses.

#include "core/document.hpp"
#include "core/json_tree.hpp"
#include <morv/testing/choices.hpp>

#include <morv/qc/json/codec.hpp>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>

namespace {

using morv::qc::json::JsonTree;
using morv::qc::json::TreeKind;
using morv::qc::json::TreeValue;

// The respelling's choices.
class Choices : public morv::testing::Choices {
public:
    using morv::testing::Choices::Choices;

    template <std::size_t N>
    char const* pick(char const* const (&options)[N]) {
        return options[next() % N];
    }
};

class Respeller {
public:
    Respeller(JsonTree const& tree, Choices& choices) : tree_(tree), choices_(choices) {}

    std::string respell() {
        blanks();
        value(0);
        blanks();
        return out_;
    }

private:
    void blanks() {
        static char const* const spellings[] = {"", "", "", " ", "\n", "\t", "\r\n", "  \n\t ", "\n\n"};
        out_ += choices_.one_in(400) ? "\r" : choices_.pick(spellings);
    }

    void value(std::uint32_t index) {
        TreeValue const& v = tree_[index];
        bool const wrap = choices_.one_in(60);
        if (wrap) {
            out_ += '[';
        }
        switch (v.kind()) {
            case TreeKind::null: out_ += "null"; break;
            case TreeKind::plain:
            case TreeKind::number: plain(tree_.text(v)); break;
            case TreeKind::quoted: quoted(tree_.text(v)); break;
            case TreeKind::sequence: sequence(index); break;
            case TreeKind::map: map(index); break;
        }
        if (wrap) {
            out_ += ']';
        }
    }

    void sequence(std::uint32_t index) {
        out_ += '[';
        bool first = true;
        for (std::uint32_t i = index + 1; i != tree_.next(index); i = tree_.next(i)) {
            separator(first);
            value(i);
        }
        blanks();
        out_ += ']';
    }

    void map(std::uint32_t index) {
        out_ += '{';
        bool first = true;
        if (choices_.one_in(50)) {
            separator(first);
            quoted(std::string(1000 + choices_.next() % 40, 'k'));
            out_ += ":1";
        }
        for (std::uint32_t i = index + 1; i != tree_.next(index); i = tree_.next(i + 1)) {
            int const copies = choices_.one_in(30) ? 2 : 1;
            for (int copy = 0; copy < copies; ++copy) {
                separator(first);
                quoted(tree_.text(tree_[i]));
                out_ += choices_.one_in(200) ? "\n" : choices_.one_in(20) ? " \t" : "";
                out_ += ':';
                blanks();
                value(i + 1);
            }
        }
        blanks();
        out_ += '}';
    }

    void separator(bool& first) {
        blanks();
        if (!first) {
            out_ += ',';
            blanks();
        }
        first = false;
    }

    void plain(std::string_view text) {
        if (choices_.one_in(10)) {
            quoted(text);
            return;
        }
        out_ += text;
        bool const number = text != "true" && text != "false";
        if (number && choices_.one_in(4)) {
            static char const* const suffixes[] = {"e0", "E+00", "e-0", "0e-1", "E1"};
            bool const has_fraction = text.find_first_of(".eE") != std::string_view::npos;
            out_ += has_fraction ? choices_.pick(suffixes) : (choices_.one_in(2) ? ".0" : "e0");
        }
    }

    void quoted(std::string_view text) {
        out_ += '"';
        for (char const c : text) {
            character(static_cast<unsigned char>(c));
        }
        out_ += '"';
    }

    void character(unsigned char c) {
        static char const hex[] = "0123456789abcdef0123456789ABCDEF";
        int const letters = choices_.one_in(2) ? 16 : 0;
        if (c == '"' || c == '\\' || c < 0x20 || (c < 0x80 && choices_.one_in(12))) {
            if (c == '/' && choices_.one_in(2)) {
                out_ += "\\/";
                return;
            }
            if (c == '\t' && choices_.one_in(100)) {
                out_ += '\t';
                return;
            }
            char const escape[] = {'\\', 'u', '0', '0', hex[letters + (c >> 4)], hex[letters + (c & 0x0F)], 0};
            out_ += escape;
            return;
        }
        if (choices_.one_in(2000)) {
            out_ += choices_.one_in(2) ? "\\ud83d\\ude00" : "\\u00e9";
        }
        out_ += static_cast<char>(c);
    }

    JsonTree const& tree_;
    Choices& choices_;
    std::string out_;
};

std::string describe(morv::model::ParseResult<morv::qc::Document> const& result) {
    return std::to_string(static_cast<int>(result.status)) + "\n" + morv::qc::json::serialize(result);
}

[[noreturn]] void fail(std::string const& text, std::string const& fast, std::string const& reference) {
    std::fprintf(stderr, "\nFINDING: the two decodes differ\n--- text:\n%s\n--- fast:\n%s\n--- yaml-cpp:\n%s\n",
                 text.c_str(), fast.c_str(), reference.c_str());
    std::abort();
}

void require_same_decode(std::string const& text) {
    std::string const fast = describe(morv::qc::json::deserialize(text));
    std::string const reference = describe(morv::qc::json::decode_through_yaml(text));
    if (fast != reference) {
        fail(text, fast, reference);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(reinterpret_cast<char const*>(data), size);
    require_same_decode(text);
    if (auto const tree = morv::qc::json::load_strict_json(text)) {
        Choices choices(std::hash<std::string>{}(text));
        require_same_decode(Respeller(*tree, choices).respell());
    }
    return 0;
}
