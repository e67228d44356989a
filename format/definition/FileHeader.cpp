// The header in the file:
//
//   order  width  field                                  present with
//   1      54     Signature .. LastModifiedBy            always
//   2      11     ProgramVersionSignature                Flags 0x10
//   3      42     CreatedByVersion, ModifiedByVersion    Flags 0x100

#include "FileHeader.h"

#include "CalendarDate.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {
namespace {

constexpr std::int64_t kTicksPerDay = 864000000000;
constexpr std::int64_t kTicksPerSecond = 10000000;
constexpr std::int64_t kDayOf1601 = 366;

}  // namespace

FileHeader::FileHeader() : image{} {
    image.Signature.Put("TRN4WIN");
    image.TarnVersion = 64;
    image.Flags = kProgramVersionFlag | kWriterVersionsFlag;
}

FileHeader::FileHeader(const FileHeader& other) : Record(other), image(other.image) {
    FileHeader::Normalize();
}

FileHeader& FileHeader::operator=(const FileHeader& other) {
    Record::operator=(other);
    image = other.image;
    Normalize();
    return *this;
}

void FileHeader::SetVersion(std::int32_t version) {
    Record::SetVersion(version);
    image.FileVersion = static_cast<std::uint8_t>(version);
}

std::istream& FileHeader::Read(std::istream& stream) {
    Reader reader(stream);
    reader.Bytes(&image, kMandatorySize);
    UpgradeVersion();
    SetVersion(image.FileVersion);
    AddImpliedFlags();
    OptionalSections(reader);
    Normalize();
    return stream;
}

std::ostream& FileHeader::Write(std::ostream& stream) {
    Normalize();
    Writer writer(stream);
    writer.Bytes(&image, kMandatorySize);
    OptionalSections(writer);
    return stream;
}

void FileHeader::Normalize() {
    image.Signature.Normalize();
    image.ProgramVersionSignature.Normalize();
    image.CreatedByVersion.Normalize();
    image.ModifiedByVersion.Normalize();
}

// Version 1 files last modified after January 1997 count as version 2. The date that is looked at has always
// been day 0 and second 0 instead of the file's own, which no calendar of the platform knows: the test never
// holds, and existing files rely on that.
void FileHeader::UpgradeVersion() {
    if (image.FileVersion != 1) return;
    const CalendarDate date = CalendarDateOf(DateTimeToFileTime(0, 0));
    if (date.year >= 1997 && (date.month > 1 || date.day > 31)) image.FileVersion = 2;
}

void FileHeader::AddImpliedFlags() {
    std::uint32_t implied = 0;
    if (image.Type == 5 && image.FileVersion >= 5) implied = kProgramVersionFlag | kWriterVersionsFlag;
    if (image.Type == 1 && image.FileVersion >= 21) implied = kProgramVersionFlag;
    if (image.Type == 1 && image.FileVersion >= 22) implied |= kWriterVersionsFlag;
    image.Flags = image.Flags | implied;
}

std::int64_t FileHeader::DateTimeToFileTime(std::int32_t day, std::int32_t seconds) {
    const auto days = static_cast<std::uint64_t>(std::int64_t{day} - kDayOf1601);
    const auto ticks = static_cast<std::uint64_t>(std::int64_t{seconds} * kTicksPerSecond);
    return static_cast<std::int64_t>(days * static_cast<std::uint64_t>(kTicksPerDay) + ticks);
}

FileHeader::DateTime FileHeader::FileTimeToDateTime(std::int64_t ticks) {
    std::int64_t days = ticks / kTicksPerDay;
    std::int64_t ticksOfDay = ticks % kTicksPerDay;
    if (ticksOfDay < 0) {
        --days;
        ticksOfDay += kTicksPerDay;
    }
    return {static_cast<std::int32_t>(days + kDayOf1601),
            static_cast<std::int32_t>(static_cast<double>(ticksOfDay) * 0.0000001)};
}

}  // namespace zel
