#include "Image.h"

#include <fstream>
#include <iterator>

namespace zel {
namespace {

constexpr Word kOptional = 24;

std::u16string Number(Word number) {
    const std::string digits = "#" + std::to_string(number);
    return {digits.begin(), digits.end()};
}

}  // namespace

Image::Image(Machine& machine, const std::filesystem::path& path, Word base, const Import& import)
    : base_(base) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
    if (bytes.size() < 0x200) throw Fault("no image at " + path.string());
    memory_ = bytes;
    const Word header = At<Word>(0x3C), optional = header + kOptional;
    const auto count = At<std::uint16_t>(header + 6);
    const Word preferred = At<Word>(optional + 28), headerSize = At<Word>(optional + 60);
    std::vector<std::uint8_t> laid(At<Word>(optional + 56));
    if (At<std::uint16_t>(header + 4) != 0x1C0 || At<std::uint16_t>(optional + 68) != 9)
        throw Fault("not for this system");

    struct Section {
        Word size, place, raw, offset, flags;
    };
    std::vector<Section> sections;
    std::copy(bytes.begin(), bytes.begin() + headerSize, laid.begin());
    for (Word i = 0, at = optional + 224; i < count; ++i, at += 40) {
        sections.push_back(
            {At<Word>(at + 8), At<Word>(at + 12), At<Word>(at + 16), At<Word>(at + 20), At<Word>(at + 36)});
        const Section& section = sections.back();
        const Word size = std::min(section.raw, section.size);
        std::copy_n(bytes.begin() + section.offset, size, laid.begin() + section.place);
    }
    entry_ = base + At<Word>(optional + 16);
    Word directory[16][2];
    for (Word i = 0; i < 16; ++i) {
        directory[i][0] = At<Word>(optional + 96 + 8 * i);
        directory[i][1] = At<Word>(optional + 100 + 8 * i);
    }
    memory_ = std::move(laid);
    if (base != preferred) {
        base_ = base - preferred;
        Relocate(directory[5][0], directory[5][1]);
        base_ = base;
    }
    if (directory[0][1]) ReadExports(directory[0][0]);
    Bind(directory[1][0], import);
    if (directory[2][1]) ReadResources(directory[2][0], directory[2][0], {});
    machine.MapSection(base, {memory_.begin(), memory_.begin() + headerSize}, false, false);
    for (const Section& section : sections) {
        if (section.flags & 0x02000000) continue;  // not kept in memory
        machine.MapSection(base + section.place,
                           {memory_.begin() + section.place, memory_.begin() + section.place + section.size},
                           section.flags & 0x80000000, section.flags & 0x20000000);
    }
}

void Image::Relocate(Word table, Word size) {
    for (const Word end = table + size; table < end;) {
        const Word page = At<Word>(table), length = At<Word>(table + 4);
        for (Word at = table + 8; at < table + length; at += 2) {
            const auto entry = At<std::uint16_t>(at);
            if (entry >> 12 == 0) continue;
            if (entry >> 12 != 3) throw Fault("a relocation of another kind");
            const Word place = page + (entry & 0xFFF), moved = At<Word>(place) + base_;
            std::memcpy(&memory_.at(place), &moved, sizeof moved);
        }
        table += length;
    }
}

void Image::Bind(Word table, const Import& import) {
    for (; At<Word>(table + 12) != 0; table += 20) {
        std::string library = TextAt(At<Word>(table + 12));
        for (char& letter : library) letter = static_cast<char>(std::tolower(letter));
        Word place = At<Word>(table + 16);
        for (Word names = At<Word>(table); At<Word>(names) != 0; names += 4, place += 4) {
            const Word address = import(library, TextAt(At<Word>(names) + 2));
            std::memcpy(&memory_.at(place), &address, sizeof address);
        }
    }
}

void Image::ReadExports(Word table) {
    const Word functions = At<Word>(table + 28), names = At<Word>(table + 32),
               ordinals = At<Word>(table + 36);
    for (Word i = 0; i < At<Word>(table + 24); ++i) {
        const auto ordinal = At<std::uint16_t>(ordinals + 2 * i);
        exports_[TextAt(At<Word>(names + 4 * i))] = base_ + At<Word>(functions + 4u * ordinal);
    }
}

void Image::ReadResources(Word root, Word directory, std::vector<std::u16string> path) {
    const Word count = At<std::uint16_t>(directory + 12) + Word{At<std::uint16_t>(directory + 14)};
    for (Word i = 0; i < count; ++i) {
        Word name = At<Word>(directory + 16 + 8 * i);
        const Word entry = At<Word>(directory + 20 + 8 * i);
        std::vector<std::u16string> below = path;
        if (name & 0x80000000) {
            name = root + (name & 0x7FFFFFFF);
            std::u16string text(At<std::uint16_t>(name), u'\0');
            std::memcpy(text.data(), &memory_.at(name + 2), 2 * text.size());
            below.push_back(text);
        } else {
            below.push_back(Number(name));
        }
        if (entry & 0x80000000) {
            ReadResources(root, root + (entry & 0x7FFFFFFF), below);
        } else {
            resources_[{below.at(0), below.at(1)}] = {base_ + At<Word>(root + entry),
                                                      At<Word>(root + entry + 4)};
        }
    }
}

Image::Resource Image::Find(const std::u16string& type, Word number) const {
    const auto found = resources_.find({type, Number(number)});
    return found == resources_.end() ? Resource() : found->second;
}

}  // namespace zel
