// Reading against any stream: what can be observed is what reading byte by byte leaves.

#include <stdexcept>
#include <vector>

#include "HexDump.h"
#include "SampleFile.h"

namespace zel {
namespace {

// Shows its bytes in pieces, or one at a time without a buffer (piece 0); at their end it stops or throws.
class PieceBuffer : public std::streambuf {
public:
    PieceBuffer(std::string bytes, std::size_t piece, bool throws)
        : bytes_(std::move(bytes)), piece_(piece), throws_(throws) {}

    std::size_t Position() const { return next_ - static_cast<std::size_t>(egptr() - gptr()); }
    void StepBack() {
        next_ = Position() - 1;
        setg(nullptr, nullptr, nullptr);
    }

protected:
    int_type underflow() override {
        if (next_ == bytes_.size()) return End();
        char* begin = bytes_.data() + next_;
        if (piece_ == 0) return traits_type::to_int_type(*begin);
        const std::size_t size = std::min(piece_, bytes_.size() - next_);
        setg(begin, begin, begin + size);
        next_ += size;
        return traits_type::to_int_type(*begin);
    }
    int_type uflow() override {
        if (piece_ != 0) return std::streambuf::uflow();
        return next_ == bytes_.size() ? End() : traits_type::to_int_type(bytes_[next_++]);
    }

private:
    int_type End() const {
        if (throws_) throw std::runtime_error("end");
        return traits_type::eof();
    }

    std::string bytes_;
    std::size_t piece_;
    bool throws_;
    std::size_t next_ = 0;
};

// Field by field, each tested by nobody; a list's next byte is read and given back.
class PlainReader {
public:
    PlainReader(std::istream& stream, PieceBuffer& buffer) : stream_(stream), buffer_(buffer) {}

    void File(SketchFile& file) {
        HeaderImage& image = file.header.image;
        stream_.read(reinterpret_cast<char*>(&image), 54);
        file.header.SetVersion(image.FileVersion);
        if (image.Flags & 0x10) stream_.read(reinterpret_cast<char*>(&image) + 54, 11);
        for (const int offset : {65, 86})
            if (image.Flags & 0x100) stream_.read(reinterpret_cast<char*>(&image) + offset, 21);
        file.header.Normalize();
        file.SetVersion(file.header.GetVersion());
        if (file.GetVersion() >= 4) Byte(file.DefinitionType);
        if (file.GetVersion() >= 5) stream_.read(reinterpret_cast<char*>(&file.FileFlags), 4);
        List(file.definitions);
    }

private:
    void Byte(std::uint8_t& byte) { stream_.read(reinterpret_cast<char*>(&byte), 1); }
    void Text(std::string& text) {
        std::uint8_t tag = 0, count = 0;
        Byte(tag);
        Byte(count);
        if (count == 0) return;
        std::vector<char> characters(count + 1u);
        stream_.read(characters.data(), count);
        text = characters.data();
    }
    void List(DefinitionList& list) {
        list.Clear();
        std::uint8_t first = 0;
        Byte(first);
        for (;;) {
            first = 0;
            Byte(first);
            if (first == 0 || stream_.eof()) return;
            buffer_.StepBack();
            Record(list.Append());
        }
    }
    void Record(DefinitionRecord& record) {
        Text(record.AreaCode.text);
        stream_.read(reinterpret_cast<char*>(&record.block), sizeof record.block);
        if (record.GetVersion() >= 2) Byte(record.Hidden);
        if (record.GetVersion() >= 3) Text(record.SubtractAreaCode.text);
        record.Normalize();
        List(record.Members);
    }

    std::istream& stream_;
    PieceBuffer& buffer_;
};

struct Source {
    std::string bytes;
    bool throws;
    std::ios_base::iostate mask;
};

// What a caller sees of a load: what is thrown, the stream's state and position, the tree.
template <class Load>
std::string Outcome(const Source& source, std::size_t piece, Load load) {
    PieceBuffer buffer(source.bytes, piece, source.throws);
    std::istream stream(&buffer);
    stream.exceptions(source.mask);
    SketchFile file;
    file.DefinitionType = 9;
    file.FileFlags = 7;
    std::string outcome = "none";
    try {
        load(stream, buffer, file);
    } catch (const std::ios_base::failure&) {
        outcome = "failure";
    } catch (const std::runtime_error& error) {
        outcome = error.what();
    }
    return outcome + ' ' + std::to_string(stream.rdstate()) + ' ' + std::to_string(buffer.Position()) + ' ' +
           Written(file);
}

class AnyStream : public testing::TestWithParam<int> {};

TEST_P(AnyStream, CutAnywhereReadsAsByteByByte) {
    SketchFile file = SampleFile(GetParam());
    const std::string bytes = Written(file);
    constexpr std::ios_base::iostate kMasks[] = {std::ios_base::goodbit, std::ios_base::eofbit,
                                                 std::ios_base::failbit, std::ios_base::badbit};
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        for (int i = 0; i < 8; ++i) {
            const Source source{bytes.substr(0, size), i >= 4, kMasks[i % 4]};
            const std::string expected = Outcome(source, 1, [](auto& stream, auto& buffer, SketchFile& into) {
                PlainReader(stream, buffer).File(into);
            });
            for (const std::size_t piece : {0, 7, 4096})
                ASSERT_TRUE(SameBytes(
                    expected,
                    Outcome(source, piece, [](auto& stream, auto&, SketchFile& into) { into.Read(stream); })))
                    << size << " bytes in pieces of " << piece << ", mask " << source.mask << ", throws "
                    << source.throws;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Versions, AnyStream, testing::Range(0, 6));

// Takes so many bytes, one at a time, then no more or throws.
class NarrowBuffer : public std::streambuf {
public:
    NarrowBuffer(std::size_t room, bool throws) : room_(room), throws_(throws) {}
    std::string taken;

protected:
    int_type overflow(int_type c) override {
        if (taken.size() == room_ && throws_) throw std::runtime_error("full");
        if (taken.size() == room_) return traits_type::eof();
        taken += traits_type::to_char_type(c);
        return c;
    }

private:
    std::size_t room_;
    bool throws_;
};

TEST(AnyStream, AFullOneIsLeftBadWithWhatItTook) {
    SketchFile file = SampleFile(5);
    const std::string bytes = Written(file);
    for (const bool throws : {false, true}) {
        for (std::size_t room = 0; room <= bytes.size(); ++room) {
            NarrowBuffer buffer(room, throws);
            std::ostream stream(&buffer);
            file.Write(stream);
            ASSERT_EQ(stream.bad(), room < bytes.size());
            ASSERT_TRUE(SameBytes(bytes.substr(0, room), buffer.taken));
        }
        NarrowBuffer buffer(60, throws);
        std::ostream stream(&buffer);
        stream.exceptions(std::ios_base::badbit);
        EXPECT_ANY_THROW(file.Write(stream));
    }
    std::ostream nowhere(nullptr);
    file.Write(nowhere);
    std::istream nothing(nullptr);
    file.Read(nothing);
    EXPECT_TRUE(nothing.bad());
}

}  // namespace
}  // namespace zel
