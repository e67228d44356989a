#include "Converter.h"

#include <algorithm>
#include <sstream>

#include "FieldNames.h"
#include "zel/definition/SketchFile.h"
#include "zel/survey/FieldText.h"
#include "zel/survey/FileWalk.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

std::string BytesOf(SketchFile& file) {
    std::ostringstream stream;
    stream.exceptions(std::ios_base::badbit);  // exhausted memory must not cut a file
    file.Write(stream);
    return stream.str();
}

// Lists the values of a file that a version has no field for.
class LossLister : public FieldVisitor {
public:
    LossLister(std::int32_t version, std::vector<std::string>& losses) : losses_(losses) {
        const FieldNames kept = FieldNames::Of(version), all = FieldNames::Of(SketchFile::kNewestVersion);
        for (const auto* names : {&all.file, &all.definition})
            for (const std::string& name : *names)
                if (!kept.Has(name)) lacking_.push_back(name);
    }

    void OnField(const Field& field) override {
        if (std::find(lacking_.begin(), lacking_.end(), field.name) == lacking_.end()) return;
        const bool isEmpty = field.kind == FieldKind::kShort ? field.Text().empty() : field.Bits() == 0;
        if (!isEmpty) losses_.push_back(field.FullName() + " = " + ValueText(field));
    }

private:
    std::vector<std::string> lacking_;
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
