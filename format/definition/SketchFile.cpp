// The file:
//
//   order  width  field           present from version
//   1      54+    header          always
//   2      1      DefinitionType  4
//   3      4      FileFlags       5
//   4      2 + n  definitions     always, up to the newest known version

#include "SketchFile.h"

#include <utility>

#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

SketchFile& SketchFile::operator=(const SketchFile& other) {
    definitions = other.definitions;
    header = other.header;
    Record::operator=(other);
    DefinitionType = other.DefinitionType;
    return *this;
}

void SketchFile::Swap(SketchFile& other) noexcept {
    const std::int32_t version = GetVersion();
    Record::SetVersion(other.GetVersion());
    other.Record::SetVersion(version);
    std::swap(header, other.header);
    std::swap(DefinitionType, other.DefinitionType);
    std::swap(FileFlags, other.FileFlags);
    std::swap(definitions, other.definitions);
    writePath_.swap(other.writePath_);
}

void SketchFile::SetVersion(std::int32_t version) {
    Record::SetVersion(version);
    header.SetVersion(version);
    definitions.SetVersion(version);
}

std::istream& SketchFile::Read(std::istream& stream) {
    header.Read(stream);
    SetVersion(header.GetVersion());
    if (!HasDefinitions()) return stream;
    Trailer(Reader(stream, GetVersion()));
    return definitions.Read(stream);
}

std::ostream& SketchFile::Write(std::ostream& stream) {
    header.Write(stream);
    if (!HasDefinitions()) return stream;
    Trailer(Writer(stream, GetVersion()));
    Writer writer(stream);
    auto path = std::move(writePath_);
    WalkNested(writer, definitions, path);
    return stream;
}

}  // namespace zel
