#include "Salvager.h"

#include <algorithm>
#include <sstream>

#include "Checker.h"
#include "FileWalk.h"
#include "zel/text/Text.h"
#include "FieldText.h"
#include "zel/record/Reader.h"
#include "zel/text/Failure.h"
#include "zel/text/Versions.h"

namespace zel {
namespace {

constexpr std::uint32_t kBeforeFirst = 0xFFFFFFFF;  // one more is 0

// What stands where a definition may start: its code, its size up to the opening of its members, and how many
// of the bytes by which a definition is known are off. What lies behind the file's end is as it should be. An
// archive for the walk over a definition's fields, which are not touched.
struct Shape {
    static constexpr bool kReads = true;

    Shape(std::string_view bytes, DefinitionRecord& any) : bytes_(bytes) {
        any.Head(*this);
        code = bytes.substr(std::min<std::size_t>(2, bytes.size()), Byte(1, 0));
        Expect(Byte(size, 1) == 1);
        ++size;
        Expect(Byte(size) == 6 || Byte(size) == 0);
    }

    void SetVersion(std::int32_t version) { version_ = version; }
    template <class T>
    void Since(std::int32_t introduced, T& field, const char* name) {
        if (version_ >= introduced) Field(field, name);
    }
    void Field(DefinitionBlock& block, const char*) { block.EachField(*this); }
    void Field(ShortString&, const char*) {
        Expect(Byte(size) == 6);
        size += 2 + Byte(size + 1, 0);
    }
    template <std::size_t n>
    void Field(CountedText<n>&, const char*) {
        Expect(Byte(size) <= CountedText<n>::kMaxLength);
        size += n;
    }
    template <class T>
    void Field(T&, const char*) {
        size += sizeof(T);
    }

    bool IsCut() const { return size > bytes_.size(); }
    bool HasPrintableCode() const {
        const auto isPrintable = [](char c) { return static_cast<unsigned char>(c) > 0x20 && c != 0x7F; };
        return !code.empty() && std::all_of(code.begin(), code.end(), isPrintable);
    }
    bool IsPlausible() const { return odd <= 1 && (!IsCut() || Byte(0) == 6); }
    // Where reading was in step, and a zero ends the list.
    bool IsPlausibleBehindZero() const { return odd == 1 && !IsCut() && HasPrintableCode(); }
    bool IsCertain() const { return odd == 0 && !IsCut() && HasPrintableCode(); }

    std::string_view code;
    std::size_t size = 0;
    int odd = 0;

private:
    std::size_t Byte(std::size_t at, std::size_t missing = 6) const {
        return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : missing;
    }
    void Expect(bool holds) { odd += holds ? 0 : 1; }

