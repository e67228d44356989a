// Reading and changing single values and definitions: nothing else in the file changes, what does not fit is
// refused.

#include "Tool.h"
#include "format/HexDump.h"
#include "zel/edit/Editor.h"
#include "zel/files/Files.h"
#include "zel/text/Failure.h"

namespace zel {
namespace {

using std::literals::operator""s;

constexpr char kSample[] = R"({ "Header": { "FileVersion": 3, "CreatedBy": "me", "CreationDate": 147617 },
    "Definitions": [ { "AreaCode": "GLA1", "AreaName": "Living", "AreaNameBehind": "6f6c6400", "Members": [
                         { "AreaCode": "GAR", "Multiplier": -0.5 }, { "AreaCode": "1" }, { "AreaCode": "GAR" } ] },
                     { "AreaCode": "P/P", "WallWidth": null, "WallWidthBits": "0x7ff8000000000001" }, { "AreaCode": "\u20ac]\"" } ] })";

class EditTest : public ToolTest {
protected:
    EditTest() {
        Build("f", kSample);
        file_ = Get("f");
    }

    // The codes of the file's definitions, then those of their members.
    static std::string Codes(const std::string& file) {
        std::string codes, members;
        for (const std::string& line : Editor::Get(file, "Definitions", true)) {
            const std::size_t name = line.find(".AreaCode = \"");
            if (name == line.npos) continue;
            const std::string code = line.substr(name + 13, line.size() - name - 14);
            (line.find("Members") == line.npos ? codes : members) += code + ' ';
        }
        return codes + "| " + members;
    }
    template <class Job>
    static std::string Refusal(Job job) {
        try {
            job();
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "nothing";
    }

    std::string file_;
};

TEST_F(EditTest, GetTakesTheWayByPlaceCodeAndAll) {
    const std::pair<std::string, std::string> cases[] = {
        {"Header.CreatedBy", "me"},
        {"Header.Flags", "272"},
        {"Definitions[0].Members[2].AreaCode", "GAR"},
        {"Definitions[GLA1].Members[\"1\"].AreaCode", "1"},
        {"Definitions[GLA1].Members[1].AreaCode", "1"},
        {"Definitions[P/P].WallWidth", "0x7ff8000000000001"},
        {"Definitions[\"\u20ac]\\\"\"].AreaCode", "\u20ac]\""},
        {"Definitions[0].Members[0].Multiplier", "-0.5"},
        {"Definitions[*].AreaName", "Living;;"},
        {"Header", "Header.Signature = \"TRN4WIN\";"},
        {"Definitions[0].Members", "Definitions[0].Members[0].AreaCode = \"GAR\";"},
        {"Definitions[1]", "Definitions[1].AreaCode = \"P/P\";"},
    };
    for (const auto& [path, expected] : cases) {
        std::string lines;
        for (const std::string& line : Editor::Get(file_, path, false))
            lines += (lines.empty() ? "" : ";") + line;
        EXPECT_EQ(expected, lines.substr(0, expected.back() == ';' ? expected.size() : lines.size())) << path;
    }
    EXPECT_EQ(16u, Editor::Get(file_, "Definitions[1]", false).size());
    EXPECT_EQ(2u, Editor::Get(file_, "Definitions[0].Members[GAR].AreaCode", true).size());
}

TEST_F(EditTest, WhatIsNotThereIsNamed) {
    const std::pair<std::string, std::string> cases[] = {
        {"Definitions[3].AreaCode", "no such definition; the file has 3 definitions"},
        {"Definitions[XYZ].AreaCode", "no such definition; the file has 3"},
        {"Definitions[0].Members[3]", "no such definition; the definition around it has 3 members"},
        {"Definitions[0].Members[GAR].AreaCode",
         "this code stands more than once, at Definitions[0].Members[0] and Definitions[0].Members[2]; give"},
        {"Definitions[0].Aera", "no such field; there are AreaCode, Multiplier, "},
        {"CreatedBy", "no such field; there are none"},
        {"Headers", "no such field; there are none"},
        {"FileFlags", "version 3 has no such field, from version 5 on there is one"},
        {"Definitions[0", "expected ']' at the end"},
        {"Definitions[].AreaCode", "expected an index, a code or '*' in front of ].AreaCode"},
        {"Definitions[4294967296]", "expected an index below 4294967296 in front of ]"},
        {"Header.", "expected the name of a field at the end"},
    };
    for (const auto& [path, reason] : cases)
        EXPECT_EQ(0u, Refusal([&] { Editor::Get(file_, path, false); }).find(path + ": " + reason))
            << Refusal([&] { Editor::Get(file_, path, false); });
}

TEST_F(EditTest, SetChangesTheValueAndNoOtherByte) {
    const auto at = [&](const std::string& bytes) { return file_.find(bytes); };
    struct {
        std::string assignment;
        std::string expected;
    } const cases[] = {
        {"Header.CreatedBy=Jo", std::string(file_).replace(0x1a, 3, std::string("Jo\0", 3))},
        {"Header.CreationDate=2004-02-28", std::string(file_).replace(0x12, 1, "\xa0")},
        {"Header.ModifiedTime=00:01:00", std::string(file_).replace(0x28, 1, "<")},
        {"Header.ModifiedTime=-1", std::string(file_).replace(0x28, 4, 4, '\xff')},
        {"Header.Flags=0x80000110", std::string(file_).replace(0x0f, 1, "\x80")},
        // Old characters stay behind the text.
        {"Definitions[GLA1].AreaName=\u20ac",
         std::string(file_).replace(at("\6Living"), 3, std::string("\1\x80\0", 3))},
        {"Definitions[P/P].AreaCode=LONGER", std::string(file_).replace(at("\3P/P"), 4, "\6LONGER")},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(SameBytes(c.expected, Editor::Set(file_, {c.assignment}, false).file)) << c.assignment;
    }
    EXPECT_EQ(2u, Editor::Set(file_, {"Definitions[0].Members[GAR].Hidden=1"}, true).changes.size());
    EXPECT_TRUE(SameBytes(
        std::string(file_).replace(0x1a, 10, "Jo\000345678\0"s),
        Editor::Set(std::string(file_).replace(0x1a, 10, "0123456789"), {"Header.CreatedBy=Jo"}, false)
            .file));
    // Damage is no hindrance while it gets no worse.
    EXPECT_EQ(1u, Editor::Set(file_ + "x", {"Header.CreatedBy=Jo"}, false).changes.size());
    EXPECT_EQ("2", Editor::Get(Editor::Set(file_, {"Definitions[P/P].WallWidth=2"}, false).file,
                               "Definitions[1].WallWidth", false)[0]);
}

TEST_F(EditTest, SetRefusesWhatDoesNotFit) {
    const std::pair<std::string, std::string> cases[] = {
        {"Definitions[0].AreaName=12345678901234567890", "has 20 characters, at most 19 fit"},
        {"Header.CreatedBy=1234567890", "has 10 characters, at most 9 fit"},
        {"Definitions[0].AreaName=\u0142", "does not fit, characters of Windows-1252 do"},
        {"Definitions[0].CalcType=256", "\"256\" does not fit, a whole number from 0 to 255 does"},
        {"Definitions[0].LineColor=-1", "a whole number from 0 to 65535 does"},
        {"Header.CreationDate=2003-02-29", "a whole number from -2147483648 to 2147483647 does, or a date"},
        {"Header.CreationTime=24:00:00", "or a time as 23:59:59"},
        {"Definitions[0].Multiplier=1,5", "a number as 1.5 does"},
        {"Definitions[0].Multiplier=0x1", "a number as 1.5 does"},
        {"Definitions[0].AreaName=a\0b"s, "a NUL does not fit"},
        {"Definitions[0].Multiplier=", "a number as 1.5 does"},
        {"Definitions[0].Multiplier=inf", "a number as 1.5 does"},
        {"Header.FileVersion=5", "use convert"},
        {"Header.Flags=0", "readers look for the sections of 0x00000000, the file has those of 0x00000110"},
        {"Header.Signature=X", "not changed, it would be damaged at 0x00000000: Header.Signature"},
        {"Definitions[0]=1", "expected the path of a field"},
        {"Definitions[a=b].Hidden=1", "Definitions[a=b].Hidden: no such definition"},
        {"Definitions[0].AreaName", "expected '=' and a value behind the path"},
    };
    for (const auto& [assignment, reason] : cases) {
        const std::string refusal = Refusal([&, a = assignment] { Editor::Set(file_, {a}, false); });
        EXPECT_NE(std::string::npos, refusal.find(reason)) << refusal;
    }
}

TEST_F(EditTest, DefinitionsComeGoAndMove) {
    const std::string all = "GLA1 P/P \u20ac]\\\" | GAR 1 GAR ";
    ASSERT_EQ(all, Codes(file_));
    const auto added = [&](const char* where) {
        return Codes(Editor::Add(file_, where, {"AreaCode=NEW"}).file);
    };
    EXPECT_EQ("GLA1 P/P \u20ac]\\\" NEW | GAR 1 GAR ", added("Definitions"));
    EXPECT_EQ("NEW GLA1 P/P \u20ac]\\\" | GAR 1 GAR ", added("Definitions[GLA1]"));
    EXPECT_EQ("GLA1 P/P \u20ac]\\\" | GAR 1 GAR NEW ", added("Definitions[0].Members[3]"));
    EXPECT_EQ("GLA1 P/P \u20ac]\\\" | GAR 1 GAR NEW ", added("Definitions[P/P].Members"));

    const auto moved = [&](const char* from, const char* to) {
        return Codes(Editor::Move(file_, from, to).file);
    };
    EXPECT_EQ("P/P \u20ac]\\\" GLA1 | GAR 1 GAR ", moved("Definitions[0]", "Definitions[2]"));
    EXPECT_EQ("P/P GLA1 \u20ac]\\\" | GAR 1 GAR ", moved("Definitions[1]", "Definitions[GLA1]"));
    EXPECT_EQ("GLA1 P/P 1 \u20ac]\\\" | GAR GAR ", moved("Definitions[0].Members[1]", "Definitions[2]"));
    EXPECT_TRUE(Editor::Move(file_, "Definitions[2]", "Definitions").changes.empty());

    const auto removed = [&](const char* path, bool each) {
        return Codes(Editor::Remove(file_, {path}, each).file);
    };
    EXPECT_EQ("P/P \u20ac]\\\" | ", removed("Definitions[0]", false));
    EXPECT_EQ("GLA1 P/P \u20ac]\\\" | 1 ", removed("Definitions[0].Members[GAR]", true));

    EXPECT_EQ("P/P \u20ac]\\\" | ",
              Codes(Editor::Remove(file_, {"Definitions[0]", "Definitions[0].Members[0]"}, false).file));

    for (const char* to : {"Definitions[0].Members", "Definitions[0].Members[1]", "Definitions[4]", "Header"})
        EXPECT_NE("nothing", Refusal([&] { Editor::Move(file_, "Definitions[0]", to); })) << to;
    EXPECT_NE("nothing", Refusal([&] { Editor::Remove(file_, {"Definitions[0].Members[GAR]"}, false); }));
    EXPECT_NE("nothing", Refusal([&] { Editor::Add(file_ + "x", "Definitions", {}); }));
}

TEST_F(EditTest, TheOldFileStaysAsBackup) {
    EXPECT_EQ("Header.CreatedBy: \"me\" to \"Jo\"\n", Zelsketch({"set", "f", "Header.CreatedBy=Jo"}).out);
    EXPECT_EQ(file_, Get("f.bak"));
    const std::string second = Get("f");
    EXPECT_EQ("f: nothing to change\n", Zelsketch({"set", "f", "Header.CreatedBy=Jo"}).out);
    EXPECT_EQ(file_, Get("f.bak"));
    EXPECT_EQ(0, Zelsketch({"remove", "--no-backup", "f", "Definitions[0]"}).status);
    EXPECT_EQ(file_, Get("f.bak"));
    EXPECT_EQ(0, Zelsketch({"add", "f", "-o", "g", "Definitions"}).status);
    EXPECT_EQ(2, Zelsketch({"add", "f", "-o", "g", "Definitions"}).status);
    EXPECT_EQ("P/P\n\u20ac]\"\n", Zelsketch({"get", "f", "Definitions[*].AreaCode"}).out);
    EXPECT_EQ("P/P\n\u20ac]\"\n\n", Zelsketch({"get", "g", "Definitions[*].AreaCode"}).out);
    EXPECT_EQ(2, Zelsketch({"set", "f", "Header.CreatedBy=1234567890"}).status);
}

TEST_F(EditTest, WhatAnotherProgramHasChangedStays) {
    for (const std::string& read : {file_ + "x", file_.substr(1), file_.substr(0, 99), std::string()}) {
        const auto replace = [&] { ReplaceFile("f", read, "new", Overwrite::kReplace, true); };
        EXPECT_EQ("will not replace f: another program has changed it meanwhile", Refusal(replace));
        EXPECT_TRUE(SameBytes(file_, Get("f")));
        EXPECT_FALSE(std::filesystem::exists("f.bak"));
    }
}

}  // namespace
}  // namespace zel
