// A file at its limits: streams that end, throw or fill up anywhere, no memory, little stack.

#include <memory>
#include <stdexcept>

#include "zel/definition/DefinitionRecord.h"
#include "HexDump.h"
#include "ScarceMemory.h"
#include "zel/definition/SketchFile.h"
#include "SmallStack.h"

namespace zel {
namespace {

// A file with every field in use: two definitions, the first with two members, one of which has an empty one.
SketchFile SampleFile(std::int32_t version) {
    SketchFile file;
    file.SetVersion(version);
    file.DefinitionType = 2;
    file.FileFlags = 0x01020304;
    DefinitionRecord& first = file.definitions.Append();
    first.AreaCode.text = "GLA1";
    first.block.DimensionType = 3;
    first.Hidden = 1;
    first.SubtractAreaCode.text = "GAR, longer than a string holds in place";
    for (DefinitionList* list : {&file.definitions, &first.Members, &first.Members})
        list->Append().CopyFields(first);
    first.Members.Elements().front().Members.Append();
    return file;
}

// Holds so many bytes, read in pieces or, like written, one at a time without a buffer (piece 0). At their
// end it stops or throws.
class PieceBuffer : public std::streambuf {
public:
    PieceBuffer(std::string bytes, std::size_t piece, bool throws)
        : bytes_(std::move(bytes)), piece_(piece), throws_(throws) {}

    const std::string& Bytes() const { return bytes_; }
    std::size_t Position() const { return next_ - static_cast<std::size_t>(egptr() - gptr()); }

protected:
    int_type underflow() override {
        if (next_ == bytes_.size()) return End();
        char* begin = bytes_.data() + next_;
        const std::size_t size = std::min(piece_, bytes_.size() - next_);
        if (size > 0) setg(begin, begin, begin + size);
        next_ += size;
        return traits_type::to_int_type(*begin);
    }
    int_type uflow() override {
        if (piece_ > 0) return std::streambuf::uflow();
        return next_ == bytes_.size() ? End() : traits_type::to_int_type(bytes_[next_++]);
    }
    int_type overflow(int_type c) override {
        if (next_ == bytes_.size()) return End();
        bytes_[next_++] = traits_type::to_char_type(c);
        return c;
    }

private:
    int_type End() const { return throws_ ? throw std::runtime_error("end") : traits_type::eof(); }

    std::string bytes_;
    std::size_t piece_;
    bool throws_;
    std::size_t next_ = 0;
};

// An archive that reads field by field and tests nothing; a list's next byte is read and given back.
struct PlainReader {
    static constexpr bool kReads = true;
    std::istream& stream;
    std::int32_t version = 0;

