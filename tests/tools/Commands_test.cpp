// Showing, converting, and what a person at a terminal sees.

#include "DefinitionRecord.h"
#include "Progress.h"
#include "SketchFile.h"
#include "Text.h"
#include "Tool.h"

namespace zel {
namespace {

// Each line of the page, its blanks single.
std::vector<std::string> Lines(const std::string& page) {
    std::vector<std::string> lines;
    std::string line, word;
    for (std::istringstream rest(page); std::getline(rest, line);) {
        std::istringstream words(line);
        std::string& joined = lines.emplace_back();
        while (words >> word) joined += (joined.empty() ? "" : " ") + word;
    }
    return lines;
}

TEST_F(ToolTest, ShowExplains) {
    Put("j", R"({ "Header": { "Flags": 258, "CreationDate": 147622, "CreationTime": 3661, "ModifiedTime": -1,
                              "CreatedBy": "\u20ac\u001b[31m" },
                  "Definitions": [ { "AreaCode": "A", "Members": [ { "WallWidth": "0x7ff0000000000000",
                      "AreaName": { "text": "x", "count": 25, "behind": "ff" } } ] } ], "CutShort": 3 })");
    ASSERT_EQ(0, Zelsketch({"build", "j", "f"}).status);
    const Outcome outcome = Zelsketch({"show", "f"});
    EXPECT_EQ(0, outcome.status);
    const std::vector<std::string> lines = Lines(outcome.out);
    for (const char* expected :
         {"Flags 0x00000102 0x0100 CreatedByVersion and ModifiedByVersion follow; unknown bits 0x00000002",
          "CreationDate 147622 2004-03-05", "CreationTime 3661 01:01:01",
          "ModifiedTime -1 (not a time of day)", "CreatedBy \"\u20ac\\x1b[31m\"", "Definitions[0].Members[0]",
          "WallWidth inf 0x7ff0000000000000", "AreaName \"x\" (count 25) (1 bytes behind the text)",
          "2 definitions", "The file is cut short: at least 3 bytes are missing at its end."})
        EXPECT_TRUE(std::count(lines.begin(), lines.end(), expected)) << expected << " in\n" << outcome.out;
    EXPECT_EQ(std::string::npos, outcome.out.find('\033'));
    EXPECT_NE(std::string::npos, Zelsketch({"show", "f"}, true).out.find("\033[1mHeader"));
}

TEST(Text, DaysOfTheCalendar) {
    const std::string none = "(no date of the years 1 to 9999)";
    const std::pair<std::int64_t, std::string> cases[] = {
        {0, "1600-01-01"},      {366, "1601-01-01"},     {59, "1600-02-29"}, {-1, "1599-12-31"},
        {146096, "1999-12-31"}, {-584022, "0001-01-01"}, {-584023, none},    {3068036, "9999-12-31"},
        {3068037, none},        {INT32_MAX, none},       {INT32_MIN, none}};
    for (const auto& [day, text] : cases) EXPECT_EQ(text, DayText(day)) << day;
}

TEST(Text, LongPlacesLeaveTheirMiddleOut) {
    EXPECT_EQ("Definitions[7].Members[0]", PlaceText({7, 0}));
    const std::string text = PlaceText(Place(100000, 3));
    EXPECT_EQ(0u, text.find("Definitions[3].Members[3].Members[3].Members[3].(99992 levels).Members[3]"));
    EXPECT_LT(text.size(), 150u);
}

TEST_F(ToolTest, ConvertListsWhatIsLostAndNeverOverwrites) {
    Put("j", R"({ "FileFlags": 5, "DefinitionType": 0, "Definitions": [
                  { "AreaCode": "A", "Hidden": 1, "Members": [ { "SubtractAreaCode": "GAR" } ] } ] })");
    ASSERT_EQ(0, Zelsketch({"build", "j", "f"}).status);
    const Outcome outcome = Zelsketch({"convert", "--to-version", "2", "f", "g"});
    EXPECT_EQ(
        "lost: FileFlags = 0x00000005\nlost: Definitions[0].Members[0].SubtractAreaCode = \"GAR\"\n"
        "g: version 2, 2 values lost\n",
        outcome.out);
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ("g: sound\n", Zelsketch({"check", "g"}).out);
    EXPECT_NE(std::string::npos, Zelsketch({"show", "g"}).out.find("Hidden                   1"));
    const std::string first = Get("g");
    EXPECT_EQ(2, Zelsketch({"convert", "--to-version", "3", "f", "g"}).status);
    EXPECT_EQ(first, Get("g"));
}

// From version 5 on, readers look for sections in files of type 5.
TEST_F(ToolTest, ConvertWritesTheSectionsThatTheNewVersionImplies) {
    Put("j", R"({ "Header": { "Type": 5, "FileVersion": 4, "Flags": 0 } })");
    ASSERT_EQ(0, Zelsketch({"build", "j", "f"}).status);
    EXPECT_EQ(0, Zelsketch({"convert", "--to-version", "5", "f", "g"}).status);
    EXPECT_EQ("g: sound\n", Zelsketch({"check", "g"}).out);
}

TEST_F(ToolTest, ConvertRefusesWhatItWouldNotCarryOver) {
    Put("j", R"({ "Definitions": [ {} ], "CutShort": 2 })");
    ASSERT_EQ(0, Zelsketch({"build", "j", "cut"}).status);
    Put("j", R"({ "Header": { "FileVersion": 6 } })");
    ASSERT_EQ(0, Zelsketch({"build", "j", "newer"}).status);
    for (const char* file : {"cut", "newer"}) {
        EXPECT_EQ(1, Zelsketch({"convert", "--to-version", "5", file, "g"}).status) << file;
        EXPECT_FALSE(std::filesystem::exists("g")) << file;
    }
}

Progress::Clock::time_point now;

TEST(ProgressBar, ShowsAfterASecondOnATerminal) {
    std::ostringstream terminal, pipe;
    {
        Progress bar(terminal, true, 4, [] { return now; });
        Progress none(pipe, false, 4, [] { return now; });
        bar.Show(1);
        EXPECT_EQ("", terminal.str());
        now += std::chrono::milliseconds(1001);
        bar.Show(2);
        none.Show(2);
        bar.Show(3);  // too soon after the last
    }
    EXPECT_EQ("\r[####################....................] 2 of 4 files\r\033[K", terminal.str());
    EXPECT_EQ("", pipe.str());
}

}  // namespace
}  // namespace zel
