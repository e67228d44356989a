// The list framings, with records of this library and of a client.

#include "CountedRecordList.h"
#include "EmptyRecord.h"
#include "HexDump.h"
#include "PlaceholderRecordList.h"
#include "TypedRecordList.h"
#include "ValueList.h"
#include "VersionedRecordList.h"

namespace zel {
namespace {

// A record class that this library knows nothing of: one byte, seen together with the version at the time.
class ClientRecord : public TypedRecord, public Versioned {
public:
    std::istream& Read(std::istream& stream) override {
        seen = std::to_string(code) + '@' + std::to_string(GetVersion());
        return stream.read(&byte, 1);
    }
    std::ostream& Write(std::ostream& stream) override { return stream.write(&byte, 1); }
    std::int16_t TypeCode() const override { return code; }
    void SetTypeCode(std::int16_t value) override { code = value; }
    const void* Body() const override { return &byte; }

    std::int16_t code = 0;
    char byte = 0;
    std::string seen;
};

template <class List>
std::string Seen(const List& list) {
    std::string seen;
    for (const ClientRecord& record : list) seen += record.byte + ('=' + record.seen) + ' ';
    return seen;
}

TEST(Lists, ReadAClientsRecordsThroughTheirOwnOperations) {
    RecordList<ClientRecord> plain;
    VersionedRecordList<ClientRecord> versioned;
    TypedRecordList<ClientRecord> typed;
    versioned.SetVersion(7);
    typed.SetVersion(8);
    plain.Resize(3);
    versioned.Resize(3);
    typed.Resize(3);
    EXPECT_EQ(ReadFrom(plain, Hex("55 'ab' 00 99")), 1u);
    EXPECT_EQ(ReadFrom(versioned, Hex("55 'ab' 00 99")), 1u);
    EXPECT_EQ(ReadFrom(typed, Hex("00 02 00 FE FF 'a' 05 00 'b' 99")), 1u);
    EXPECT_EQ(Seen(plain), "a=0@0 b=0@0 ");
    EXPECT_EQ(Seen(versioned), "a=0@7 b=0@7 ");
    EXPECT_EQ(Seen(typed), "a=-2@8 b=5@8 ");
    EXPECT_TRUE(SameBytes(Hex("01 'ab' 00"), Written(plain)));
    EXPECT_TRUE(SameBytes(Hex("01 'ab' 00"), Written(versioned)));
    EXPECT_TRUE(SameBytes(Hex("00 02 00 FE FF 'a' 05 00 'b'"), Written(typed)));
}

struct ValueCase {
    const char* read;
    std::vector<std::uint32_t> values;
    std::size_t left;
};

TEST(Lists, ValuesEndAtALowByteOfZeroOrWithTheStream) {
    const ValueCase cases[] = {
        {"01 05 00 00 00 2C 01 00 00 07 00 00 00 00", {5, 300, 7}, 0},
        {"01 05 00 00 00 00 01 00 00 00", {5}, 4},
        {"77 00", {}, 0},
        {"", {}, 0},
        {"01 05 00 00 00", {5}, 0},
        {"01 05 02", {0x205}, 0},
    };
    for (const ValueCase& c : cases) {
        ValueList list;
        list.Append() = 9;
        EXPECT_EQ(ReadFrom(list, Hex(c.read)), c.left) << c.read;
        EXPECT_EQ(std::vector<std::uint32_t>(list.begin(), list.end()), c.values) << c.read;
    }
    ValueList list;
    for (const std::uint32_t value : {5, 256}) list.Append() = value;
    EXPECT_TRUE(SameBytes(Hex("01 05 00 00 00 00 01 00 00 00"), Written(list)));
}

struct CountCase {
    const char* read;
    std::size_t size;
    std::size_t left;
};

TEST(Lists, TypedCountsAreSignedAndCountPastTheEnd) {
    const CountCase cases[] = {
        {"01 99", 0, 1},          {"00 00 00 99", 0, 1},  {"00 00 80 99", 0, 1}, {"00 FF FF 99", 0, 1},
        {"00 02 00 0C 00", 2, 0}, {"00 FF 7F", 32767, 0}, {"00", 0, 0},          {"", 0, 0},
    };
    for (const CountCase& c : cases) {
        TypedRecordList<EmptyRecord> list;
        list.Resize(1);
        EXPECT_EQ(ReadFrom(list, Hex(c.read)), c.left) << c.read;
        EXPECT_EQ(list.size(), c.size) << c.read;
    }
    TypedRecordList<EmptyRecord> list;
    EXPECT_TRUE(SameBytes(Hex("00 00 00"), Written(list)));
    list.OmitWhenEmpty = true;
    EXPECT_TRUE(SameBytes(Hex("01"), Written(list)));
    list.Resize(2);
    EXPECT_TRUE(SameBytes(Hex("00 02 00 0C 00 0C 00"), Written(list)));
}

TEST(Lists, TextsAreCountedUnsignedAndWithoutTypeCodes) {
    CountedRecordList list;
    EXPECT_TRUE(SameBytes(Hex("00 00"), Written(list)));
    EXPECT_EQ(ReadFrom(list, Hex("02 00 06 01 'a' 06 00 99")), 1u);
    EXPECT_TRUE(SameBytes(Hex("02 00 06 01 'a' 06 00"), Written(list)));
    ReadFrom(list, Hex("FF FF 06 01 'b'"));
    EXPECT_EQ(list.size(), 65535u);
    list.Resize(65537);
    EXPECT_TRUE(SameBytes(Hex("01 00 06 01 'b'"), Written(list)));
}

TEST(Lists, APlaceholderListIsTwoBytesAndStopsAtAnyOther) {
    PlaceholderRecordList list;
    list.Resize(3);
    EXPECT_TRUE(SameBytes(Hex("01 00"), Written(list)));
    EXPECT_TRUE(PlaceholderRecordList(list).empty());
    std::istringstream stream(Hex("01 01 00"));
    list.Read(stream);
    EXPECT_TRUE(stream.fail() && !stream.eof() && list.empty());
}

TEST(Lists, MarkerListsStopOnAStreamThatFailedBeforeItsEnd) {
    class Failing : public ClientRecord {
    public:
        std::istream& Read(std::istream& stream) override {
            stream.setstate(std::ios_base::failbit);
            return stream;
        }
    };
    RecordList<Failing> list;
    ReadFrom(list, Hex("01 'abc' 00"));
    EXPECT_EQ(list.size(), 1u);
}

TEST(Lists, TooManyElementsAreALengthError) {
    ValueList list;
    list.Resize(2);
    try {
        list.Resize(list.Elements().max_size() + 1);
        FAIL();
    } catch (const std::length_error& error) {
        EXPECT_STREQ(error.what(), "list<T> too long");
    }
    EXPECT_EQ(list.size(), 2u);
}

TEST(Lists, AssignCopiesVersionElementsAndForm) {
    TypedRecordList<ClientRecord> source, target;
    source.OmitWhenEmpty = true;
    source.SetVersion(5);
    source.Append(4).byte = 'a';
    target.Resize(3);
    target.Assign(source);
    source.Resize(0);
    EXPECT_TRUE(target.OmitWhenEmpty);
    EXPECT_EQ(target.GetVersion(), 5);
    EXPECT_EQ(target.begin()->GetVersion(), 5);
    EXPECT_TRUE(SameBytes(Hex("00 01 00 04 00 'a'"), Written(target)));
    target.SetVersion(6);
    EXPECT_EQ(target.begin()->GetVersion(), 6);
}

// The place of a virtual operation in its table; a destructor takes the first two.
template <class Member>
std::uintptr_t SlotOf(Member member) {
    std::uintptr_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return (offset - 1) / sizeof(void*);
}

TEST(Lists, VirtualOperationsStandInTheirOrder) {
    const std::uintptr_t record[] = {SlotOf(&TypedRecord::Read), SlotOf(&TypedRecord::Write),
                                     SlotOf(&TypedRecord::TypeCode), SlotOf(&TypedRecord::SetTypeCode),
                                     SlotOf(&TypedRecord::Body)};
    using List = TypedRecordList<EmptyRecord>;
    const std::uintptr_t list[] = {SlotOf(&List::GetVersion), SlotOf(&List::SetVersion),
                                   SlotOf(&List::Assign), SlotOf(&List::Read), SlotOf(&List::Write)};
    for (std::uintptr_t i = 0; i < 5; ++i) {
        EXPECT_EQ(record[i], i + 2);
        EXPECT_EQ(list[i], i + 2);
    }
}

}  // namespace
}  // namespace zel
