// Showing, converting, and what a person at a terminal sees.

#include <algorithm>

#include "zel/definition/SketchFile.h"
#include "zel/text/Failure.h"
#include "zel/files/Files.h"
#include "zel/commands/Progress.h"
#include "zel/text/LongWork.h"
#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"
#include "zel/text/Utf16.h"
#include "format/HexDump.h"
#include "Tool.h"

namespace zel {
namespace {

TEST_F(ToolTest, ShowExplains) {
    Build("f", R"({ "Header": { "Signature": "X", "Flags": 258, "CreationDate": 147622, "CreationTime": 3661,
                                "ModifiedTime": -1, "CreatedBy": "\u20ac\u0081\u007f\u001b[31m" },
                    "Definitions": [ { "AreaCode": "A", "AreaCodeTag": 5, "Members": [ { "WallWidth": null,
                        "WallWidthBits": "0x7ff0000000000000", "AreaName": "x", "AreaNameCount": 25,
                        "AreaNameBehind": "ff" } ] } ], "CutShort": 4 })");
    std::string page = Zelsketch({"show", "f"}).out;
    const auto areBlanks = [](char a, char b) { return a == ' ' && b == ' '; };
    page.erase(std::unique(page.begin(), page.end(), areBlanks), page.end());
    for (const std::string expected :
         {"Flags 0x00000102 0x0100 CreatedByVersion and ModifiedByVersion follow; unknown bits 0x00000002",
          "CreationDate 147622 2004-03-05", "CreationTime 3661 01:01:01",
          "ModifiedTime -1 (not a time of day)", "CreatedBy \"\u20ac\\x81\\x7f\\x1b[31m\"",
          "AreaCode \"A\" (tag 5)", "WallWidth inf 0x7ff0000000000000",
          "AreaName \"x\" (count 25) (1 byte behind the text)",
          "The Signature is not \"TRN4WIN\": this is hardly an area definition file.",
          "The file is cut short: it lacks at least 4 bytes at its end."})
        EXPECT_NE(std::string::npos, page.find(expected + '\n')) << expected << " in\n" << page;
    EXPECT_EQ(std::string::npos, page.find('\033'));
    EXPECT_EQ(std::string::npos, Zelsketch({"show", "--json", "f"}).out.find("MembersOpening"));
    EXPECT_NE(std::string::npos, Zelsketch({"show", "--hex", "f"}).out.find("list ends  (1 byte missing)\n"));
    EXPECT_NE(std::string::npos, Zelsketch({"show", "f"}, true).out.find("\033[1mHeader"));
}

TEST_F(ToolTest, PagesIndentTwelveLevels) {
    std::string json, end;
    for (int i = 0; i < 20; ++i) json += R"({ "Members": [ )", end += " ] }";
    Build("f", R"({ "Definitions": [ )" + json + end + " ] }");
    const std::string page = Zelsketch({"show", "f"}).out;
    EXPECT_NE(std::string::npos, page.find("\n" + std::string(44, ' ') + "Definitions[0]"));
    EXPECT_EQ(std::string::npos, page.find("\n" + std::string(48, ' ')));
}

TEST_F(ToolTest, ListIsOneTableOfAllFiles) {
    Build(
        "a",
        R"({ "Header": { "FileVersion": 2 }, "Definitions": [ { "AreaCode": "GLA1", "AreaName": "K\u00fcche",
                    "Multiplier": 0.5, "Hidden": 1, "Members": [ { "AreaCode": "P\u001bQ" } ] } ] })");
    Build("b", R"({ "Definitions": [ { "AreaCode": "A\u0000B", "AreaName": "1,\"2\"", "AreaNameCount": 25,
                    "AreaDescription": "a\tb\\", "WallWidth": null, "WallWidthBits": "0x7ff0000000000000",
                    "WallHeight": -0.0, "SegmentStyle": "\r", "SubtractAreaCode": "GAR " } ], "CutShort": 1 })");
    const Outcome page = Zelsketch({"list", "b", "a"});
    EXPECT_EQ(
        "File  AreaCode      AreaName             AreaDescription      Multiplier  Place\n"
        "b     A             1,\"2\"                a\\x09b\\              0           Definitions[0]\n"
        "a     GLA1          K\u00fcche                                     0.5         Definitions[0]\n"
        "a       P\\x1bQ                                                0           "
        "Definitions[0].Members[0]\n",
        page.out);
    EXPECT_EQ("zelsketch: b: cut short, it lacks at least 1 byte\n", page.error);
    EXPECT_EQ(1, page.status);
    const std::string fields =
        "AreaCode,Multiplier,CalcType,AreaName,AreaDescription,WallWidth,WallHeight,SegmentStyle,FillPattern,"
        "LineColor,FillColor,PostDescription,PostArea,DimensionType,Hidden,SubtractAreaCode";
    // and what later versions have
    std::istringstream rows(Zelsketch({"list", "--csv", "b", "a"}).out);
    std::string row;
    for (const std::string& expected :
         {"File,Place," + fields,
          std::string("b,Definitions[0],A,0,0,\"1,\"\"2\"\"\",a\tb\\,inf,-0.0,\"\r\",0,0,0,0,0,0,0,\"GAR \""),
          std::string("a,Definitions[0],GLA1,0.5,0,K\u00fcche,,0,0,,0,0,0,0,0,0,1,"),
          std::string("a,Definitions[0].Members[0],P\x1bQ,0,0,,,0,0,,0,0,0,0,0,0,0,")}) {
        EXPECT_EQ(expected, std::getline(rows, row) ? row.substr(0, expected.size()) : "");
        EXPECT_EQ(expected[0] == 'b', row.find("GAR") != row.npos) << row;
    }
    EXPECT_FALSE(std::getline(rows, row));
    const std::string tabs = Zelsketch({"list", "--tsv", "b"}).out;
    EXPECT_NE(std::string::npos, tabs.find("\nb\tDefinitions[0]\tA\t0\t0\t1,\"2\"\ta\\tb\\\\\tinf\t"));
}

