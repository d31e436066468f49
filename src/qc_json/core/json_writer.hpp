#pragma once

// Prints JSON text straight from the records. A writer calls `key` and
// `value` in the order the text has them, and the members of an object go
// out in the byte order of their keys: each writer spells its keys in that
// order, and members that come from elsewhere (`MergedMembers`) are put in
// where they fall.

#include <morv/qc/json/codec.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace morv::qc::json {

class JsonPrinter;

// Members of one object that its writer does not spell itself, in the byte
// order of their keys: the extensions of a document, or the keys that every
// analysis block shares around those of its kind.
class MergedMembers {
public:
    // The key of the next member, or nothing when all are printed.
    virtual std::optional<std::string_view> next_key() const = 0;
    // Prints the value of the next member and moves past it.
    virtual void print_next(JsonPrinter& printer) = 0;
    virtual void skip_next() = 0;

protected:
    ~MergedMembers() = default;

private:
    friend class JsonPrinter;
    MergedMembers* outer_ = nullptr;
    std::uint32_t depth_ = 0;
};

class JsonPrinter {
public:
    explicit JsonPrinter(SerializeOptions const& options) : options_(options) {}

    // The text printed, in one allocation of its size; a pretty text ends
    // with a line feed.
    std::string finish();

    void begin_object();
    // An object whose members from `merged` go in among those printed next;
    // of two members with the same key, the printed one is kept.
    void begin_object(MergedMembers& merged);
    void end_object();
    void begin_array();
    void end_array();

    void key(std::string_view key);

    void null();
    void value(bool value);
    // NaN and both infinities print as null.
    void value(double value);
    void value(std::string_view text);
    void value(char const* text) { value(std::string_view(text)); }
    void value(std::string const& text) { value(std::string_view(text)); }
    // Signed integers print through the signed path and unsigned ones,
    // entity ids included, through the unsigned one.
    template <typename T,
              std::enable_if_t<std::is_integral_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char>, int> = 0>
    void value(T number) {
        if constexpr (std::is_signed_v<T>) {
            signed_value(number);
        } else {
            unsigned_value(number);
        }
    }

    template <typename Value>
    void member(std::string_view key_text, Value const& member_value) {
        key(key_text);
        value(member_value);
    }

private:
    void signed_value(long long number);
    void unsigned_value(unsigned long long number);

    void begin(char bracket);
    void end(char bracket);
    void before_value();
    void before_element();
    void print_key(std::string_view key);
    void print_merged_before(std::string_view key);
    void print_merged_rest();
    void print_string(std::string_view text);
    void indent();

    // Room for `size` bytes at the cursor; `advance` then says where the
    // written bytes end.
    char* room(std::size_t size) {
        if (static_cast<std::size_t>(limit_ - cursor_) < size) {
            start_chunk(size);
        }
        return cursor_;
    }
    void advance(char* end) { cursor_ = end; }
    void put(char c) {
        char* out = room(1);
        *out = c;
        advance(out + 1);
    }
    void put(std::string_view word);
    void start_chunk(std::size_t size);
    void close_chunk();
    void trim_last_chunk();

    // How much of the end of the text `finish` keeps on the stack.
    static constexpr std::size_t tail_size = 32768;
    std::string_view move_tail(std::array<char, tail_size>& tail);

    struct Chunk {
        std::unique_ptr<char[]> bytes;
        std::size_t used;
    };

    SerializeOptions options_;
    std::vector<Chunk> chunks_;
    std::size_t chunks_bytes_ = 0;
    char* cursor_ = nullptr;
    char* limit_ = nullptr;
    std::uint32_t depth_ = 0;
    bool first_ = true;
    bool after_key_ = false;
    MergedMembers* merged_ = nullptr;
};

// The positions of a table's entries in the byte order of their keys, for a
// table kept in another order, such as the one in which a read reports.
template <typename Entry, std::size_t size>
constexpr std::array<std::size_t, size> byte_order(std::array<Entry, size> const& entries) {
    std::array<std::size_t, size> order{};
    for (std::size_t i = 0; i < size; ++i) {
        std::size_t j = i;
        for (; j > 0 && std::string_view(entries[i].key) < std::string_view(entries[order[j - 1]].key); --j) {
            order[j] = order[j - 1];
        }
        order[j] = i;
    }
    return order;
}

// Several sources of members as one: each in byte order, and no key in two.
template <std::size_t count>
class MergedSources final : public MergedMembers {
public:
    explicit MergedSources(std::array<MergedMembers*, count> sources) : sources_(sources) {}

    std::optional<std::string_view> next_key() const override {
        MergedMembers const* source = first();
        return source ? source->next_key() : std::nullopt;
    }
    void print_next(JsonPrinter& printer) override { first()->print_next(printer); }
    void skip_next() override { first()->skip_next(); }

private:
    // The source whose next key is the least.
    MergedMembers* first() const {
        MergedMembers* least = nullptr;
        std::optional<std::string_view> least_key;
        for (MergedMembers* source : sources_) {
            auto const key = source->next_key();
            if (key && (!least_key || *key < *least_key)) {
                least = source;
                least_key = key;
            }
        }
        return least;
    }

    std::array<MergedMembers*, count> sources_;
};

}  // namespace morv::qc::json
