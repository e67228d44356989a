// What has changed from one file to another.

#include <algorithm>

#include "Tool.h"

namespace zel {
namespace {

std::string Definitions(const std::string& members) { return R"({ "Definitions": [ )" + members + " ] }"; }
std::string Coded(const std::string& code, const std::string& rest = "") {
    return R"({ "AreaCode": ")" + code + '"' + rest + " }";
}

TEST_F(ToolTest, DiffTellsWhatHasBecomeOfDefinitions) {
    const std::string a = Coded("A", R"(, "CalcType": 1)"), b = Coded("B"), c = Coded("C"), d = Coded("D");
    const auto list = [](std::initializer_list<std::string> all) {
        std::string text;
        for (const std::string& one : all) text += (text.empty() ? "" : ", ") + one;
        return Definitions(text);
    };
    struct {
        std::string before, after, expected;
    } const cases[] = {
        {list({a, b}), list({a, b}), ""},
        {list({a, b, c}), list({a, d, b, c}), "added: Definitions[1] \"D\"\n"},
        {list({a, b, c}), list({b, c}), "removed: Definitions[0] \"A\"\n"},
        {list({a, b, c, d}), list({b, c, d, a}), "moved: Definitions[3] \"A\" from Definitions[0]\n"},
        {list({a, b}), list({Coded("A", R"(, "CalcType": 2)"), b}),
         "changed: Definitions[0].CalcType: 1 -> 2\n"},
        {list({a, b}), list({Coded("X", R"(, "CalcType": 1)"), b}),
         "changed: Definitions[0].AreaCode: \"A\" -> \"X\"\n"},
        // Of three with one code it is the second that has gone, and members are compared in turn.
        {list({b, Coded("B", R"(, "Hidden": 1)"), b}), list({b, b}), "removed: Definitions[1] \"B\"\n"},
        {list({Coded("M", R"(, "Members": [ )" + a + ", " + b + " ]")}),
         list({Coded("M", R"(, "Members": [ )" + b + " ]")}), "removed: Definitions[0].Members[0] \"A\"\n"},
        {Definitions(Coded("A", R"(, "AreaName": "x", "AreaNameBehind": "61")")),
         Definitions(Coded("A", R"(, "AreaName": "x", "AreaNameBehind": "62")")),
         "changed: Definitions[0].AreaName: \"x\"  (1 byte behind the text) -> \"x\"  (1 byte behind the "
         "text)  "
         "(other bytes behind the text)\n"},
        {R"({ "Header": { "FileVersion": 4 } })", R"({ "Header": { "FileVersion": 5 } })",
         "changed: Header.FileVersion: 4 -> 5\nchanged: FileFlags: none -> 0x00000000\n"},
        {R"({ "Header": { "FileVersion": 3 } })", R"({ "Header": { "FileVersion": 99 } })",
         "changed: Header.FileVersion: 3 -> 99  (unknown: readers stop behind the header)\n"},
        {R"({ "DefinitionsOpening": 2 })", R"({ "DefinitionsOpening": 2 })", ""},
        {"{ }", R"({ "CutShort": 3 })", "changed: FileFlags: 0x00000000 -> 0x00000000  (cut short)\n"},
        {R"({ "LeftOver": "01" })", "{ }", "changed: LeftOver: 01 -> none\n"},
    };
    for (const auto& test : cases) {
        Build("old", test.before);
        Build("new", test.after);
        const Outcome outcome = Zelsketch({"diff", "old", "new"});
        EXPECT_EQ(test.expected, outcome.out);
        EXPECT_EQ(test.expected.empty() ? 0 : 1, outcome.status);
    }
    Build("old", list({a, b}));
    Build("new", list({b, Coded("A", R"(, "CalcType": 3)")}));
    std::string json = Zelsketch({"diff", "--json", "old", "new"}).out;
    json.erase(std::remove_if(json.begin(), json.end(), [](char x) { return x == '\n' || x == ' '; }),
               json.end());
    EXPECT_EQ(R"([{"kind":"moved","path":"Definitions[0]","code":"B","from":"Definitions[1]"},)"
              R"({"kind":"changed","path":"Definitions[1].CalcType","before":"1","after":"3"}])",
              json);
    EXPECT_EQ(2, Zelsketch({"diff", "old", "missing"}).status);
}

}  // namespace
}  // namespace zel
