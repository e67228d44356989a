#include "ConvertCommand.h"

#include <set>
#include <sstream>

#include "zel/survey/Field.h"
#include "zel/survey/FileWalk.h"
#include "zel/files/Files.h"
#include "zel/definition/SketchFile.h"
#include "zel/survey/Surveyor.h"
#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"
#include "zel/text/Versions.h"

namespace zel {
namespace {

std::string BytesOf(SketchFile& file) {
    std::ostringstream stream;
    file.Write(stream);
    return stream.str();
}

struct NameCollector : FieldVisitor {
    void OnField(const Field& field) override { names.emplace(field.name); }
    std::set<std::string, std::less<>> names;
};

// The names of all fields that a version has, taken from a file of it.
std::set<std::string, std::less<>> NamesOf(std::int32_t version) {
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
    LossLister(std::int32_t version, std::ostream& out) : out_(out), names_(NamesOf(version)) {}

    void OnField(const Field& field) override {
        if (field.kind == FieldKind::kLeftOver || names_.count(field.name) != 0) return;
        const bool isEmpty = field.kind == FieldKind::kShort ? field.Text().empty() : field.Bits() == 0;
        if (isEmpty) return;
        ++losses_;
        out_ << "lost: " << field.FullName() << " = " << ValueText(field) << '\n';
    }

    std::size_t losses() const { return losses_; }

private:
    std::ostream& out_;
    std::set<std::string, std::less<>> names_;
    std::size_t losses_ = 0;
};

struct MissingCounter : FieldVisitor {
    void OnField(const Field& field) override { missing += field.Missing(); }
    std::size_t missing = 0;
};

}  // namespace

ExitStatus ConvertCommand::Run(const Console& console) const {
    ExpectWritable(out, Overwrite::kRefuse);
    const std::string bytes = ReadFile(file);
    MissingCounter counter;
    Surveyor::Survey(bytes, counter);
    if (counter.missing) throw Failure(kDamaged, file + " is cut short; 'zelsketch check' says where");

    SketchFile content;
    std::istringstream stream(bytes);
    content.Read(stream);
    if (!content.HasDefinitions())
        throw Failure(kDamaged, file + " has version " + std::to_string(content.GetVersion()) +
                                    ", which cannot be converted: only " + LoadedVersions() + " can");
    if (BytesOf(content) != bytes)
        console.error << "zelsketch: " << file << ": bytes that readers do not see are not carried over\n";

    LossLister losses(version, console.out);
    Surveyor::Survey(bytes, losses);
    content.SetVersion(version);
    // The new version may make readers look for sections: they get them.
    content.header.image.Flags = AsRead(content.header.image).image.Flags;
    WriteFile(out, BytesOf(content), Overwrite::kRefuse);
    console.out << out << ": version " << version << ", " << Counted(losses.losses(), "value") << " lost\n";
    return kSound;
}

}  // namespace zel
