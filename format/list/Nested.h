#pragma once

#include <algorithm>
#include <cstddef>
#include <list>
#include <utility>
#include <vector>

namespace zel {

// Walks over lists whose elements own further lists of their own kind, to any depth, on a constant stack:
// what would be a recursion stands in a vector on the heap.
//
// A list has Elements(), a std::list. An element has Nested(), its list of further elements or null, whose
// name is kNestedName; Head and Tail, which walk its fields before and behind that list; and CopyFields,
// which copies all but the nested elements.

// Walks everything below `root`, which is framed by Cursor: its constructor passes the list's opening, its
// Next gives the next element or, past the last, passes the closing and gives null; Current is the element
// given last. `path` is empty, and may have room for the walk (DepthOf), which then allocates nothing.
template <class Cursor, class Archive, class List>
void WalkNested(Archive& archive, List& root, std::vector<Cursor>& path, const char* name = nullptr) {
    path.emplace_back(archive, root, name);
    for (;;) {
        auto* element = path.back().Next();
        if (element) {
            element->Head(archive);
            if (List* nested = element->Nested()) {
                path.emplace_back(archive, *nested, element->kNestedName);
                continue;
            }
        } else {
            path.pop_back();
            if (path.empty()) return;
            element = path.back().Current();
        }
        element->Tail(archive);
    }
}

template <class Cursor, class Archive, class List>
void WalkNested(Archive& archive, List& root, const char* name = nullptr) {
    std::vector<Cursor> path;
    WalkNested(archive, root, path, name);
}

// The most lists that a walk over `root` is within at a time.
template <class List>
std::size_t DepthOf(const List& root) {
    std::size_t deepest = 1;
    std::vector<std::pair<const List*, std::size_t>> pending{{&root, 1}};
    while (!pending.empty()) {
        const auto [list, depth] = pending.back();
        pending.pop_back();
        for (const auto& element : list->Elements()) {
            const List* nested = element.Nested();
            if (!nested) continue;
            deepest = std::max(deepest, depth + 1);
            if (!nested->Elements().empty()) pending.emplace_back(nested, depth + 1);
        }
    }
    return deepest;
}

// An element by itself: its fields and everything below it.
template <class Cursor, class Archive, class Element>
void WalkElement(Archive& archive, Element& element) {
    element.Head(archive);
    if (auto* nested = element.Nested()) WalkNested<Cursor>(archive, *nested, element.kNestedName);
    element.Tail(archive);
}

// Calls `visit` with `root` and every list below it, a list before those of its elements.
template <class List, class Visit>
void VisitLists(List& root, Visit visit) {
    std::vector<List*> pending{&root};
    while (!pending.empty()) {
        List* list = pending.back();
        pending.pop_back();
        visit(*list);
        for (auto& element : list->Elements())
            if (List* nested = element.Nested(); nested && !nested->Elements().empty())
                pending.push_back(nested);
    }
}

// Appends copies of everything below `from` to `to`.
template <class List>
void CopyNested(const List& from, List& to) {
    std::vector<std::pair<const List*, List*>> pending{{&from, &to}};
    while (!pending.empty()) {
        const auto [source, target] = pending.back();
        pending.pop_back();
        for (const auto& element : source->Elements()) {
            auto& copy = target->Elements().emplace_back();
            copy.CopyFields(element);
            if (const List* nested = element.Nested(); nested && !nested->Elements().empty())
                pending.emplace_back(nested, copy.Nested());
        }
    }
}

// Destroys all elements: those of nested lists move to the end of the one list before their owner goes.
template <class Element>
void DrainNested(std::list<Element>& elements) noexcept {
    while (!elements.empty()) {
        if (auto* nested = elements.front().Nested()) elements.splice(elements.end(), nested->Elements());
        elements.pop_front();
    }
}

}  // namespace zel
