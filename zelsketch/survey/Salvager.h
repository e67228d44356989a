#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Field.h"

namespace zel {

// What can be had of a damaged file.
struct Salvage {
    // A definition that no reader finds, and where it stands in the damaged file.
    struct Find {
        Place place;  // in `file`
        std::size_t offset;
    };
    struct Gap {
        std::size_t offset;
        std::size_t size;
    };

    std::string file;         // of the same version, whole
    std::vector<Find> finds;  // in the order of `file`
    std::vector<Gap> gaps;    // bytes that make no sense
    std::size_t missing = 0;  // bytes that the file lacks at its end; zeros stand for them

    std::size_t Lost() const;
    // Where reading goes on behind the damage, in words; empty where it goes on nowhere.
    std::string Text() const;
    // What was done, a line each.
    std::vector<std::string> Lines() const;
};

// Goes through a file as a reader would, but only from one plausible definition to the next: behind damage it
// goes on where the next one starts, in the list that it was in. Plausible is what has a writer's tags,
// counts and list bytes; a single one may be off, also the zero that ends a list for a reader, where a
// printable code and all the rest say otherwise.
class Salvager {
public:
    // Throws Failure (kDamaged) where the version is none that has definitions, or nothing looks like one in
    // a file without the signature.
    static Salvage Take(std::string_view file);

private:
    explicit Salvager(std::string_view file) : file_(file) {}

    void TakeHeader();
    void TakeDefinitions();
    void TakeDefinition(std::size_t size, bool isFind);
    void CloseList();
    std::size_t FindNext(std::size_t from) const;
    void AddGap(std::size_t from, std::size_t to);

    std::string_view file_;
    std::size_t at_ = 0;
    std::int32_t version_ = 0;
    bool isDefinitionFile_ = false;
    Place place_;
    Salvage salvage_;
};

}  // namespace zel
