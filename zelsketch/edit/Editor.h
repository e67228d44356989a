#pragma once

#include <string>
#include <vector>

namespace zel {

// Changes of a file by the paths of its values (ValuePath). All bytes but those meant stay as they are; the
// result is checked as a whole, and what would be damaged is refused. All of it throws Failure with what does
// not fit and what would.
class Editor {
public:
    // An edited file, and what has changed, a line each.
    struct Edit {
        std::string file;
        std::vector<std::string> changes;
    };

    // The values that a path names, a line each: alone for a single field, else behind "PATH = ".
    static std::vector<std::string> Get(const std::string& file, const std::string& path, bool all);
    // By "PATH=VALUE".
    static Edit Set(const std::string& file, const std::vector<std::string>& assignments, bool all);
    // A new definition with the values of "FIELD=VALUE": at the end of the list that `where` names, or in
    // front of the definition that it names.
    static Edit Add(const std::string& file, const std::string& where,
                    const std::vector<std::string>& fields);
    // Definitions with their members.
    static Edit Remove(const std::string& file, const std::vector<std::string>& paths, bool all);
    // Moves a definition to the end of a list, or to where `to` stands, among those that stay.
    static Edit Move(const std::string& file, const std::string& from, const std::string& to);
};

}  // namespace zel
