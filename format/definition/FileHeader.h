#pragma once

#include <cstddef>
#include <cstdint>

#include "zel/record/CountedText.h"
#include "zel/record/LittleEndian.h"
#include "zel/record/Record.h"

namespace zel {

// The header as it stands in the file: 54 bytes that are always there, then two optional sections by Flags.
struct HeaderImage {
    CountedText<11> Signature;
    std::uint8_t TarnVersion;
    LittleEndian<std::uint32_t> Flags;
    std::uint8_t Type;
    std::uint8_t FileVersion;
    LittleEndian<std::int32_t> CreationDate;  // day number, day 0 is 1 January 1600
    LittleEndian<std::int32_t> CreationTime;  // seconds since midnight
    FixedText<10> CreatedBy;
    LittleEndian<std::int32_t> ModifiedDate;
    LittleEndian<std::int32_t> ModifiedTime;
    FixedText<10> LastModifiedBy;
    CountedText<11> ProgramVersionSignature;  // in the file with kProgramVersionFlag
    CountedText<21> CreatedByVersion;         // both in the file with kWriterVersionsFlag
    CountedText<21> ModifiedByVersion;

    // The fields of the 54 bytes one by one, for an archive that does not take them whole.
    template <class Archive>
    void EachMandatoryField(Archive& archive);
};
static_assert(sizeof(HeaderImage) == 107 && alignof(HeaderImage) == 1);
static_assert(offsetof(HeaderImage, FileVersion) == 17 && offsetof(HeaderImage, LastModifiedBy) == 44);
static_assert(offsetof(HeaderImage, ProgramVersionSignature) == 54 &&
              offsetof(HeaderImage, CreatedByVersion) == 65);

// The first record of every file: its kind, the version of everything that follows, who wrote it and when.
// A new one has version 0, Signature "TRN4WIN", TarnVersion 64, both section flags, and zeros.
class FileHeader : public Record {
public:
    static constexpr std::uint32_t kProgramVersionFlag = 0x10;
    static constexpr std::uint32_t kWriterVersionsFlag = 0x100;
    static constexpr std::size_t kMandatorySize = offsetof(HeaderImage, ProgramVersionSignature);

    FileHeader();
    FileHeader(const FileHeader& other);
    // Copies the version and the image, then normalizes.
    FileHeader& operator=(const FileHeader& other);

    // Also stores the low byte of the version in image.FileVersion.
    void SetVersion(std::int32_t version) override;
    // Takes the version from the file, and adds the section flags that some kinds of file imply.
    std::istream& Read(std::istream& stream) override;
    // Writes the sections that Flags name; unlike Read it adds none.
    std::ostream& Write(std::ostream& stream) override;
    // Puts a NUL into each CountedText.
    virtual void Normalize();

    // Ticks of 100 ns since 1 January 1601 of a day number and seconds, modulo 2^64.
    static std::int64_t DateTimeToFileTime(std::int32_t day, std::int32_t seconds);
    struct DateTime {
        std::int32_t day;
        std::int32_t seconds;
    };
    // The inverse. Nothing here calls it: it is for host programs that set the dates of a header.
    static DateTime FileTimeToDateTime(std::int64_t ticks);

    // The sections that Flags name, in the direction of the archive.
    template <class Archive>
    void OptionalSections(Archive& archive);

    HeaderImage image;

private:
    void UpgradeVersion();
    void AddImpliedFlags();
};

template <class Archive>
void HeaderImage::EachMandatoryField(Archive& archive) {
    archive.Field(Signature, "Signature");
    archive.Field(TarnVersion, "TarnVersion");
    archive.Field(Flags, "Flags");
    archive.Field(Type, "Type");
    archive.Field(FileVersion, "FileVersion");
    archive.Field(CreationDate, "CreationDate");
    archive.Field(CreationTime, "CreationTime");
    archive.Field(CreatedBy, "CreatedBy");
    archive.Field(ModifiedDate, "ModifiedDate");
    archive.Field(ModifiedTime, "ModifiedTime");
    archive.Field(LastModifiedBy, "LastModifiedBy");
}

template <class Archive>
void FileHeader::OptionalSections(Archive& archive) {
    if (image.Flags & kProgramVersionFlag)
        archive.Field(image.ProgramVersionSignature, "ProgramVersionSignature");
    if (!(image.Flags & kWriterVersionsFlag)) return;
    archive.Field(image.CreatedByVersion, "CreatedByVersion");
    archive.Field(image.ModifiedByVersion, "ModifiedByVersion");
}

}  // namespace zel
