#include "core/json_writer.hpp"

#include <cmath>
#include <limits>

namespace morv::qc::json {
namespace {

class Printer {
public:
    Printer(std::ostream& out, SerializeOptions const& options) : out_(out), options_(options) {}

    void print(JsonValue const& value, std::uint32_t depth) {
        std::visit([&](auto const& alternative) { print_alternative(alternative, depth); }, value.storage());
    }

private:
    void print_alternative(std::nullptr_t, std::uint32_t) { out_ << "null"; }
    void print_alternative(bool value, std::uint32_t) { out_ << (value ? "true" : "false"); }
    void print_alternative(long long value, std::uint32_t) { out_ << value; }
    void print_alternative(unsigned long long value, std::uint32_t) { out_ << value; }
    void print_alternative(std::string const& value, std::uint32_t) { write_json_string(out_, value); }

    void print_alternative(double value, std::uint32_t) {
        // NaN fails every comparison, so the test is written to let it through
        // to "null" along with both infinities.
        if (!(std::fabs(value) <= std::numeric_limits<double>::max())) {
            out_ << "null";
            return;
        }
        out_.precision(17);
        out_ << value;
    }

    void print_alternative(JsonObject const& object, std::uint32_t depth) {
        out_ << '{';
        if (object.empty()) {
            out_ << '}';
            return;
        }
        newline();
        std::size_t remaining = object.size();
        for (auto const& [key, value] : object) {
            indent(depth + 1);
            write_json_string(out_, key);
            out_ << (options_.pretty ? ": " : ":");
            print(value, depth + 1);
            if (--remaining != 0) {
                out_ << ',';
            }
            newline();
        }
        indent(depth);
        out_ << '}';
    }

    void print_alternative(JsonArray const& array, std::uint32_t depth) {
        out_ << '[';
        if (array.empty()) {
            out_ << ']';
            return;
        }
        newline();
        std::size_t remaining = array.size();
        for (auto const& element : array) {
            indent(depth + 1);
            print(element, depth + 1);
            if (--remaining != 0) {
                out_ << ',';
            }
            newline();
        }
        indent(depth);
        out_ << ']';
    }

    void newline() {
        if (options_.pretty) {
            out_ << '\n';
        }
    }

    void indent(std::uint32_t depth) {
        if (!options_.pretty) {
            return;
        }
        // The count is a 32-bit product, as the option itself is 32 bits.
        std::uint32_t const blanks = depth * options_.indent;
        for (std::uint32_t i = 0; i < blanks; ++i) {
            out_ << ' ';
        }
    }

    std::ostream& out_;
    SerializeOptions const& options_;
};

char const* short_escape(unsigned char byte) {
    switch (byte) {
        case 0x22: return "\\\"";
        case 0x5C: return "\\\\";
        case 0x08: return "\\b";
        case 0x09: return "\\t";
        case 0x0A: return "\\n";
        case 0x0C: return "\\f";
        case 0x0D: return "\\r";
        default: return nullptr;
    }
}

}  // namespace

void write_json(std::ostream& out, JsonValue const& value, SerializeOptions const& options) {
    Printer(out, options).print(value, 0);
}

void write_json_string(std::ostream& out, std::string const& text) {
    static char const hex_digits[] = "0123456789abcdef";
    out << '"';
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        if (char const* escape = short_escape(byte)) {
            out << escape;
        } else if (byte < 0x20) {
            char const unicode_escape[] = {'\\', 'u', '0', '0', hex_digits[byte >> 4], hex_digits[byte & 0x0F]};
            out.write(unicode_escape, sizeof unicode_escape);
        } else {
            out << c;
        }
    }
    out << '"';
}

}  // namespace morv::qc::json
