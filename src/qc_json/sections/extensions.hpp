#pragma once

#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/model/extension_value.hpp>

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace morv::qc::json {

// Accepts every node and reports nothing.
model::ExtensionValue read_extension_value(Node const& node);

void write_extension_value(JsonPrinter& printer, model::ExtensionValue const& value);

// A document's extensions as members of its root.
class ExtensionMembers final : public MergedMembers {
public:
    using Extensions = std::map<std::string, model::ExtensionValue>;

    explicit ExtensionMembers(Extensions const& extensions)
        : next_(extensions.begin()), end_(extensions.end()) {}

    std::optional<std::string_view> next_key() const override {
        if (next_ == end_) {
            return std::nullopt;
        }
        return std::string_view(next_->first);
    }
    void print_next(JsonPrinter& printer) override {
        write_extension_value(printer, next_->second);
        ++next_;
    }
    void skip_next() override { ++next_; }

private:
    Extensions::const_iterator next_;
    Extensions::const_iterator end_;
};

}  // namespace morv::qc::json
