// What build refuses, and where it says the fault is.

#include "DefinitionRecord.h"
#include "SketchFile.h"
#include "Tool.h"
#include "format/HexDump.h"

namespace zel {
namespace {

struct BadJson {
    const char* name;
    const char* json;
    const char* error;
};

void PrintTo(const BadJson& bad, std::ostream* out) { *out << bad.name; }

class Build : public ToolTest, public testing::WithParamInterface<BadJson> {};

TEST_P(Build, SaysWhatItExpectsAndLeavesTheOldFile) {
    Put("j", GetParam().json);
    Put("f", "old");
    const Outcome outcome = Zelsketch({"build", "j", "f"});
    EXPECT_EQ(std::string("zelsketch: j: line ") + GetParam().error + '\n', outcome.error);
    EXPECT_EQ(1, outcome.status);
    EXPECT_EQ("old", Get("f"));
}

const BadJson kBadJson[] = {
    {"Empty", "",
     "1, column 1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a "
     "literal"},
    {"NoValue", "{\n  \"Header\": }",
     "2, column 13: syntax error while parsing value - unexpected '}'; expected '[', '{', or a literal"},
    {"BrokenText", "{ \"Head\n er\": 1 }",
     "1, column 8: syntax error while parsing object key - invalid string: control character U+000A (LF) "
     "must be "
     "escaped to \\u000A or \\n; expected string literal"},
    {"TwoTexts", "{} {}",
     "1, column 4: syntax error while parsing value - unexpected '{'; expected end of input"},
    {"Infinite", "[1e999]", "1, column 2: expected a number that a double can hold"},
    {"NoObject", "[]", "1, column 1: expected an object with \"Header\" and \"Definitions\""},
    {"UnknownKey", "{ \"Headr\": {} }",
     "1, column 12: \"Headr\" has no place here: no such field, or not with this FileVersion and Flags"},
    {"FieldOfLaterVersion", "{ \"Header\": { \"FileVersion\": 3 },\n  \"FileFlags\": 1 }",
     "2, column 16: \"FileFlags\" has no place here: no such field, or not with this FileVersion and Flags"},
    {"KeyTwice", "{ \"Header\": { \"Type\": 1, \"Type\": 2 } }", "1, column 34: \"Type\" is there twice"},
    {"ByteTooBig", "{ \"Header\": { \"Type\": 256 } }",
     "1, column 23: expected a whole number from 0 to 255"},
    {"TextTooLong", "{ \"Header\": { \"Signature\": \"0123456789\" } }",
     "1, column 28: expected at most 9 characters"},
    {"TextAndRestTooLong", R"({ "Header": { "CreatedBy": { "text": "012345678", "behind": "0102" } } })",
     R"(1, column 28: expected at most 10 bytes in "text" and "behind")"},
    {"ForeignCharacter", "{ \"Header\": { \"CreatedBy\": \"\u0142\" } }",
     "1, column 28: expected characters of Windows-1252, which \"\u0142\" is not"},
    {"HalfAByte", "{ \"LeftOver\": \"123\" }", "1, column 15: expected bytes, two hexadecimal digits each"},
    {"NoDouble", R"({ "Definitions": [ { "WallWidth": "wide" } ] })",
     R"(1, column 35: expected a number, or "0x" and the 16 hexadecimal digits of a double)"},
    {"TagEndsList", R"({ "Definitions": [ { "AreaCode": { "tag": 0 } } ] })",
     "1, column 20: expected an AreaCode whose tag is not 0, which ends a list"},
    {"CutTooShort", "{ \"CutShort\": 115 }", "1, column 15: expected a whole number from 0 to 114"},
};

INSTANTIATE_TEST_SUITE_P(Errors, Build, testing::ValuesIn(kBadJson),
                         [](const auto& test) { return test.param.name; });

TEST_F(ToolTest, BuildTakesKeysInAnyOrderAndLeavesTheRestAsInANewFile) {
    Put("j", R"({ "Definitions": [ { "Members": [ { "AreaCode": "B" } ], "AreaCode": "\u0041" } ],
                  "Header": { "FileVersion": 1 } })");
    ASSERT_EQ(0, Zelsketch({"build", "j", "f"}).status);
    SketchFile expected;
    DefinitionRecord& record = expected.definitions.Append();
    record.AreaCode.text = "A";
    record.Members.Append().AreaCode.text = "B";
    expected.SetVersion(1);
    EXPECT_TRUE(SameBytes(Written(expected), Get("f")));
}

}  // namespace
}  // namespace zel
