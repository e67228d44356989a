// What build refuses of a JSON text and check of a file: where, why, and the exit status.

#include "zel/definition/SketchFile.h"
#include <algorithm>

#include "zel/json/Assembler.h"
#include "Tool.h"

namespace zel {
namespace {

using std::literals::operator""s;

std::string File(const std::string& json) { return Assembler::Assemble(json); }

// Two definitions, the first from byte 0x71 with a member from byte 0xeb.
std::string Sample() {
    return File(R"({ "Header": { "FileVersion": 5 }, "Definitions": [
                     { "AreaCode": "GLA1", "AreaName": "Living", "SubtractAreaCode": "GAR",
                       "Members": [ { "AreaCode": "BSMT" } ] }, {} ] })");
}

// Flags names none of its sections, but Type implies them.
std::string WithSections() {
    return File(R"({ "Header": { "Type": 5, "Flags": 0, "CreatedByVersion": "1.0" }, "Definitions": [] })");
}

std::string Cut(std::size_t size) { return Sample().substr(0, size); }

TEST_F(ToolTest, BuildSaysWhatItExpectsAndLeavesTheOldFile) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "1, column 1: syntax error while parsing value - unexpected end of input; expected '['"},
        {"{\n  \"Header\": }", "2, column 13: Header: syntax error while parsing value - unexpected '}'; "},
        {"{ \"Head\n er\": 1 }", "1, column 8: syntax error while parsing object key - invalid string"},
        {R"({ "Definitions": [ {}, { "Members": [ {}, )",
         "1, column 43: Definitions[1].Members[1]: syntax err"},
        {"\xFF\xFE{\0\n\0\"\0\x42\x01\"\0\x00\xD8\"\0"s, "2, column 4: ł: syntax error while parsing"},
        {"[ 1e999 ]", "1, column 3: [0]: expected a number that a double can hold, not 1e999\n"},
        {"[]", "1, column 1: expected an object with \"Header\" and \"Definitions\", not []"},
        {R"({ "Headr": {} })", "1, column 12: Headr: has no place here: no such field"},
        {R"({ "Header": { "FileVersion": 3 }, "FileFlags": 1 })", "1, column 48: FileFlags: has no place"},
        {R"({ "Header": { "Type": 1, "Type": 2 } })", "1, column 34: Header.Type: is there twice"},
        {R"({ "Header": { "Type": 256 } })",
         "1, column 23: Header.Type: expected a whole number from 0 to 255, not 256\n"},
        {R"({ "Header": { "Type": 1.5 } })", "1, column 23: Header.Type: expected a whole number"},
        {R"({ "Header": { "Flags": -1 } })",
         "1, column 24: Header.Flags: expected a whole number from 0 to 4294967295, not -1\n"},
        {R"({ "Header": { "CreationDate": 2147483648 } })",
         "1, column 31: Header.CreationDate: expected a whole number from -2147483648 to 2147483647, not"},
        {R"({ "Header": { "Signature": "0123456789" } })",
         "1, column 28: Header.Signature: expected at most 9 characters, not \"0123456789\"\n"},
        {R"({ "Header": { "CreatedBy": "012345678", "CreatedByBehind": "0102" } })",
         "1, column 60: Header.CreatedByBehind: expected at most 1 byte behind the text, not \"0102\"\n"},
        {R"({ "Header": { "CreatedBy": { "text": "old" } } })",
         "1, column 28: Header.CreatedBy: expected a text"},
        {R"({ "Header": { "CreatedBy": "ł" } })",
         "1, column 28: Header.CreatedBy: expected characters of Win"},
        {R"({ "Header": { "CreatedBy": "\u0085" } })", "1, column 28: Header.CreatedBy: expected characters"},
        {R"({ "LeftOver": "123" })", "1, column 15: LeftOver: expected bytes, two hexadecimal digits each"},
        {R"({ "Definitions": [ {}, { "WallWidth": "\"" } ] })",
         "1, column 39: Definitions[1].WallWidth: expected a number, or null and \"WallWidthBits\", not "
         "\"\\\"\"\n"},
        {R"({ "Definitions": [ { "WallWidth": 1, "WallWidthBits": "0x0000000000000000" } ] })",
         "1, column 55: Definitions[0].WallWidthBits: has no place here"},
        {R"({ "Definitions": [ { "WallWidth": null, "WallWidthBits": "0x7ffz000000000000" } ] })",
         "1, column 58: Definitions[0].WallWidthBits: expected \"0x\" and the 16 hexadecimal digits"},
        {R"({ "$schema": 1 })", "1, column 14: $schema: expected a text, not 1\n"},
        {R"({ "Header": { "CreatedBy": "a\u0000b" } })",
         "1, column 28: Header.CreatedBy: expected a text without \\u0000"},
        {R"({ "Definitions": [ { "AreaCodeTag": 0 } ] })",
         "1, column 20: Definitions[0].AreaCodeTag: expected a tag other than 0"},
        {R"({ "Definitions": [ { "AreaCode": ")" + std::string(38, 'A') + "é" + std::string(217, 'A') +
             R"(" } ] })",
         "1, column 34: Definitions[0].AreaCode: expected at most 255 characters, not \"" +
             std::string(38, 'A') + "..."},
        {R"({ "CutShort": 115 })", "1, column 15: CutShort: expected a whole number from 0 to 114, not 115"},
    };
    Put("f", "old");
    for (const auto& [json, error] : cases) {
        Put("j", json);
        const Outcome outcome = Zelsketch({"build", "j", "f"});
        EXPECT_EQ(0u, outcome.error.find("zelsketch: j: line " + error)) << outcome.error;
        EXPECT_EQ(1, outcome.status) << json;
        EXPECT_EQ("old", Get("f")) << json;
    }
}

