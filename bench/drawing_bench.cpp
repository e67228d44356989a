// Drawings of version 26. So many records are that many entities of mixed kinds, a hundredth as many style
// groups that hold most of them, and a tenth as many areas.

#include <algorithm>
#include <cstring>
#include <iterator>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "zel/drawing/DrawingRecord.h"
#include "zel/drawing/Kind13Geometry.h"
#include "zel/drawing/Kind23Geometry.h"
#include "zel/drawing/Kind7Geometry.h"
#include "Measure.h"

namespace zel {
namespace {

constexpr std::int32_t kVersion = 26;
constexpr std::int64_t kMostInDrawing = 30000;  // a typed list holds no more than 32767

struct NewestDrawing : DrawingRecord {
    NewestDrawing() { SetVersion(kVersion); }
};

void Fill(EntityRecord& entity, std::int64_t number) {
    entity.AnchorA.X = 1.5 * static_cast<double>(number);
    entity.PrimaryStyle.Put("BYLAYER");
    entity.SecondaryStyle.Put(number % 3 == 0 ? "Dashed" : "BYBLOCK");
    entity.OrderIndex = static_cast<std::uint16_t>(number);
    entity.Geometry = EntityGeometry::Make(entity.EntityKind);
    entity.Geometry->SetVersion(kVersion);
    if (auto* text = dynamic_cast<Kind7Geometry*>(entity.Geometry.get()))
        text->Text.text = "Living room " + std::to_string(number);
    if (auto* named = dynamic_cast<Kind23Geometry*>(entity.Geometry.get())) named->Records.Resize(2);
    if (auto* group = dynamic_cast<Kind13Geometry*>(entity.Geometry.get()))
        Fill(group->Entities.Append(2), number + 1);
}

void FillEntities(TypedRecordList<EntityRecord>& list, std::int64_t count) {
    constexpr std::int16_t kKinds[] = {2, 2, 4, 1, 3, 7, 2, 14, 35, 23, 13};
    for (std::int64_t i = 0; i < count; ++i)
        Fill(list.Append(kKinds[static_cast<std::size_t>(i) % std::size(kKinds)]), i);
}

std::unique_ptr<NewestDrawing> MakeDrawing(std::int64_t records) {
    auto drawing = std::make_unique<NewestDrawing>();
    for (std::int64_t i = 0; i < records / 10; ++i) {
        AreaRecord& area = drawing->Areas.Append();
        area.AreaCode.text = "GLA" + std::to_string(i % 10);
        area.Label.text = "First floor";
        area.Measure1 = 1.5;
        area.Description.text = "A description longer than a string holds in place";
        for (std::uint32_t member = 0; member < 4; ++member) area.MemberIndices.Append() = member;
    }
    const std::int64_t inDrawing = std::min(records * 3 / 10, kMostInDrawing);
    const std::int64_t groups = records / 100;
    FillEntities(drawing->Entities, inDrawing);
    for (std::int64_t i = 0; i < groups; ++i) {
        StyleAttributeRecord& style = drawing->Styles.Append();
        style.GroupName.Put("Group " + std::to_string(i));
        FillEntities(style.Members, (records - inDrawing) / groups);
    }
    return drawing;
}

struct PlainArea {
    std::string code, label, description, style;
    char block[50];
    std::list<std::uint32_t> members;
    char tail[18];
};

struct PlainEntity {
    std::int32_t kind;
    char block[58];
    char primaryStyle[32];
    char secondaryStyle[32];
    std::string geometry;
    std::list<PlainEntity> members;
    std::uint16_t order;
};

struct PlainStyle {
    char name[32];
    char style[36];
    char values[16];
    std::list<PlainEntity> members;
};

struct PlainDrawing {
    std::list<PlainArea> areas;
    std::list<PlainStyle> styles;
    char block[40];
    std::list<PlainEntity> entities;
};

// Copies the next bytes.
struct Parser {
    const char* at;

    void Bytes(void* to, std::size_t size) {
        std::memcpy(to, at, size);
        at += size;
    }
    template <class T>
    T Value() {
        T value;
        Bytes(&value, sizeof value);
        return value;
    }
    void Text(std::string& text) {
        const auto length = static_cast<std::size_t>(static_cast<unsigned char>(at[1]));
        text.assign(at + 2, length);
        at += 2 + length;
    }
    void Style(char* name) {
        const auto code = Value<std::uint8_t>();
        if (code == 255) return void(std::strcpy(name, "BYLAYER"));
        if (code == 254) return void(std::strcpy(name, "BYBLOCK"));
        Name(name);
    }
    void Name(char* name) {
        const auto length = Value<std::uint8_t>();
        Bytes(name, length);
        name[length] = '\0';
    }

    void Area(PlainArea& area) {
        Text(area.code);
        Text(area.label);
        Bytes(area.block, sizeof area.block);
        Text(area.description);
        Text(area.style);
        for (++at; *at != 0;) area.members.push_back(Value<std::uint32_t>() - 1);
        ++at;
        Bytes(area.tail, sizeof area.tail);
        at += 2;
    }

    std::size_t GeometrySize(std::int32_t kind) const {
        switch (kind) {
            case 1:
            case 4:
                return 40;
            case 2:
                return 32;
            case 3:
                return 24;
            case 7: {
                const auto length = static_cast<std::size_t>(static_cast<unsigned char>(at[24]));
                return 16 + 8 + 2 + length + 24 + 1;
            }
            case 13:
                return 18;
            case 14:
                return 48;
            case 23:
                return 1 + 40 + 3 + 2 * 2;
            default:
                return 64;
        }
    }

    void Entities(std::list<PlainEntity>& list) {
        ++at;
        for (auto left = Value<std::int16_t>(); left > 0; --left) {
            PlainEntity& entity = list.emplace_back();
            entity.kind = Value<std::int16_t>();
            Bytes(entity.block, sizeof entity.block);
            Style(entity.primaryStyle);
            Style(entity.secondaryStyle);
            const std::size_t size = GeometrySize(entity.kind);
            entity.geometry.assign(at, size);
            at += size;
            if (entity.kind == 13) Entities(entity.members);
            entity.order = Value<std::uint16_t>();
        }
    }

    void Group(PlainStyle& style) {
        Name(style.name);
        at += 3;
        Style(style.style);
        Bytes(style.values, sizeof style.values);
        Entities(style.members);
    }
};

std::unique_ptr<PlainDrawing> ParseDrawing(const std::string& bytes) {
    auto drawing = std::make_unique<PlainDrawing>();
    Parser parser{bytes.data() + 1};
    while (*parser.at != 0) parser.Area(drawing->areas.emplace_back());
    parser.at += 1 + 2 + 1;
    while (*parser.at != 0) parser.Group(drawing->styles.emplace_back());
    ++parser.at;
    parser.Bytes(drawing->block, sizeof drawing->block);
    parser.Entities(drawing->entities);
    if (parser.at + 3 != bytes.data() + bytes.size()) std::abort();
    return drawing;
}

const bool registered = [] {
    RegisterFile<NewestDrawing>("drawings", MakeDrawing, ParseDrawing);
    return true;
}();

}  // namespace
}  // namespace zel
