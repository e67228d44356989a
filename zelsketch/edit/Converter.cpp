#include "Converter.h"

#include <algorithm>
#include <cstring>

#include "zel/survey/FieldNames.h"
#include "MemoryBuffers.h"
#include "zel/definition/SketchFile.h"
#include "zel/list/Nested.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"
#include "zel/survey/FieldText.h"
#include "zel/survey/FileWalk.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

// A definition on its way from one version to another, and the list that it stands in: one at a time is held.
class Carrier {
public:
    class Cursor;
    static constexpr char kNestedName[] = "Members";

    Carrier(std::istream& in, std::int32_t from, std::ostream& out, std::int32_t to)
        : reader_(in), from_(from), writer_(out), to_(to) {}

    void Head(Carrier&) {
        record_.DefinitionFields::operator=({});
        record_.Record::SetVersion(from_);
        record_.Head(reader_);
        record_.Record::SetVersion(to_);
        record_.Head(writer_);
    }
    void Tail(Carrier&) {}
    Carrier* Nested() { return this; }

private:
    Reader reader_;
    const std::int32_t from_;
    Writer writer_;
    const std::int32_t to_;
    DefinitionRecord record_;
};

class Carrier::Cursor {
public:
    Cursor(Carrier& carrier, Carrier&, const char*) : carrier_(carrier) {
        carrier_.reader_.Value<std::uint8_t>();
        carrier_.writer_.Value(std::uint8_t{1});
    }
    Carrier* Next() {
        if (carrier_.reader_.AtElement()) return &carrier_;
        carrier_.writer_.Value(std::uint8_t{0});
        return nullptr;
    }
    Carrier* Current() { return &carrier_; }

private:
    Carrier& carrier_;
};

// One pass over a file: what stands in front of the definitions is held, they are carried over.
class Passage {
public:
    explicit Passage(std::string_view file) : buffer_(file), stream_(&buffer_) {
        head_.header.Read(stream_);
        from_ = head_.header.GetVersion();
        head_.SetVersion(from_);
        head_.Trailer(Reader(stream_, from_));
    }

    SketchFile& head() { return head_; }
    // Both throw when memory is exhausted, which must not cut a file.
    void WriteHead(std::streambuf& to) {
        std::ostream out(&to);
        out.exceptions(std::ios_base::badbit);
        head_.header.Write(out);
        head_.Trailer(Writer(out, head_.GetVersion()));
    }
    void CarryDefinitions(std::streambuf& to) {
        std::ostream out(&to);
        out.exceptions(std::ios_base::badbit);
        Carrier carrier(stream_, from_, out, head_.GetVersion());
        WalkNested<Carrier::Cursor>(carrier, carrier);
    }

private:
    ViewBuffer buffer_;
    std::istream stream_;
    std::int32_t from_;
    SketchFile head_;
};

// Whether a reader who writes the file again makes another one. Flags that he implies do not count.
bool DropsBytes(std::string_view file, std::uint32_t storedFlags) {
    Passage passage(file);
    std::string head;
    AppendBuffer headBuffer(head);
    passage.WriteHead(headBuffer);
    const LittleEndian<std::uint32_t> flags = storedFlags;
    std::memcpy(&head[offsetof(HeaderImage, Flags)], &flags, sizeof flags);
    if (file.substr(0, head.size()) != head) return true;
    CompareBuffer definitions(file.substr(head.size()));
    passage.CarryDefinitions(definitions);
    return !definitions.IsSame();
}

// Lists the values of a file that a version has no field for.
class LossLister : public FieldVisitor {
public:
    LossLister(std::int32_t version, const Converter::Report& report) : report_(report) {
        const FieldNames kept = FieldNames::Of(version), all = FieldNames::Of(SketchFile::kNewestVersion);
        for (const auto* names : {&all.file, &all.definition})
            for (const std::string& name : *names)
                if (!kept.Has(name)) lacking_.push_back(name);
    }

    void OnField(const Field& field) override {
        if (std::find(lacking_.begin(), lacking_.end(), field.name) == lacking_.end()) return;
        const bool isEmpty = field.kind == FieldKind::kShort ? field.Text().empty() : field.Bits() == 0;
        if (isEmpty) return;
        ++count_;
        report_(field.FullName() + " = " + ValueText(field));
    }
    std::size_t count() const { return count_; }

private:
    std::vector<std::string> lacking_;
    const Converter::Report& report_;
    std::size_t count_ = 0;
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

Conversion Converter::Convert(std::string_view file, std::int32_t version) {
    constexpr std::size_t kWidestHead = 128,
                          kGrowth = 32;  // three bytes more for a definition of 115 at least
    const FlagsOfFile flags(file);
    Conversion conversion;
    conversion.dropsBytes = DropsBytes(file, flags.stored);
    Passage passage(file);
    passage.head().SetVersion(version);
    ImplyFlags(passage.head().header.image, flags.stored, conversion.changed);
    conversion.file.reserve(file.size() + file.size() / kGrowth + kWidestHead);
    AppendBuffer buffer(conversion.file);
    passage.WriteHead(buffer);
    passage.CarryDefinitions(buffer);
    return conversion;
}

std::size_t Converter::ListLosses(std::string_view file, std::int32_t version, const Report& report) {
    LossLister lister(version, report);
    Surveyor::Survey(file, lister);
    return lister.count();
}

}  // namespace zel
