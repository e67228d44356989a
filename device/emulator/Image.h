#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "Machine.h"

namespace zel {

// An image of the handheld as its loader takes it in: headers judged, sections mapped with their protections,
// addresses moved to where it lies, imports bound.
class Image {
public:
    // The address of an imported function, by library (in small letters) and name.
    using Import = std::function<Word(const std::string& library, const std::string& name)>;
    Image(Machine& machine, const std::filesystem::path& file, Word base, const Import& import);

    Word Base() const { return base_; }
    Word Entry() const { return entry_; }
    Word Export(const std::string& name) const { return exports_.at(name); }
    bool Exports(const std::string& name) const { return exports_.count(name) > 0; }
    // A resource by type and number: its place in memory and its size. A type is a name or "#16".
    struct Resource {
        Word place = 0, size = 0;
    };
    Resource Find(const std::u16string& type, Word number) const;

private:
    template <class T>
    T At(Word offset) const {
        T value;
        std::memcpy(&value, &memory_.at(offset), sizeof value);
        return value;
    }
    std::string TextAt(Word offset) const { return reinterpret_cast<const char*>(&memory_.at(offset)); }
    void Relocate(Word table, Word size);
    void Bind(Word table, const Import& import);
    void ReadExports(Word table);
    void ReadResources(Word root, Word directory, std::vector<std::u16string> path);

    std::vector<std::uint8_t> memory_;
    Word base_, entry_ = 0;
    std::map<std::string, Word> exports_;
    std::map<std::pair<std::u16string, std::u16string>, Resource> resources_;
};

}  // namespace zel