    std::string_view bytes_;
    std::int32_t version_ = 0;
};

Shape ShapeOf(std::string_view bytes, std::int32_t version) {
    DefinitionRecord any;
    any.SetVersion(version);
    return {bytes, any};
}

// A count that is no length becomes that of the text which readers see.
template <std::size_t n>
void Mend(CountedText<n>& text) {
    if (text.count != text.Text().size()) text.Put(std::string(text.Text()));
}

}  // namespace

std::size_t Salvage::Lost() const {
    std::size_t lost = 0;
    for (const Gap& gap : gaps) lost += gap.size;
    return lost;
}

std::string Salvage::Text() const {
    std::string text;
    constexpr std::size_t kMost = 3;
    for (std::size_t i = 0; i < std::min(finds.size(), kMost); ++i)
        text += (i ? ", " : "") + HexNumber(finds[i].offset, 4) + " with " + PlaceText(finds[i].place);
    return text + (finds.size() > kMost ? " and so on" : "");
}

std::vector<std::string> Salvage::Lines() const {
    std::vector<std::string> lines;
    for (const Find& find : finds)
        lines.push_back("taken up: " + PlaceText(find.place) + " from " + HexNumber(find.offset, 4));
    for (const Gap& gap : gaps)
        lines.push_back("left behind: " + Counted(gap.size, "byte") + " from " + HexNumber(gap.offset, 4));
    if (missing) lines.push_back("missing: " + Counted(missing, "byte") + " at the end");
    return lines;
}

Salvage Salvager::Take(std::string_view file) {
    Salvager salvager(file);
    salvager.TakeHeader();
    salvager.TakeDefinitions();
    if (!salvager.isDefinitionFile_)
        throw Failure(kDamaged, "no area definition file, and nothing in it looks like a definition");
    return std::move(salvager.salvage_);
}

// Everything in front of the first definition.
void Salvager::TakeHeader() {
    std::istringstream stream{std::string(file_.substr(0, 2 * sizeof(HeaderImage)))};
    SketchFile file;
    HeaderImage& image = file.header.image;
    Reader reader(stream);
    reader.Bytes(&image, FileHeader::kMandatorySize);
    const FileHeader asRead = AsRead(image);
    if (!Checker::FollowsStoredFlags(file_)) image.Flags = asRead.image.Flags;
    file.header.OptionalSections(reader);
    std::size_t size = FileHeader::kMandatorySize;
    if (image.Flags & FileHeader::kProgramVersionFlag) size += sizeof image.ProgramVersionSignature;
    if (image.Flags & FileHeader::kWriterVersionsFlag)
        size += sizeof image.CreatedByVersion + sizeof image.ModifiedByVersion;
    image.Flags = asRead.image.Flags;
    isDefinitionFile_ = image.Signature.Text() == "TRN4WIN";
    Mend(image.Signature);
    Mend(image.ProgramVersionSignature);
    Mend(image.CreatedByVersion);
    Mend(image.ModifiedByVersion);

    version_ = asRead.GetVersion();
    file.SetVersion(version_);
    if (!file.HasDefinitions())
        throw Failure(kDamaged, "version " + std::to_string(version_) + " has no definitions; only " +
                                    LoadedVersions() + " have");
    file.Trailer(Reader(stream, version_));
    size += (version_ >= 4 ? sizeof file.DefinitionType : 0) + (version_ >= 5 ? sizeof file.FileFlags : 0);
    constexpr std::size_t kOpening = 1;
    size += kOpening;
    std::ostringstream out;
    out.exceptions(std::ios_base::badbit);
    file.Write(out);
    salvage_.file = out.str();
    salvage_.file.pop_back();  // the end of the list, whose definitions follow
    salvage_.missing = size - std::min(size, file_.size());
    at_ = std::min(size, file_.size());
}

void Salvager::TakeDefinitions() {
    place_ = {{"Definitions", kBeforeFirst}};
    bool isFind = false;
    while (!place_.empty()) {
        if (at_ == file_.size()) {
            ++salvage_.missing;
            CloseList();
            continue;
        }
        const Shape shape = ShapeOf(file_.substr(at_), version_);
        const bool isZero = file_[at_] == '\0';
        if (isZero ? shape.IsPlausibleBehindZero() : shape.IsPlausible()) {
            TakeDefinition(shape.size, isFind || isZero);
            isFind = false;
        } else if (isZero && (place_.size() > 1 || at_ + 1 == file_.size())) {
            ++at_;
            CloseList();
        } else if (isZero && !FindNext(at_ + 1)) {
            AddGap(at_ + 1, file_.size());
            CloseList();
        } else {
            const std::size_t next = FindNext(at_ + 1);
            AddGap(at_, next ? next : file_.size());
            isFind = true;
        }
    }
}

// As a reader takes it, which completes what the file's end has cut.
void Salvager::TakeDefinition(std::size_t size, bool isFind) {
    ++place_.back().index;
    isDefinitionFile_ = true;
    if (isFind) salvage_.finds.push_back({place_, at_});
    const std::string_view there = file_.substr(at_, size);
    salvage_.missing += size - there.size();
    at_ += there.size();
    std::istringstream in{std::string(there)};
    std::ostringstream out;
    out.exceptions(std::ios_base::badbit);
    DefinitionRecord record;
    record.SetVersion(version_);
    record.Read(in);
    Mend(record.block.AreaName);
    Mend(record.block.AreaDescription);
    Mend(record.block.SegmentStyle);
    record.Write(out);
    salvage_.file += out.str();
    salvage_.file.pop_back();  // the end of its members, which follow
    place_.push_back({DefinitionRecord::kNestedName, kBeforeFirst});
}

void Salvager::CloseList() {
    salvage_.file += '\0';
    place_.pop_back();
}

// Where the next definition starts for certain; 0 where none does.
std::size_t Salvager::FindNext(std::size_t from) const {
    for (std::size_t at = from; (at = file_.find('\6', at)) != file_.npos; ++at)
        if (ShapeOf(file_.substr(at), version_).IsCertain()) return at;
    return 0;
}

void Salvager::AddGap(std::size_t from, std::size_t to) {
    salvage_.gaps.push_back({from, to - from});
    at_ = to;
}

}  // namespace zel
