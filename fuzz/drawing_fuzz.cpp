// A drawing of any bytes at any version: what was read once is written and read again without a difference,
// but for what the format itself cannot say.

#include "zel/drawing/DrawingRecord.h"
#include "zel/drawing/Kind13Geometry.h"
#include "zel/drawing/Kind23Geometry.h"
#include "zel/drawing/Kind7Geometry.h"
#include "RoundTrip.h"

using zel::Check;
using zel::DrawingRecord;
using zel::EntityRecord;
using zel::TypedRecordList;

namespace {

constexpr int kVersions = 27;

void AddEntities(TypedRecordList<EntityRecord>& list, int version, bool nested) {
    for (const std::int16_t kind : {0, 1, 2, 3, 4, 7, 13, 14, 23, 35}) {
        EntityRecord& entity = list.Append(kind);
        entity.PrimaryStyle.Put("BYLAYER");
        entity.SecondaryStyle.Put("Dashed");
        entity.OrderIndex = 3;
        entity.Geometry = zel::EntityGeometry::Make(kind);
        if (entity.Geometry) entity.Geometry->SetVersion(version);
        if (auto* text = dynamic_cast<zel::Kind7Geometry*>(entity.Geometry.get())) text->Text.text = "Room";
        if (auto* named = dynamic_cast<zel::Kind23Geometry*>(entity.Geometry.get())) named->Records.Resize(2);
        if (auto* group = dynamic_cast<zel::Kind13Geometry*>(entity.Geometry.get()); group && nested)
            AddEntities(group->Entities, version, false);
    }
}

void AddStyle(zel::StyleAttributeRecord& style, int version) {
    style.GroupName.Put("Group");
    style.GroupStyle.Put("S1");
    style.Members.Append(5).SetVersion(version);
}

// Whether the bytes were enough. Where they were not, one in ten is read to the end of what its counts
// announce: that takes its time.
bool ReadAll(DrawingRecord& drawing, const std::string& bytes, bool further) {
    std::istringstream stream(bytes);
    if (!further) stream.exceptions(std::ios_base::failbit);
    try {
        drawing.Read(stream);
    } catch (const std::ios_base::failure&) {
        return false;
    }
    return true;
}

// Takes out what a first byte of zero would end a list at: records of the marker-framed lists and member
// indices. What a list can hold afterwards reads back.
void DropWhatEndsLists(DrawingRecord& drawing, int version) {
    drawing.Areas.Elements().remove_if([version](zel::AreaRecord& area) {
        if (version >= 24)
            area.MemberIndices.Elements().remove_if(
                [](std::uint32_t value) { return (value + 1) % 256 == 0; });
        return version <= 7 && zel::Image(area)[0] == 0;
    });
    drawing.Auxiliaries.Elements().remove_if(
        [version](const zel::AuxiliaryRecord& record) { return version >= 9 && record.AuxMode == 0; });
    drawing.Styles.Elements().remove_if(
        [](const zel::StyleAttributeRecord& style) { return style.GroupName.Text().empty(); });
}

// All that a drawing holds: the newest version has every field. The drawing is a copy, because writing lowers
// the order numbers of old versions.
std::string NewestImage(DrawingRecord drawing) {
    drawing.SetVersion(kVersions - 1);
    return zel::Image(drawing);
}

}  // namespace

// The seeds: a drawing of each version with every kind of entity, behind a byte with the version.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const char* folder = zel::SeedFolder();
    for (int version = 0; folder && version < kVersions; ++version) {
        DrawingRecord drawing;
        drawing.SetVersion(version);
        zel::AreaRecord& area = drawing.Areas.Append();
        area.AreaCode.text = "SITE";
        for (const std::uint32_t member : {0, 4}) area.MemberIndices.Append() = member;
        zel::AuxiliaryRecord& auxiliary = drawing.Auxiliaries.Append();
        auxiliary.AuxMode = 2;
        auxiliary.AuxName.text = "Name";
        AddStyle(drawing.Styles.Append(), version);
        AddEntities(drawing.Entities, version, true);
        AddStyle(drawing.TypedStyles.Append(9), version);
        zel::WriteSeed(folder, std::to_string(version), static_cast<char>(version) + zel::Image(drawing));
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const int version = data[0] % kVersions;
    DrawingRecord first;
    first.SetVersion(version);
    const bool further = data[0] / kVersions == 9;
    if (!ReadAll(first, {reinterpret_cast<const char*>(data) + 1, size - 1}, further)) {
        zel::Image(first);
        return 0;
    }
    DropWhatEndsLists(first, version);
    const std::string found = NewestImage(first);
    const std::string second = zel::Image(first);

    DrawingRecord reread;
    reread.SetVersion(version);
    const zel::Load again = zel::ReadImage(reread, second);
    Check(again.complete && again.consumed == second.size(), "what was written reads back whole");
    Check(NewestImage(reread) == found, "the second read finds what the first found");
    Check(zel::Image(reread) == second, "the third image is the second");
    reread.SetVersion((version + 1 + data[0] / kVersions) % kVersions);
    zel::Image(reread);
    return 0;
}
