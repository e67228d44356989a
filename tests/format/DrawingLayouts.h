#pragma once

#include <string>

#include "HexDump.h"

namespace zel {

constexpr int kVersions = 27;  // 0 to 26

// The bytes of a layout at a version. "{3-9: 01 02}" stands in the versions 3 to 9, "{10-: 03}" from 10 on.
inline std::string BytesAt(const std::string& layout, int version) {
    std::string text;
    for (std::size_t i = 0; i < layout.size(); ++i) {
        if (layout[i] != '{') {
            text += layout[i];
            continue;
        }
        const std::size_t dash = layout.find('-', i), colon = layout.find(':', i), end = layout.find('}', i);
        const bool open = colon == dash + 1;
        if (version >= std::stoi(layout.substr(i + 1)) &&
            (open || version <= std::stoi(layout.substr(dash + 1))))
            text += layout.substr(colon + 1, end - colon - 1) + ' ';
        i = end;
    }
    return Hex(text);
}

// In the layouts every field has a value of its own.

inline const std::string kArea =
    "{0-6: 19 00}{7-7: 04 'SITE' 00}{8-: 06 04 'SITE'}{13-: 06 05 'Label'} 01 11*8 12*8 13*8 14*8 15*8"
    "{0-10: 00 00}{11-: FF FF}{12-: 21 22 23 24} 31 32 33 06 04 'Text'{22-: 06 05 'Style'}"
    "{22-23: 04 01}{24-: 01 05 01 00 00 01 00 00 00 00} 41 42{3-: 43 44}{10-: 45 46}"
    "{16-: 51 52 53 54 55 56 57 58}{23-: 59 5A 5B 5C} 01 00";

// With AuxMode 1; with AuxMode 2 the byte 19 always ends the record.
inline const std::string kAuxiliary =
    "{9-: 01} 06 04 'Name' 11*4 12*16"
    "{0-20: FE FF 70 11 01 80 FF 7F 05 00}{21-: FE FF FF FF 70 11 01 00 01 80 FF FF FF 7F 00 00 05 00 00 00}"
    "13*8 14*32 15*8 16*8 17 18*8 {4-8: 19}";

// What stands before the geometry of an entity, the same for all kinds.
inline const std::string kEntityHead = "11*8 12*8 13*8 14*8 15*8 FE FF 16*8 17*8 FD 00 04 'Dash' ";

struct GeometryLayout {
    int kind;
    std::string layout;
};
inline const GeometryLayout kGeometries[] = {
    {0, ""},
    {5, ""},
    {-2, ""},
    {1, "{17-: 21*40}"},
    {2, "21*8 22*8 23*8 24*8"},
    {3, "21*8 22*8 23*8"},
    {4, "21*8 22*8 23*8 24*8 25*8"},
    {7, "21*8 22*8 23*8 2C 01 61*300 24*8 25*8 26*8 03 'abc'"},
    {13, "FF 7F 21*8 22*8 00 01 00 03 00 " + kEntityHead + "23*8 24*8 25*8 00 00"},
    {14, "21*24 22*8 23*8 24*8"},
    {23, "03 'abc' 21*8 22*8 23*8 24*8 25*8 00 02 00 0C 00 0C 00"},
    {35, "21*24 22*8 23*8 24*8 25*8 26*8"},
};

// Entities whose bytes do not depend on the version that a geometry or an order number was read with.
inline const std::string kEntities =
    "00 02 00 0D 00 " + kEntityHead + kGeometries[8].layout + " 00 00 05 00 " + kEntityHead + "00 00";

inline const std::string kStyle = "05 'Group' 06 01 11 00 05 'Dash2' 12*4 13*4 14*4 15*4 " + kEntities;

inline const std::string kDrawing = "01" + kArea + kArea + "00 01" + kAuxiliary + kAuxiliary + "00 01 " +
                                    kStyle + kStyle +
                                    "00 {2-: 21*8 22*8 23*8}{14-: 24*4 25*4 26*4}{15-: 27*4}" + kEntities +
                                    "00 02 00 09 00 " + kStyle + "09 00 " + kStyle;

}  // namespace zel