TEST(Text, OfAnyBytesIsShownAndTakenUp) {
    const std::pair<std::string, std::string> shown[] = {
        {"\x7f\xC2\x9F\xC2\xA0", "\\x7f\\xc2\\x9f\xC2\xA0"},
        {"\xC1\x81", "\\xc1\\x81"},
        {"\xE0\x9F\xBF\xE0\xA0\x80", "\\xe0\\x9f\\xbf\xE0\xA0\x80"},
        {"\xED\xA0\x80", "\\xed\\xa0\\x80"},
        {"\xF0\x8F\xBF\xBF", "\\xf0\\x8f\\xbf\\xbf"},
        {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
        {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"}};
    for (const auto& [bytes, text] : shown) EXPECT_EQ(text, Shown(bytes));
    const std::pair<std::string, std::string> converted[] = {{Hex("FF FE FF DB FF DF"), "\xF4\x8F\xBF\xBF"},
                                                             {Hex("FE FF 01 42 D8 00 00 61"),
                                                              "\xC5\x82\xED\xA0\x80"
                                                              "a"},
                                                             {Hex("FF FE 61 00 62"), "a\xFF"}};
    for (const auto& [bytes, text] : converted) EXPECT_EQ(text, Utf8OfMarkedUtf16(bytes));
    EXPECT_EQ(std::string::npos, PlaceText(Place(33, {"M", 0})).find("levels"));
    EXPECT_NE(std::string::npos, PlaceText(Place(34, {"M", 0})).find("].(2 levels).M["));
}

TEST(Text, DaysOfTheCalendar) {
    const std::string none = "(no date of the years 1 to 9999)";
    const std::pair<std::int64_t, std::string> cases[] = {
        {366, "1601-01-01"},     {59, "1600-02-29"}, {-1, "1599-12-31"},      {146096, "1999-12-31"},
        {-584022, "0001-01-01"}, {-584023, none},    {3068036, "9999-12-31"}, {3068037, none}};
    for (const auto& [day, text] : cases) EXPECT_EQ(text, DayText(day)) << day;
}

TEST_F(ToolTest, ConvertListsWhatIsLostAndNeverOverwrites) {
    Build("f", R"({ "FileFlags": 5, "DefinitionType": 1, "Definitions": [
                    { "AreaCode": "A", "Hidden": 1, "Members": [ { "SubtractAreaCode": "GAR" } ] } ] })");
    EXPECT_EQ(
        "lost: DefinitionType = 1\nlost: FileFlags = 0x00000005\nlost: "
        "Definitions[0].Members[0].SubtractAreaCode = \"GAR\"\n"
        "g: version 2, 3 values lost\n",
        Zelsketch({"convert", "--to-version", "2", "f", "g"}).out);
    EXPECT_EQ("g: sound\n", Zelsketch({"check", "g"}).out);
    const std::string first = Get("g");
    EXPECT_NE(std::string::npos, Zelsketch({"show", "--json", "g"}).out.find("\"Hidden\": 1"));
    EXPECT_EQ(2, Zelsketch({"convert", "--to-version", "3", "f", "g"}).status);
    EXPECT_THROW(WriteFile("g", "new", Overwrite::kRefuse), Failure);
    EXPECT_EQ(first, Get("g"));
}

// From version 5 on, readers look for sections in files of type 5.
TEST_F(ToolTest, ConvertWritesTheSectionsThatTheNewVersionImplies) {
    Build("f", R"({ "Header": { "Type": 5, "FileVersion": 4, "Flags": 0 } })");
    const Outcome outcome = Zelsketch({"convert", "--to-version", "5", "f", "g"});
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ(0u, outcome.out.find("changed: Header.Flags: 0x00000000 to 0x00000110, ")) << outcome.out;
    EXPECT_EQ("", outcome.error);
    EXPECT_EQ("g: sound\n", Zelsketch({"check", "g"}).out);
}

TEST_F(ToolTest, ConvertRefusesDamageAndTakesUpTheRest) {
    const std::string version = std::to_string(SketchFile::kNewestVersion);
    std::string json =
        R"({ "Header": { "FileVersion": )" + version +
        R"( }, "Definitions": [ { "AreaCode": "A0", "Members": [ { "AreaCode": "M0" }, { "AreaCode": "M1" } ] })";
    for (int i = 1; i < 10; ++i) json += R"(, { "AreaCode": "A)" + std::to_string(i) + "\" }";
    Build("f", json + " ] }");
    const std::string sound = Get("f");
    const auto at = [&](const char* code) { return sound.find(code) - 2; };
    const std::size_t size = at("A2") - at("A1");
    std::string withCounts = sound;
    for (const std::size_t count :
         {std::size_t{0}, std::size_t{54}, std::size_t{65}, std::size_t{86}, at("A4") + 34, at("A5") + 71})
        withCounts[count] = '\x7f';
    const auto with = [&](const char* code, std::size_t offset, char c, std::string file) {
        file[at(code) + offset] = c;
        return file;
    };
    struct {
        const char* name;
        std::string file;
        std::string says;     // a line of the salvage
        std::size_t missing;  // definitions
    } const cases[] = {
        {"a tag is zero", with("A3", 0, '\0', sound), "taken up: Definitions[3] from 0x", 0},
        {"a member's tag is zero", with("M1", 0, '\0', sound), "taken up: Definitions[0].Members[1]", 0},
        {"a count is wrong", with("A3", 13, '\x19', sound), "0 bytes left behind", 0},
        {"counts of texts are wrong", withCounts, "0 bytes left behind", 0},
        {"bytes are gone", std::string(sound).erase(at("A3") + 20, 30), "taken up: Definitions[3] from 0x",
         1},
        {"bytes of a member are gone", std::string(sound).erase(at("M0") + 20, 30), "left behind: ", 1},
        {"bytes are too many", std::string(sound).insert(at("A3"), "rubbish"), "left behind: 7 bytes", 0},
        {"the end is cut", sound.substr(0, at("A9") + 50), "missing: ", 0},
        {"the list ends early", std::string(sound).insert(at("A3"), 1, '\0'), "taken up: Definitions[3]", 0},
        {"two counts are wrong", with("A3", 13, 'P', with("A3", 34, 'P', sound)), "left behind: ", 1},
        {"a tag and what follows", with("A3", 0, '\7', sound).insert(at("A4") - 1, "rubbish"),
         "left behind: ", 1},
        {"a tag is zero, its code odd", with("A3", 0, '\0', with("A3", 2, '\1', sound)), "left behind: ", 1},
        {"a tag in front of the cut", with("A9", 0, '\7', sound.substr(0, at("A9") + 50)),
         "left behind: ", 1},
    };
    for (const auto& c : cases) {
        Put("f", c.file);
        const Outcome refused = Zelsketch({"convert", "--to-version", version, "f", "g"});
        EXPECT_EQ(0u, refused.error.find("zelsketch: f: damaged at 0x")) << c.name << refused.error;
        EXPECT_EQ(1, refused.status);
        EXPECT_FALSE(std::filesystem::exists("g"));
        const Outcome outcome = Zelsketch({"convert", "--salvage", "--to-version", version, "f", "g"});
        EXPECT_NE(std::string::npos, outcome.out.find(c.says)) << c.name << '\n' << outcome.out;
        EXPECT_EQ(1, outcome.status);
        EXPECT_EQ("g: sound\n", Zelsketch({"check", "g"}).out) << c.name;
        EXPECT_EQ(sound.size() - c.missing * size, Get("g").size()) << c.name << '\n' << outcome.out;
        std::filesystem::remove("g");
        const bool hasFinds = outcome.out.find("taken up: ") != std::string::npos;
        const Outcome shown = Zelsketch({"show", "--salvage", "f"});
        EXPECT_EQ(hasFinds, shown.out.find("  (taken up from 0x") != std::string::npos);
        EXPECT_EQ(1, shown.status);
        for (const char* command : {"check", "show", "list"})
            EXPECT_EQ(hasFinds, Zelsketch({command, "f"}).error.find("f: reading could go on at 0x") !=
                                    std::string::npos)
                << command << ' ' << c.name;
    }
    std::string several = sound;
    for (const char* code : {"A1", "A3", "A5", "A7"}) {
        several[at(code)] = '\0';
        Put("f", several);
        EXPECT_EQ(several[at("A7")] == '\0',
                  Zelsketch({"list", "f"}).error.find(" and so on;") != std::string::npos);
    }
    Put("f",
        "\x7f"
        "ELF" +
            std::string(1000, '\1'));
    EXPECT_EQ(1, Zelsketch({"convert", "--salvage", "--to-version", "4", "f", "g"}).status);
    EXPECT_FALSE(std::filesystem::exists("g"));
}

