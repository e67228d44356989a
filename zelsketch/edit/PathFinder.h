#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ValuePath.h"
#include "zel/survey/Field.h"

namespace zel {

// Finds in a file what a path names, in file order.
class PathFinder : public FieldVisitor {
public:
    struct Span {
        std::size_t begin;
        std::size_t end;
    };
    struct Definition {
        Place place;
        Span span;  // members and all
    };

    // `onField` is shown each field that the path names, and those of members where it names a definition. A
    // code that stands more than once in a list is an error unless `all` are meant.
    PathFinder(const ValuePath& path, bool all, std::function<void(const Field&)> onField = {})
        : path_(path), all_(all), onField_(std::move(onField)) {}

    // Throws Failure (kUnusable) where the path names nothing: with what there is.
    void Find(std::string_view file);

    // The definitions that the path names; for a list those in it.
    const std::vector<Definition>& definitions() const { return definitions_; }
    // Of a path that names a list: how many it names, and where the last one ends.
    std::size_t lists() const { return lists_; }
    std::size_t listEnd() const { return listEnd_; }

    void OnField(const Field& field) override;
    void OnRecord(const Place& place) override;

private:
    void MatchCode(const Field& code);
    bool IsNamed(const Field& field) const;
    void BeginDefinition(const Field& field);
    void EndList(const Field& field);
    [[noreturn]] void FailOfDefinition() const;
    [[noreturn]] void FailOfField(std::string_view file) const;

    const ValuePath& path_;
    const bool all_;
    const std::function<void(const Field&)> onField_;
    std::size_t matched_ = 0;  // steps, by the records around the field at hand
    std::size_t reached_ = 0;  // the most of them
    bool isFirstField_ = false;
    bool hasField_ = false;
    std::vector<Place> found_;         // by step: the record that matched its code last
    std::vector<std::size_t> counts_;  // by step: the records of the list that was looked through last
    std::vector<Definition> definitions_;
    std::size_t lists_ = 0;
    std::size_t listEnd_ = 0;
};

}  // namespace zel