TEST_F(ToolTest, CheckSaysWhatAndWhere) {
    const std::string inArea = "80: Definitions[0].AreaName: ", inCode = "71: Definitions[0].AreaCode: ";
    const std::string unknown = std::to_string(SketchFile::kNewestVersion + 1);
    const std::pair<std::string, std::string> damages[] = {
        {Cut(20), "12: Header.CreationDate: cut short, the file ends after 2 of 4 bytes"},
        {Cut(107), "6b: DefinitionType: cut short, the file ends in front of it"},
        {Cut(130), inArea + "cut short, the file ends after 2 of 21 bytes"},
        {Cut(0x163), "163: Definitions[0].Members: the list is not closed, nor the 1 around it"},
        {Sample() + "xyz", "1d9: LeftOver: 3 bytes behind the file's end"},
        {Sample().replace(0x71, 1, "\7"), inCode + "the tag is 7, not 6"},
        {Sample().replace(0x70, 1, "\2"), "70: Definitions: the opening byte is 2, not 1"},
        {Sample().replace(0x74, 1, 1, '\0'), inCode + "a NUL ends the text after 1 character, the count"},
        {Sample().replace(0x80, 1, "\x14"), inArea + "the count is 20, at most 19 characters fit"},
        {Sample().replace(0x82, 1, 1, '\0'), inArea + "a NUL ends the text after 1 character, the count"},
        {Sample().replace(0x1a, 10, "0123456789"), "1a: Header.CreatedBy: no NUL ends the text"},
        {File(R"({ "Header": { "FileVersion": )" + unknown + " } }"),
         "11: Header.FileVersion: version " + unknown + " is unknown"},
        {Sample().insert(0x77, 256, 'A'), inCode + "the code has 260 characters, but its count byte is 4"},
        {Sample().insert(0xf1, 256, 'A'), "eb: Definitions[0].Members[0].AreaCode: the code has 260"},
        {Sample().insert(0xea, 1024, 'S'), "e5: Definitions[0].SubtractAreaCode: the code has 1027"},
        // As the automation objects would save it: Type implies sections to readers, but not to writers.
        {WithSections().erase(0x36, 0x35), "c: Header.Flags: Type and FileVersion make a reader look"},
        // As odd without the sections as with them: as readers see it.
        {WithSections().substr(0, 0x36),
         "36: Header.ProgramVersionSignature: cut short, the file ends in front"},
        {Sample().replace(6, 1, "U"), "0: Header.Signature: not \"TRN4WIN\""},
    };
    for (const auto& [file, finding] : damages) {
        Put("f", file);
        const Outcome outcome = Zelsketch({"check", "f"});
        const std::string line = "f: 0x" + std::string(8 - finding.find(':'), '0') + finding;
        EXPECT_EQ(0u, outcome.out.find(line)) << line << " in\n" << outcome.out;
        EXPECT_EQ(outcome.out.find('\n'), outcome.out.size() - 1) << outcome.out;
        EXPECT_EQ(1, outcome.status);
    }
}