// Programs that run side by side share a terminal: a line that takes two writes is torn.
TEST_F(ToolTest, ALineIsOneWrite) {
    struct Writes : std::streambuf {
        std::streamsize xsputn(const char* from, std::streamsize size) override {
            all.emplace_back(from, static_cast<std::size_t>(size));
            return size;
        }
        int overflow(int c) override { return all.emplace_back(1, static_cast<char>(c)), c; }
        std::vector<std::string> all;
    } writes;
    std::istringstream in;
    std::ostream stream(&writes);
    Put("f", "\1");
    RunCommandLine({"check", "f", "missing"}, {in, stream, stream});
    EXPECT_EQ(3u, writes.all.size());
    for (const std::string& write : writes.all) EXPECT_EQ(write.size() - 1, write.find('\n')) << write;
}

TEST(ProgressBar, ShowsAfterASecondOnATerminal) {
    static Progress::Clock::time_point now;
    std::ostringstream terminal, pipe;
    for (const bool isTerminal : {true, false}) {
        Progress bar(isTerminal ? terminal : pipe, isTerminal, [] { return now; });
        bar.ShowFiles(1, 4);
        now += std::chrono::milliseconds(1001);
        bar.ShowFiles(2, 4);
        bar.ShowFiles(3, 4);  // too soon after the last
    }
    EXPECT_EQ("\r[####################....................] 2 of 4 files\r\033[K", terminal.str());
    Progress bar(terminal, true, [] { return now; });
    now += std::chrono::milliseconds(1001);
    LongWork::show(150000000, 200000000);
    EXPECT_NE(std::string::npos, terminal.str().find("] 150 of 200 MB"));
    EXPECT_EQ("", pipe.str());
}

