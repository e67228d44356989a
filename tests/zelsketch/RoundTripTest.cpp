// Any file goes to JSON and back, byte for byte, however odd, damaged or deep.

#include <limits>
#include <random>

#include "zel/edit/Converter.h"
#include "zel/json/Assembler.h"
#include "zel/survey/Checker.h"
#include "zel/survey/FileWalk.h"
#include "zel/print/HexPrinter.h"
#include "zel/json/JsonWriter.h"
#include "zel/survey/Surveyor.h"
#include "Tool.h"
#include "format/HexDump.h"

namespace zel {
namespace {

std::string ThereAndBack(const std::string& file) {
    std::ostringstream json;
    JsonWriter writer(json);
    Surveyor::Survey(file, writer);
    writer.Finish();
    return Assembler::Assemble(json.str());
}

// The bytes that a hex listing shows.
std::string BytesListed(const std::string& file) {
    std::ostringstream listing;
    HexPrinter printer(listing, {});
    Surveyor::Survey(file, printer);
    std::string digits, line;
    for (std::istringstream lines(listing.str()); std::getline(lines, line);)
        if (line[0] != ' ') digits += line.substr(10, 48);
    return Hex(digits);
}

// Reads by every way there is, and gives what is wrong with what came out.
testing::AssertionResult Survives(const std::string& file) {
    if (auto same = SameBytes(file, ThereAndBack(file)); !same) return same << "JSON";
    if (auto same = SameBytes(file, BytesListed(file)); !same) return same << "hex listing";

    SketchFile loaded;
    ReadFrom(loaded, file);
    if (!Checker::Check(file).empty()) return testing::AssertionSuccess();
    // Loading adds the flags that Type implies.
    return SameBytes(file, Written(loaded).replace(12, 4, file, 12, 4)) << "sound, but nothing writes it";
}

std::string SampleOf(int version, int flags) {
    SketchFile file;
    file.header.image.Flags = flags;
    file.header.image.Type = static_cast<std::uint8_t>(version % 2 ? 5 : 1);
    file.header.image.CreatedBy.Put("J\xFCrgen \x80");
    DefinitionRecord& record = file.definitions.Append();
    for (int c = 1; c < 256; ++c) record.AreaCode.text += static_cast<char>(c);
    record.block.WallWidth = -0.0;
    record.block.WallHeight = std::numeric_limits<double>::quiet_NaN();
    record.block.AreaName.Put("a longer name");
    record.block.AreaName.Put("Living");
    DefinitionRecord& member = record.Members.Append();
    member.SubtractAreaCode.text = "GAR";
    member.block.Multiplier = std::numeric_limits<double>::denorm_min();
    member.block.WallWidth = -std::numeric_limits<double>::infinity();
    member.block.WallHeight = std::numeric_limits<double>::max();
    member.Members.Append().Hidden = 7;
    file.SetVersion(version);
    return Written(file);
}

std::string Mutated(std::string file, std::mt19937& random) {
    constexpr char kOddBytes[] = "\0\1\6\x7F\x80\xFF'";
    for (std::size_t changes = 1 + random() % 4; changes > 0; --changes)
        file.replace(random() % (file.size() + 1), random() % 8, random() % 3, kOddBytes[random() % 7]);
    return file;
}

TEST(RoundTrip, OddFilesOfEveryVersion) {
    std::mt19937 random(741);
    for (int version = 0; version <= SketchFile::kNewestVersion + 1; ++version) {
        for (const int flags : {0, 0x10, 0x100, 0x110}) {
            const std::string file = SampleOf(version, flags);
            ASSERT_TRUE(Survives(file));
            for (int i = 0; i < 100; ++i) {
                ASSERT_TRUE(Survives(Mutated(file, random)));
                ASSERT_TRUE(Survives(file.substr(0, random() % file.size())));
            }
        }
    }
}

// Definitions pass one at a time; the whole file at once is what it has to come to.
TEST(RoundTrip, ConversionIsWhatLoadingAndSavingGives) {
    std::mt19937 random(741);
    std::size_t dropped = 0, kept = 0;
    for (int from = 0; from <= SketchFile::kNewestVersion; ++from) {
        for (int i = 0; i < 200; ++i) {
            const std::string sample = SampleOf(from, i % 3 ? 0x110 : 0);
            const std::string file = i % 2 ? Mutated(sample, random) : sample;
            SketchFile loaded;
            std::istringstream stream(file);
            if (!loaded.Read(stream).good() || !loaded.HasDefinitions()) continue;
            const int to = 1 + i % SketchFile::kNewestVersion;
            const Conversion conversion = Converter::Convert(file, to);
            const bool dropsBytes = Written(loaded).replace(12, 4, file, 12, 4) != file;
            ASSERT_EQ(dropsBytes, conversion.dropsBytes);
            ++(dropsBytes ? dropped : kept);
            loaded.SetVersion(to);
            loaded.header.image.Flags = AsRead(loaded.header.image).image.Flags;
            ASSERT_TRUE(SameBytes(Written(loaded), conversion.file)) << from << " to " << to;
        }
    }
    EXPECT_TRUE(Converter::Convert(SampleOf(5, 0x110).replace(0, 1, "\1"), 5).dropsBytes) << "in the head";
    EXPECT_GT(dropped, 100u);
    EXPECT_GT(kept, 100u);
}

TEST(RoundTrip, KeysStandInAnyOrderAndWhatIsLeftOutIsAsInANewFile) {
    SketchFile expected;
    expected.definitions.Append().AreaCode.text = "A";
    expected.SetVersion(1);
    EXPECT_TRUE(SameBytes(
        Written(expected),
        Assembler::Assemble(
            "\xEF\xBB\xBF"
            R"({ "Definitions": [ { "Members": [], "AreaCode": "\u0041" } ], "Header": { "FileVersion": 1 } })")));
}

// More levels than a stack holds.
TEST(RoundTrip, LevelsCostNoStack) {
    constexpr std::size_t kLevels = 100000;
    std::string file = SampleOf(5, 0x110).substr(0, 113);
    for (std::size_t i = 0; i < kLevels; ++i) file += Hex("06 01 'A' 00*109 00 06 00 01");
    file.append(kLevels + 1, '\0');
    EXPECT_TRUE(ThereAndBack(file) == file);
    EXPECT_TRUE(Checker::Check(file).empty());
}

}  // namespace
}  // namespace zel
