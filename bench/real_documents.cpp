#include "real_documents.hpp"

#include <morv/qc/import.hpp>
#include <morv/qc/json/codec.hpp>

#include <charconv>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace morv::bench {
namespace {

std::string file_text(std::string const& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool is_number_byte(char c) {
    return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

// The text of the double that `token` spells, rounded to `significant` digits
// or the shortest; a whole number keeps a fraction, so that it still reads as
// a double.
void append_printed(std::string& out, std::string_view token, int significant) {
    if (token.find_first_of(".eE") == std::string_view::npos) {
        out += token;
        return;
    }
    double value = 0.0;
    std::from_chars(token.data(), token.data() + token.size(), value);
    char buffer[32];
    char* const end = buffer + sizeof buffer;
    auto const printed = significant > 0 ? std::to_chars(buffer, end, value, std::chars_format::general, significant)
                                         : std::to_chars(buffer, end, value);
    std::string_view const text(buffer, static_cast<std::size_t>(printed.ptr - buffer));
    out += text;
    if (text.find_first_of(".e") == std::string_view::npos) {
        out += ".0";
    }
}

std::string compact_text(model::ParseResult<qc::Document> const& result) {
    if (result.status != model::ParseStatus::complete) {
        throw std::runtime_error("the importer did not read the output complete");
    }
    return printed_numbers(qc::json::serialize(result), 0);
}

}  // namespace

std::string grown_output(std::string_view output, std::string_view mark, std::size_t steps, std::size_t times) {
    std::vector<std::size_t> starts;
    for (auto at = output.find(mark); at != std::string_view::npos; at = output.find(mark, at + 1)) {
        auto const line_end = output.rfind('\n', at);
        starts.push_back(line_end == std::string_view::npos ? 0 : line_end + 1);
    }
    if (starts.size() <= steps) {
        throw std::runtime_error("the output has too few steps to grow");
    }
    std::string_view const repeated = output.substr(starts[0], starts[steps] - starts[0]);
    std::string text(output.substr(0, starts[0]));
    text.reserve(output.size() + repeated.size() * times);
    for (std::size_t i = 0; i < times; ++i) {
        text += repeated;
    }
    text += output.substr(starts[steps]);
    return text;
}

std::string printed_numbers(std::string_view json, int significant) {
    std::string out;
    out.reserve(json.size());
    std::size_t i = 0;
    while (i < json.size()) {
        char const c = json[i];
        if (c == '"') {
            auto end = i + 1;
            while (json[end] != '"') {
                end += json[end] == '\\' ? 2 : 1;
            }
            out += json.substr(i, end + 1 - i);
            i = end + 1;
        } else if (c == '-' || (c >= '0' && c <= '9')) {
            auto end = i + 1;
            while (end < json.size() && is_number_byte(json[end])) {
                ++end;
            }
            append_printed(out, json.substr(i, end - i), significant);
            i = end;
        } else {
            out += c;
            ++i;
        }
    }
    return out;
}

std::string imported_text(std::string const& source_dir, GrownOutput const& output, std::size_t target_bytes) {
    std::string const path = source_dir + "/" + output.path;
    std::string const original = file_text(path);
    auto const text_of = [&](std::size_t times) {
        return compact_text(qc::import_output(grown_output(original, output.mark, output.steps, times), output.path));
    };
    if (target_bytes == 0) {
        return compact_text(qc::import_output(original, output.path));
    }
    // The text grows by the same number of bytes with each repeat.
    std::size_t const once = text_of(1).size();
    std::size_t const per_repeat = text_of(2).size() - once;
    std::size_t const times = target_bytes > once ? 1 + (target_bytes - once + per_repeat / 2) / per_repeat : 1;
    return text_of(times);
}

}  // namespace morv::bench