TEST_F(ToolTest, EveryCommandShowsItInOneBigFile) {
    std::string json = R"({ "Definitions": [ {})";
    for (int i = 0; i < 9000; ++i) json += ", {}";
    Build("f", json + " ] }");
    json += std::string(1000000, ' ');
    Put("big", json + " ] }");
    const std::vector<std::vector<std::string>> cases[] = {
        {{"build", "big", "g"},
         {"set", "f", "Header.CreatedBy=x"},
         {"add", "f", "Definitions"},
         {"remove", "f", "Definitions[0]"},
         {"move", "f", "Definitions[0]", "Definitions"},
         {"get", "f", "Header.CreatedBy"},
         {"diff", "f", "f.bak"},
         {"check", "f"},
         {"convert", "--to-version", "3", "f", "h"}},
        // These print as they go: the bar is for where that goes to a file.
        {{"list", "f"}, {"show", "f"}}};
    static Progress::Clock::time_point now;
    for (const bool printsAsItGoes : {false, true})
        for (const auto& arguments : cases[printsAsItGoes])
            for (const bool outIsTerminal : {false, true}) {
                std::istringstream in;
                std::ostringstream out, terminal;
                Progress bar(terminal, true, [] { return now += std::chrono::seconds(2); });
                RunCommandLine(arguments, {in, out, terminal, false, true, outIsTerminal, &bar});
                const std::string shown = terminal.str();
                const bool isWiped = shown.size() > 4 && shown.substr(shown.size() - 4) == "\r\033[K";
                EXPECT_EQ(!(printsAsItGoes && outIsTerminal),
                          isWiped && shown.find("] 0 of 1 MB") != shown.npos)
                    << arguments[0] << outIsTerminal << shown;
                EXPECT_EQ(std::string::npos, out.str().find('\r'));
                std::filesystem::remove("h");
            }
    // Other output takes its place.
    std::istringstream in;
    std::ostringstream both;
    Progress bar(both, true, [] { return now += std::chrono::seconds(2); });
    RunCommandLine({"check", "f", "f"}, {in, both, both, false, true, false, &bar});
    EXPECT_NE(std::string::npos, both.str().find("] 0 of 2 files\r\033[Kf: sound\n")) << both.str();
}

}  // namespace
}  // namespace zel
