// What check says about each kind of damage: where, what, and the exit status.

#include "SketchFile.h"
#include "Tool.h"
#include "format/HexDump.h"

namespace zel {
namespace {

struct Damage {
    const char* name;
    std::string file;
    const char* finding;
};

void PrintTo(const Damage& damage, std::ostream* out) { *out << damage.name; }

std::string File(const std::string& json) { return Assembler::Assemble(json); }

// Two definitions, the first from byte 0x71 with a member from byte 0xeb.
std::string Sample() {
    return File(R"({ "Definitions": [ { "AreaCode": "GLA1", "AreaName": "Living", "SubtractAreaCode": "GAR",
                                        "Members": [ { "AreaCode": "BSMT" } ] }, {} ] })");
}

std::string Cut(std::size_t size) { return Sample().substr(0, size); }

std::string With(std::size_t at, const std::string& bytes) {
    return Sample().replace(at, bytes.size(), bytes);
}

std::string LongCodes(std::size_t area, std::size_t subtract) {
    SketchFile file;
    file.definitions.Append().AreaCode.text = "GLA1";
    DefinitionRecord& record = file.definitions.Append();
    record.AreaCode.text.assign(area, 'A');
    record.SubtractAreaCode.text.assign(subtract, 'S');
    file.definitions.Append();
    return Written(file);
}

// As the automation objects would save it: Type 5 implies sections to readers, Flags names none to writers.
std::string WithoutImpliedSections() {
    SketchFile file;
    file.header.image.Type = 5;
    file.header.image.Flags = 0;
    file.definitions.Append().AreaCode.text = "GLA1";
    return Written(file);
}

std::string WithImpliedSections() {
    return File(
        R"({ "Header": { "Type": 5, "Flags": 0, "CreatedByVersion": "1.0" }, "Definitions": [ {} ] })");
}

class Check : public ToolTest, public testing::WithParamInterface<Damage> {};

TEST_P(Check, SaysWhatAndWhere) {
    Put("f", GetParam().file);
    const Outcome outcome = Zelsketch({"check", "f"});
    const std::string finding = GetParam().finding;
    EXPECT_EQ(finding.empty() ? "f: sound\n" : "f: 0x" + finding + '\n', outcome.out);
    EXPECT_EQ(finding.empty() ? 0 : 1, outcome.status);
}

const Damage kDamages[] = {
    {"None", Sample(), ""},
    {"CutInHeader", Cut(20), "00000012: CreationDate: cut short, the file ends after 2 of 4 bytes"},
    {"CutBehindHeader", Cut(107), "0000006b: DefinitionType: cut short, the file ends in front of it"},
    {"CutInDefinition", Cut(130),
     "00000080: Definitions[0].AreaName: cut short, the file ends after 2 of 21 bytes"},
    {"ListNotClosed", Cut(Sample().size() - 1), "000001d8: Definitions: the list is not closed"},
    {"ListsNotClosed", Cut(0x163),
     "00000163: Definitions[0].Members: the list is not closed, nor the 1 around it"},
    {"LeftOver", Sample() + "xyz", "000001d9: LeftOver: 3 bytes behind the file's end"},
    {"Tag", With(0x71, "\7"), "00000071: Definitions[0].AreaCode: the tag is 7, not 6"},
    {"Opening", With(0x70, "\2"), "00000070: Definitions: the opening byte is 2, not 1"},
    {"NulInCode", With(0x74, std::string(1, '\0')),
     "00000071: Definitions[0].AreaCode: a NUL ends the text after 1 character, the count is 4"},
    {"CountTooBig", With(0x80, "\x19"),
     "00000080: Definitions[0].AreaName: the count is 25, at most 19 characters fit"},
    {"CountTooSmall", With(0x80, "\2"),
     "00000080: Definitions[0].AreaName: the count is 2, but the text goes on to 6 characters"},
    {"NulInName", With(0x82, std::string(1, '\0')),
     "00000080: Definitions[0].AreaName: a NUL ends the text after 1 character, the count is 6"},
    {"NoNul", With(0x1a, "0123456789"), "0000001a: CreatedBy: no NUL ends the text"},
    {"Version0", File(R"({ "Header": { "FileVersion": 0 } })"),
     "00000011: FileVersion: the store loads version 0, but refuses to save it: 1 to 5"},
    {"Version6", File(R"({ "Header": { "FileVersion": 6 } })"),
     "00000011: FileVersion: the store refuses version 6, it loads 0 to 5; nothing behind the header is "
     "read"},
    {"LongAreaCode", LongCodes(300, 0),
     "000000e9: Definitions[1].AreaCode: the code has 300 characters, but its count byte is 44; readers are "
     "out "
     "of step from here on"},
    {"LongSubtractAreaCode", LongCodes(4, 1024),
     "0000015d: Definitions[1].SubtractAreaCode: the code has 1024 characters, but its count byte is 0; "
     "readers "
     "are out of step from here on"},
    {"SectionsNotWritten", WithoutImpliedSections(),
     "0000000c: Flags: Type and FileVersion make a reader look for the sections of 0x00000110, but the "
     "writer "
     "wrote those of 0x00000000"},
    {"SectionsWrittenWithoutFlags", WithImpliedSections(), ""},
};

INSTANTIATE_TEST_SUITE_P(Damages, Check, testing::ValuesIn(kDamages),
                         [](const auto& test) { return test.param.name; });

TEST_F(ToolTest, CheckGoesOnBehindABadFileAndGivesTheWorstStatus) {
    Put("bad", Cut(130));
    Put("good", Sample());
    const Outcome outcome = Zelsketch({"check", "bad", "missing", "good"});
    EXPECT_NE(std::string::npos, outcome.out.find("good: sound\n"));
    EXPECT_EQ("zelsketch: cannot read missing: No such file or directory\n", outcome.error);
    EXPECT_EQ(2, outcome.status);
}

}  // namespace
}  // namespace zel
