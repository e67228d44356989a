// The list framings, with records of this library and of a client.

#include <gmock/gmock.h>

#include "zel/list/CountedRecordList.h"
#include "zel/list/EmptyRecord.h"
#include "zel/drawing/EntityRecord.h"
#include "HexDump.h"
#include "zel/list/PlaceholderRecordList.h"
#include "zel/list/TypedRecordList.h"
#include "zel/list/ValueList.h"
#include "zel/list/VersionedRecordList.h"

namespace zel {
namespace {

// A client's class, derived from one of ours: reads a byte, writes it with the code and version it saw then.
class ClientRecord : public EntityRecord {
public:
    std::istream& Read(std::istream& stream) override {
        const std::string state = std::to_string(EntityKind) + '@' + std::to_string(GetVersion());
        seen = static_cast<char>(stream.get()) + state;
        return stream;
    }
    std::ostream& Write(std::ostream& stream) override { return stream << seen; }

    std::string seen;
};

// Reads into a list that holds records already.
template <class List>
void ExpectFraming(List list, const char* read, const char* written, std::size_t left) {
    list.Resize(3);
    EXPECT_EQ(ReadFrom(list, Hex(read)), left) << read;
    EXPECT_TRUE(SameBytes(Hex(written), Written(list))) << read;
}

TEST(Lists, GiveAClientsRecordsTheirCodesAndVersions) {
    VersionedRecordList<ClientRecord> versioned;
    TypedRecordList<ClientRecord> typed;
    versioned.SetVersion(7);
    typed.SetVersion(8);
    ExpectFraming(RecordList<ClientRecord>(), "55 'ab' 00 99", "01 'a0@0b0@0' 00", 1);
    ExpectFraming(versioned, "55 'ab' 00 99", "01 'a0@7b0@7' 00", 1);
    ExpectFraming(typed, "00 02 00 FE FF 'a' 05 00 'b' 99", "00 02 00 FE FF 'a-2@8' 05 00 'b5@8'", 1);
    ExpectFraming(typed, "00 01 00 07", "00 01 00 07 00 FF '7@8'", 0);
}

TEST(Lists, ValuesEndAtALowByteOfZeroOrWithTheStream) {
    const char* const three = "01 05 00 00 00 2C 01 00 00 07 00 00 00 00";
    ExpectFraming(ValueList(), three, three, 0);
    ExpectFraming(ValueList(), "77 05 00 00 00 00 01 00 00 00", "01 05 00 00 00 00", 4);
    ExpectFraming(ValueList(), "01 05 02", "01 05 02 00 00 00", 0);
}

TEST(Lists, CountsAreSignedOnlyInTypedListsAndCountPastTheEnd) {
    const TypedRecordList<EmptyRecord> typed;
    ExpectFraming(typed, "01 99", "00 00 00", 1);
    ExpectFraming(typed, "00 00 80 99", "00 00 00", 1);
    ExpectFraming(typed, "00 02 00 07 00", "00 02 00 0C 00 0C 00", 0);
    // Of a number that is cut, the byte that came counts.
    ExpectFraming(typed, "00 02", "00 02 00 0C 00 0C 00", 0);
    CountedRecordList texts;
    ExpectFraming(texts, "02", "02 00 06 00 06 00", 0);
    ExpectFraming(texts, "02 00 06 01 'a' 06 00 99", "02 00 06 01 'a' 06 00", 1);
    ReadFrom(texts, Hex("FF FF 06 01 'b'"));
    EXPECT_EQ(texts.size(), 65535u);
    texts.Resize(65537);
    EXPECT_TRUE(SameBytes(Hex("01 00 06 01 'b'"), Written(texts)));
}

TEST(Lists, APlaceholderListStopsAtDamage) {
    ExpectFraming(PlaceholderRecordList(), "77 00 99", "01 00", 1);
    PlaceholderRecordList list;
    std::istringstream stream(Hex("01 01 00"));
    list.Read(stream);
    EXPECT_TRUE(stream.fail() && !stream.eof() && list.empty());
    // Of its elements nothing is copied.
    PlaceholderRecordList other;
    list.Resize(2), other.Resize(1);
    other = list;
    EXPECT_EQ(other.size() + PlaceholderRecordList(list).size(), 0u);
}

TEST(Lists, MarkerListsStopOnAStreamThatFailedBeforeItsEnd) {
    struct Failing {
        void Read(std::istream& stream) { stream.setstate(std::ios_base::failbit); }
        void Write(std::ostream&) {}
    };
    RecordList<Failing> list;
    ReadFrom(list, Hex("01 'abc' 00"));
    EXPECT_EQ(list.size(), 1u);
}

TEST(Lists, LoseTheirLastElementsAndTooManyAreALengthError) {
    ValueList list;
    ReadFrom(list, Hex("01 05 00 00 00 06 00 00 00 00"));
    list.Resize(1);
    EXPECT_THAT(list.Elements(), testing::ElementsAre(5));
    const auto resize = [] { ValueList().Resize(SIZE_MAX); };
    EXPECT_THAT(resize, testing::ThrowsMessage<std::length_error>("list<T> too long"));
}

TEST(Lists, AssignCopiesVersionElementsAndForm) {
    TypedRecordList<EmptyRecord> source, target;
    source.OmitWhenEmpty = true;
    source.SetVersion(5);
    source.Append(12);
    target.Resize(3);
    target.Assign(source);
    EXPECT_EQ(target.GetVersion(), 5);
    EXPECT_TRUE(SameBytes(Hex("00 01 00 0C 00"), Written(target)));
    target.Clear();
    EXPECT_TRUE(SameBytes(Hex("01"), Written(target)));
}

}  // namespace
}  // namespace zel