TEST_F(ToolTest, CheckTellsNotesFromDamage) {
    const std::pair<std::string, std::string> notes[] = {
        {Sample().replace(0x80, 1, "\2"),
         "80: note: Definitions[0].AreaName: the count is 2, old characters follow\n"},
        {Sample().replace(0x80, 1, "\2").replace(0, 1, "\7").replace(0xa9, 1, "x"),
         "80: note: Definitions[0].AreaName: the count is 2, old characters follow; so in 1 further text\n"},
        {File(R"({ "Header": { "FileVersion": 0 } })"),
         "11: note: Header.FileVersion: version 0 can be loaded, but"},
    };
    for (const auto& [file, note] : notes) {
        Put("f", file);
        const Outcome outcome = Zelsketch({"check", "f"});
        EXPECT_EQ(0u, outcome.out.find("f: 0x000000" + note)) << outcome.out;
        EXPECT_EQ(outcome.out.size() - 9, outcome.out.find("f: sound\n"));
        EXPECT_EQ(0, outcome.status);
    }
    Put("f", Sample().replace(0x80, 1, "\2") + "x");  // in file order
    EXPECT_EQ(Zelsketch({"check", "f"}).out.find("f: 0x00000080: note: "), 0u);
    Put("f", Sample().replace(0x80, 1, "\2"));
    EXPECT_EQ("zelsketch: f: bytes that readers do not see are not carried over\n",
              Zelsketch({"convert", "--to-version", "5", "f", "g"}).error);
    Put("f", File(R"({ "Header": { "FileVersion": 1 } })"));
    EXPECT_EQ("f: sound\n", Zelsketch({"check", "f"}).out);
    Put("f", Sample().replace(0x80, 1, 1, '\0'));  // in front of old characters, as an emptied text has it
    EXPECT_EQ("f: sound\n", Zelsketch({"check", "f"}).out);
}

TEST_F(ToolTest, CheckGoesOnBehindABadFileAndGivesTheWorstStatus) {
    Put("bad", Cut(130));
    Put("good", Sample());
    Put("sections", WithSections());
    const Outcome outcome = Zelsketch({"check", "bad", "missing", "good", "sections"});
    EXPECT_NE(std::string::npos, outcome.out.find("\ngood: sound\nsections: sound\n"));
    EXPECT_EQ("zelsketch: cannot read missing: No such file or directory\n", outcome.error);
    EXPECT_EQ(2, outcome.status);
}

TEST_F(ToolTest, CheckListsAHundredFindings) {
    for (const int count : {100, 101, 102}) {
        std::string json = R"({ "Definitions": [ { "AreaCodeTag": 7 })";
        for (int i = 1; i < count; ++i) json += R"(, { "AreaCodeTag": 7 })";
        Put("f", File(json + "] }"));
        const std::string out = Zelsketch({"check", "f"}).out;
        EXPECT_EQ(std::min(count, 101), std::count(out.begin(), out.end(), '\n')) << out;
        EXPECT_NE(std::string::npos, out.find("Definitions[99].AreaCode: the tag is 7, not 6\n"));
        EXPECT_EQ(count > 100, out.find(": further findings are not listed\n") != std::string::npos);
    }
}

}  // namespace
}  // namespace zel
