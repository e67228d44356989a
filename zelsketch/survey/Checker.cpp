#include "Checker.h"

#include <algorithm>

#include "FileWalk.h"
#include "Surveyor.h"
#include "FieldText.h"
#include "zel/text/Text.h"
#include "zel/text/Versions.h"

namespace zel {
namespace {

constexpr std::size_t kMostFindings = 100;
constexpr std::string_view kSignature = "\7TRN4WIN";

std::string Characters(std::size_t count) { return Counted(count, "character"); }

std::string FaultOfShort(const Field& field) {
    std::string fault;
    if (field.Byte(0) != 6) fault = "the tag is " + std::to_string(field.Byte(0)) + ", not 6";
    const std::size_t nul = field.Text().find('\0');
    if (nul == std::string_view::npos) return fault;
    return fault + (fault.empty() ? "" : "; ") + "a NUL ends the text after " + Characters(nul) +
           ", the count is " + std::to_string(field.Byte(1));
}

std::string FaultOfCounted(const Field& field) {
    const std::size_t count = field.Byte(0), length = field.Text().size();
    const std::string says = "the count is " + std::to_string(count);
    if (count > field.MaxLength()) return says + ", at most " + Characters(field.MaxLength()) + " fit";
    if (length < count) return "a NUL ends the text after " + Characters(length) + ", " + says;
    return "";
}

// Whether old characters follow the text directly, as writers that go by the count alone leave them. Readers
// put a NUL there: behind the text, or for an empty one in the field's last byte.
bool HasRemains(const Field& field) {
    if (field.kind != FieldKind::kCounted) return false;
    const std::size_t count = field.Byte(0);
    return field.Byte(count == 0 ? field.bytes.size() - 1 : count + 1) != 0;
}

bool IsDamage(const Finding& finding) { return finding.gravity == Finding::kDamage; }

std::size_t CountDamage(const Findings& findings) {
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), IsDamage));
}

void Sort(Findings& findings) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.offset < b.offset; });
}

std::string FaultOfText(const Field& field) {
    if (field.kind == FieldKind::kShort) return FaultOfShort(field);
    if (field.kind == FieldKind::kCounted) return FaultOfCounted(field);
    return field.Text().size() > field.MaxLength() ? "no NUL ends the text" : "";
}

}  // namespace

bool IsDamaged(const Findings& findings) { return CountDamage(findings) != 0; }

std::string DamageOf(const Findings& findings) {
    const std::size_t count = CountDamage(findings);
    if (count == 0) return "";
    const Finding& first = *std::find_if(findings.begin(), findings.end(), IsDamage);
    return "damaged at " + HexNumber(first.offset, 4) + ": " + first.what +
           (count > 1 ? ", and " + Counted(count - 1, "further finding") : "");
}

Findings Checker::Check(std::string_view file) {
    bool followsStoredFlags = false;
    Findings findings = CheckBySections(file, followsStoredFlags);
    // No reader asks for the signature, but it tells what to make of the rest.
    if (file.substr(0, kSignature.size()) != kSignature.substr(0, file.size()))
        findings.insert(findings.begin(),
                        {0, "Header.Signature: not \"TRN4WIN\", perhaps no area definition file"});
    return findings;
}

bool Checker::FollowsStoredFlags(std::string_view file) {
    bool followsStoredFlags = false;
    CheckBySections(file, followsStoredFlags);
    return followsStoredFlags;
}

Findings Checker::CheckBySections(std::string_view file, bool& followsStoredFlags) {
    Findings findings = CheckAs(file, false);
    const FlagsOfFile flags(file);
    if (flags.stored == flags.asRead) return findings;
    // The sections may be there all the same; the file tells by making sense without them.
    Findings asWritten = CheckAs(file, true);
    if (CountDamage(asWritten) >= CountDamage(findings)) return findings;
    followsStoredFlags = true;
    asWritten.push_back({offsetof(HeaderImage, Flags),
                         "Header.Flags: Type and FileVersion make a reader look for the sections of " +
                             HexNumber(flags.asRead, 4) + ", but the writer wrote those of " +
                             HexNumber(flags.stored, 4)});
    Sort(asWritten);
    return asWritten;
}

Findings Checker::CheckAs(std::string_view file, bool asWritten) {
    Checker checker(file);
    Surveyor::Survey(file, checker, asWritten);
    checker.AddRemains();
    return std::move(checker.findings_);
}