    void File(SketchFile& file) {
        HeaderImage& image = file.header.image;
        Bytes(&image, 54);
        file.header.SetVersion(image.FileVersion);
        if (image.Flags & 0x10) Bytes(&image.ProgramVersionSignature, 11);
        if (image.Flags & 0x100) Bytes(&image.CreatedByVersion, 21);
        if (image.Flags & 0x100) Bytes(&image.ModifiedByVersion, 21);
        file.header.Normalize();
        file.SetVersion(file.header.GetVersion());
        SetVersion(file.GetVersion());
        file.Trailer(*this);
        List(file.definitions);
    }
    void List(DefinitionList& list) {
        for (Byte(); Byte() != 0;) {
            stream.rdbuf()->sungetc();
            DefinitionRecord& record = list.Append();
            record.Head(*this);
            List(record.Members);
        }
    }
    void SetVersion(std::int32_t value) { version = value; }
    template <class T>
    void Since(std::int32_t introduced, T& field, const char* name) {
        if (version >= introduced) Field(field, name);
    }
    template <class T>
    void Field(T& field, const char*) {
        Bytes(&field, sizeof field);
    }
    void Field(ShortString& field, const char*) {
        Byte();
        std::string characters(Byte(), '\0');
        if (characters.empty()) return;
        Bytes(characters.data(), characters.size());
        field.text = characters.c_str();
    }
    std::uint8_t Byte() {
        std::uint8_t byte = 0;
        Bytes(&byte, 1);
        return byte;
    }
    void Bytes(void* to, std::size_t size) {
        stream.read(static_cast<char*>(to), static_cast<std::streamsize>(size));
    }
};

// What a caller sees of a load: what is thrown, the stream's state and position, the file. In pieces of one
// byte it is read plainly.
std::string Outcome(const std::string& bytes, std::size_t piece, bool throws, std::ios_base::iostate mask) {
    PieceBuffer buffer(bytes, piece, throws);
    std::istream stream(&buffer);
    stream.exceptions(mask);
    SketchFile file;
    file.DefinitionType = 9;
    file.FileFlags = 7;
    std::ostringstream outcome;
    try {
        piece == 1 ? PlainReader{stream}.File(file) : void(file.Read(stream));
    } catch (const std::exception& error) {
        outcome << error.what();
    }
    outcome << ' ' << stream.rdstate() << ' ' << buffer.Position() << ' ' << int{file.DefinitionType} << ' '
            << file.FileFlags << ' ';
    file.Write(outcome);
    return outcome.str();
}

class AnyStream : public testing::TestWithParam<int> {};

TEST_P(AnyStream, CutAnywhereReadsAsByteByByte) {
    using Stream = std::ios_base;
    SketchFile file = SampleFile(GetParam());
    const std::string all = Written(file);
    for (std::size_t size = 0; size <= all.size(); size += CutStep(all))
        for (const bool throws : {false, true})
            for (const auto mask : {Stream::goodbit, Stream::eofbit, Stream::failbit, Stream::badbit})
                for (const std::size_t piece : {0, 7, 4096}) {
                    const std::string cut = all.substr(0, size);
                    ASSERT_TRUE(SameBytes(Outcome(cut, 1, throws, mask), Outcome(cut, piece, throws, mask)))
                        << size << " bytes in pieces of " << piece << ' ' << throws << ' ' << mask;
                }
}

INSTANTIATE_TEST_SUITE_P(Versions, AnyStream, testing::Range<int>(0, SketchFile::kNewestVersion + 1));

TEST(AnyStream, AFullOneIsLeftBadWithWhatItTook) {
    SketchFile file = SampleFile(SketchFile::kNewestVersion);
    const std::string bytes = Written(file);
    for (std::size_t room = 0; room <= bytes.size(); ++room) {
        PieceBuffer buffer(std::string(room, '?'), 0, room % 2 == 0);
        std::ostream stream(&buffer);
        EXPECT_EQ(file.Write(stream).bad(), room < bytes.size());
        EXPECT_TRUE(SameBytes(bytes.substr(0, room), buffer.Bytes()));
    }
    std::ostringstream failed;
    failed.setstate(std::ios_base::failbit);
    file.Write(failed);
    EXPECT_EQ(failed.str(), "");
    std::istream nothing(nullptr);
    EXPECT_TRUE(file.Read(nothing).bad());
}

// Refuses the first block, then the second and so on, until the call needs no more. Each time, what was got
// must have been given back.
template <class Call>
void RefuseEachBlock(Call call) {
    bool refused = true;
    for (std::ptrdiff_t granted = 0; refused; ++granted) {
        const std::ptrdiff_t before = liveBlocks;
        blocksLeft = granted;
        try {
            call();
            refused = blocksLeft == 0;
        } catch (const std::bad_alloc&) {
        }
        blocksLeft = -1;
        ASSERT_EQ(liveBlocks, before) << "after " << granted << " blocks";
    }
}

TEST(OutOfMemory, WhatWasGotIsGivenBackAndNothingAssigned) {
    SketchFile file = SampleFile(SketchFile::kNewestVersion);
    const std::string bytes = Written(file);
    RefuseEachBlock([&] { Written(file); });
    RefuseEachBlock([&] { ReadFrom(*std::make_unique<SketchFile>(), bytes); });
    RefuseEachBlock([&] {
        DefinitionRecord target;
        try {
            target = file.definitions.Elements().front();
        } catch (const std::bad_alloc&) {
            blocksLeft = -1;
            EXPECT_TRUE(SameBytes(Hex("06 00 00*109 01 00"), Written(target)));
            throw;
        }
    });
}

TEST(OutOfMemory, ATextThatCannotBeHeldStaysAndItsCharactersToo) {
    for (const std::size_t piece : {2, 4096}) {
        RefuseEachBlock([&] {
            PieceBuffer buffer(Hex("06 40 'x'*64"), piece, false);
            std::istream stream(&buffer);
            ShortString read;
            read.text = "old";
            try {
                read.Read(stream);
                EXPECT_EQ(read.text.size(), 64u);
            } catch (const std::bad_alloc&) {
                blocksLeft = -1;
                EXPECT_EQ(read.text + std::to_string(buffer.Position()), "old2");
                throw;
            }
        });
    }
}

TEST(Depth, ManyLevelsNeedNoStackAndTakeAVersion) {
    const std::string level = Hex("06 00 00*109 00 06 00 01"), olderLevel = Hex("06 00 00*109 00 01");
    std::string bytes = Hex("01"), older = bytes, written;
    for (int i = 0; i < kManyLevels; ++i) bytes += level, older += olderLevel;
    const std::string closings(kManyLevels + 1, '\0');
    OnSmallStack([&] {
        DefinitionList list;
        list.SetVersion(3);
        ReadFrom(list, bytes + closings);
        DefinitionRecord copy(list.Elements().front());
        list = DefinitionList();
        copy.SetVersion(2);
        list.Append() = copy;
        written = Written(list);
    });
    EXPECT_TRUE(written == older + closings);
}

}  // namespace
}  // namespace zel
