#pragma once

// Python objects never hold a pointer into a record. Each one is a handle: the
// tree it belongs to (kept alive by the handle) and the path from the top of
// that tree to its record, walked again on every use. A list that grows moves
// its elements in memory, an unset optional or a switched variant frees them;
// a handle walks to wherever the record is now, or finds that it is gone.
//
// A path alone could lead to another record: after an insertion at the front
// of a list, index 0 is someone else. So every change that can put another
// record where a handle points (a field assigned, a list reordered, inserted
// into, shortened, an element replaced) is stamped on its place in the tree,
// and a handle taken before the stamp refuses to be used. Appending moves no
// element from its index, so handles stay good across growth.

#include <pybind11/pybind11.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

namespace morv::python {

namespace py = pybind11;

// One step from a value to a part of it: a field, an optional's record, a
// variant's alternative, or an element of a list. `descend` gives nullptr when
// the part is not there (an unset optional, another alternative, an index
// past the end).
struct Step {
    void* (*descend)(void* parent, std::size_t index);
    bool is_element;
};

struct Link {
    Step const* step;
    std::size_t index;

    friend bool operator<(Link const& lhs, Link const& rhs) {
        if (lhs.step != rhs.step) {
            return std::less<Step const*>()(lhs.step, rhs.step);
        }
        return lhs.index < rhs.index;
    }
};

using Path = std::vector<Link>;

// Stands for "every element" in a list's stamp: a change to the list's order
// or length moves them all.
inline constexpr std::size_t every_element = std::numeric_limits<std::size_t>::max();

// A tree of records that Python objects refer into: a document, a decode's
// result, or one record or list made in Python.
class Root {
public:
    template <typename T>
    static std::shared_ptr<Root> holding(T value) {
        auto root = std::make_shared<Root>();
        root->value_ = std::make_shared<T>(std::move(value));
        return root;
    }

    void* top() const { return value_.get(); }

    std::uint64_t now() const { return clock_; }

    // Whether nothing on `path` was replaced or moved after `stamp`.
    bool unchanged_since(Path const& path, std::uint64_t stamp) const {
        if (clock_ <= stamp) {
            return true;
        }
        Path place;
        place.reserve(path.size());
        for (Link const& link : path) {
            if (link.step->is_element) {
                place.push_back({link.step, every_element});
                if (changed_after(place, stamp)) {
                    return false;
                }
                place.back() = link;
            } else {
                place.push_back(link);
            }
            if (changed_after(place, stamp)) {
                return false;
            }
        }
        return true;
    }

    // Records that what sits at `place` was replaced or moved.
    void stamp(Path place) { changed_at_[std::move(place)] = ++clock_; }

    // Writers read under a shared lock with the GIL released; a change waits
    // for them with the GIL held, so it never runs in the middle of a write.
    std::shared_mutex& writers() { return writers_; }

private:
    bool changed_after(Path const& place, std::uint64_t stamp) const {
        auto const found = changed_at_.find(place);
        return found != changed_at_.end() && found->second > stamp;
    }

    std::shared_ptr<void> value_;
    std::uint64_t clock_ = 0;
    std::map<Path, std::uint64_t> changed_at_;
    std::shared_mutex writers_;
};

[[noreturn]] void throw_gone();

// A record (or list) of a tree, found again on each use.
template <typename T>
class Ref {
public:
    Ref(std::shared_ptr<Root> root, Path path)
        : root_(std::move(root)), path_(std::move(path)), stamp_(root_->now()) {}

    static Ref owning(T value) { return Ref(Root::holding(std::move(value)), {}); }

    T& get() const {
        if (!root_->unchanged_since(path_, stamp_)) {
            throw_gone();
        }
        void* node = root_->top();
        for (Link const& link : path_) {
            node = link.step->descend(node, link.index);
            if (node == nullptr) {
                throw_gone();
            }
        }
        return *static_cast<T*>(node);
    }

    // A handle on a part of this record; the record itself must still be
    // there, or the new handle could stand for a part of another record.
    template <typename Part>
    Ref<Part> part(Link link) const {
        get();
        Path path = path_;
        path.push_back(link);
        return Ref<Part>(root_, std::move(path));
    }

    // Changes the record while no writer reads its tree. `change` gets the
    // record and must not call back into Python.
    template <typename Change>
    decltype(auto) change(Change&& change) const {
        std::unique_lock const lock(root_->writers());
        return std::forward<Change>(change)(get());
    }

    // As `change`, then stamps the part at `link` as replaced or moved.
    template <typename Change>
    decltype(auto) change_part(Link link, Change&& change) const {
        std::unique_lock const lock(root_->writers());
        T& value = get();
        Path place = path_;
        place.push_back(link);
        root_->stamp(std::move(place));
        return std::forward<Change>(change)(value);
    }

    Root& root() const { return *root_; }

private:
    std::shared_ptr<Root> root_;
    Path path_;
    std::uint64_t stamp_;
};

template <typename T>
struct member_pointer;
template <typename Owner, typename Field>
struct member_pointer<Field Owner::*> {
    using owner = Owner;
    using field = Field;
};

template <auto Member>
using owner_of = typename member_pointer<decltype(Member)>::owner;
template <auto Member>
using field_of = typename member_pointer<decltype(Member)>::field;

// The steps, one object per kind of part, so that their addresses tell the
// parts apart.
template <auto Member>
struct FieldStep {
    static void* descend(void* parent, std::size_t) { return &(static_cast<owner_of<Member>*>(parent)->*Member); }
    static constexpr Step step{&descend, false};
};

template <auto Member>
struct OptionalFieldStep {
    static void* descend(void* parent, std::size_t) {
        auto& field = static_cast<owner_of<Member>*>(parent)->*Member;
        return field ? &*field : nullptr;
    }
    static constexpr Step step{&descend, false};
};

template <typename Variant, std::size_t Alternative>
struct AlternativeStep {
    static void* descend(void* parent, std::size_t) {
        return std::get_if<Alternative>(static_cast<Variant*>(parent));
    }
    static constexpr Step step{&descend, false};
};

template <typename Element>
struct ElementStep {
    static void* descend(void* parent, std::size_t index) {
        auto& elements = *static_cast<std::vector<Element>*>(parent);
        return index < elements.size() ? &elements[index] : nullptr;
    }
    static constexpr Step step{&descend, true};
};

template <auto Member>
Link field_link() {
    return {&FieldStep<Member>::step, 0};
}

template <typename Element>
Link element_link(std::size_t index) {
    return {&ElementStep<Element>::step, index};
}

}  // namespace morv::python
