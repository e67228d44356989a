#include "Converter.h"

#include <set>
#include <sstream>

#include "zel/definition/SketchFile.h"
#include "zel/survey/FieldText.h"
#include "zel/survey/FileWalk.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

using Names = std::set<std::string, std::less<>>;

std::string BytesOf(SketchFile& file) {
    std::ostringstream stream;
    stream.exceptions(std::ios_base::badbit);  // exhausted memory must not cut a file
    file.Write(stream);
    return stream.str();
}

struct NameCollector : FieldVisitor {
    void OnField(const Field& field) override { names.emplace(field.name); }
    Names names;
};

// The names of all fields that a version has, taken from a file of it.
Names NamesOf(std::int32_t version) {
    SketchFile file;
    file.definitions.Append();
    file.SetVersion(version);
    NameCollector collector;
    Surveyor::Survey(BytesOf(file), collector);
    return std::move(collector.names);
}

// Lists the values of a file that a version has no field for.
class LossLister : public FieldVisitor {
public:
    LossLister(std::int32_t version, std::vector<std::string>& losses)
        : names_(NamesOf(version)), losses_(losses) {}

    void OnField(const Field& field) override {
        if (field.kind == FieldKind::kLeftOver || names_.count(field.name) != 0) return;
        const bool isEmpty = field.kind == FieldKind::kShort ? field.Text().empty() : field.Bits() == 0;
        if (!isEmpty) losses_.push_back(field.FullName() + " = " + ValueText(field));
    }

private:
    const Names names_;
    std::vector<std::string>& losses_;
};

// The new version may make readers look for sections: they get them.
void ImplyFlags(HeaderImage& image, std::uint32_t old, std::vector<std::string>& changed) {
    const std::uint32_t asRead = AsRead(image).image.Flags;
    image.Flags = asRead;
    if (asRead == old) return;
    changed.push_back("Header.Flags: " + HexNumber(old, 4) + " to " + HexNumber(asRead, 4) +
                      ", the sections that readers of this version expect in files of Type " +
                      std::to_string(image.Type));
}

}  // namespace

Conversion Converter::Convert(const std::string& file, std::int32_t version) {
    Conversion conversion;
    SketchFile content;
    std::istringstream stream(file);
    content.Read(stream);
    const FlagsOfFile flags(file);
    constexpr std::size_t kFlags = offsetof(HeaderImage, Flags);
    conversion.dropsBytes =
        BytesOf(content).replace(kFlags, sizeof flags.stored, file, kFlags, sizeof flags.stored) != file;
    LossLister losses(version, conversion.lost);
    Surveyor::Survey(file, losses);
    content.SetVersion(version);
    ImplyFlags(content.header.image, flags.stored, conversion.changed);
    conversion.file = BytesOf(content);
    return conversion;
}

}  // namespace zel
