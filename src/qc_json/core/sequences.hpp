#pragma once

// The shapes that every list of the format shares: a list is read only when
// its node is a sequence, element by element in text order, and written as an
// array in list order.

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <optional>
#include <utility>
#include <vector>

namespace morv::qc::json {

template <typename Record>
void append_read(std::vector<Record>& records, std::optional<Record>&& record) {
    // An element that could not be read leaves no gap.
    if (record) {
        records.push_back(std::move(*record));
    }
}

template <typename Record>
void append_read(std::vector<Record>& records, Record&& record) {
    records.push_back(std::move(record));
}

// Anything but a sequence leaves the list as it is, and reports nothing.
template <typename Record, typename Reader>
void read_elements(DocumentResult& result, Node const& list, std::vector<Record>& records, Reader read) {
    if (!list.is_sequence()) {
        return;
    }
    records.reserve(records.size() + list.size());
    for (Node const element : list.elements()) {
        append_read(records, read(result, element));
    }
}

template <typename Records, typename Writer>
void write_elements(JsonPrinter& printer, Records const& records, Writer write) {
    printer.begin_array();
    for (auto const& record : records) {
        write(printer, record);
    }
    printer.end_array();
}

}  // namespace morv::qc::json