void Checker::OnField(const Field& field) {
    if (isCut_ || isOutOfStep_) return;
    if (field.kind == FieldKind::kListEnd) isJudged_ = true;
    if (field.Missing()) return CheckMissing(field);
    switch (field.kind) {
        case FieldKind::kShort:
            codes_.push_back(field.offset);
            [[fallthrough]];
        case FieldKind::kCounted:
        case FieldKind::kFixed:
            return CheckText(field);
        case FieldKind::kMarkedList:
            if (field.Byte(0) != 1)
                Add(field, "the opening byte is " + std::to_string(field.Byte(0)) + ", not 1");
            return;
        case FieldKind::kLeftOver:
            return Add(field, Counted(field.bytes.size(), "byte") + " behind the file's end");
        default:
            if (field.name == "FileVersion") CheckVersion(field);
    }
}

void Checker::OnRecord(const Place&) {
    codes_.clear();
    isJudged_ = false;
}

void Checker::CheckMissing(const Field& field) {
    if (field.kind == FieldKind::kListEnd) {
        const std::size_t depth = field.place->size();
        const std::string around = depth ? ", nor the " + std::to_string(depth) + " around it" : "";
        Add(field, "the list is not closed" + around);
    } else if (field.present) {
        Add(field, "cut short, the file ends after " + std::to_string(field.present) + " of " +
                       std::to_string(field.bytes.size()) + " bytes");
    } else {
        Add(field, "cut short, the file ends in front of it");
    }
    isCut_ = true;
}

void Checker::CheckText(const Field& field) {
    if (const std::string fault = FaultOfText(field); !fault.empty()) return Add(field, fault);
    if (!HasRemains(field) || remainsCount_++ != 0) return;
    remains_ = {
        field.offset,
        field.FullName() + ": the count is " + std::to_string(field.Byte(0)) + ", old characters follow",
        Finding::kNote};
}

void Checker::CheckVersion(const Field& field) {
    version_ = static_cast<std::int32_t>(field.Integer());
    const std::string version = "version " + std::to_string(version_);
    if (version_ > SketchFile::kNewestVersion)
        Add(field, version + " is unknown: readers load " + LoadedVersions() + " and stop behind the header");
    if (version_ < SketchFile::kOldestSavedVersion)
        findings_.push_back({field.offset,
                             field.FullName() + ": " + version + " can be loaded, but not saved: only " +
                                 SavedVersions() + " can",
                             Finding::kNote});
}

void Checker::Add(const Field& field, const std::string& what) {
    if (findings_.size() > kMostFindings) return;
    if (!isJudged_ && FindLongCode(*field.place)) return;
    if (findings_.size() == kMostFindings)
        return findings_.push_back({field.offset, "further findings are not listed"});
    findings_.push_back({field.offset, field.FullName() + ": " + what});
}

// Old characters are in most files, and in most of their texts: one note for all.
void Checker::AddRemains() {
    if (remainsCount_ == 0) return;
    if (remainsCount_ > 1) remains_.what += "; so in " + Counted(remainsCount_ - 1, "further text");
    findings_.push_back(remains_);
    Sort(findings_);
}

// Looks through the codes of the definition at hand, once, at its first finding.
bool Checker::FindLongCode(const Place& place) {
    isJudged_ = true;
    if (codes_.empty() || Surveyor::LooksLikeDefinition(file_.substr(codes_[0]), version_)) return false;
    for (std::size_t i = 0; i < codes_.size() && !isOutOfStep_; ++i) {
        const std::size_t length = LengthOfLongCode(codes_[i]);
        if (!length) continue;
        isOutOfStep_ = true;
        const auto count = static_cast<unsigned char>(file_[codes_[i] + 1]);
        findings_.push_back({codes_[i], PlaceText(place) + (i == 0 ? ".AreaCode" : ".SubtractAreaCode") +
                                            ": the code has " + std::to_string(length) +
                                            " characters, but its count byte is " + std::to_string(count) +
                                            "; readers are out of step from here on"});
    }
    return isOutOfStep_;
}

// A writer gives the low 8 bits of the length, then all characters: the code is too long by a multiple of 256
// if the definition makes sense without that many. 0 where none does.
std::size_t Checker::LengthOfLongCode(std::size_t code) {
    constexpr std::size_t kStep = 256, kMostSteps = 256, kEnoughToJudge = 1024;
    constexpr int kMostTrials = 10000;
    const auto count = static_cast<unsigned char>(file_[code + 1]);
    const std::string_view behind = file_.substr(std::min(code + 2 + count, file_.size()));
    const std::size_t text = UpToNul(behind.substr(0, kStep * kMostSteps)).size();
    for (std::size_t excess = kStep; excess <= text && trials_ < kMostTrials; excess += kStep, ++trials_) {
        const std::string mended = std::string(file_.substr(codes_[0], code - codes_[0])) +
                                   std::string("\6\0", 2) +
                                   std::string(behind.substr(excess, kEnoughToJudge));
        if (Surveyor::LooksLikeDefinition(mended, version_)) return count + excess;
    }
    return 0;
}

}  // namespace zel
