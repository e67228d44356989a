// Any file goes to JSON and back, byte for byte, however odd, damaged or deep.

#include <pthread.h>

#include <cstdint>
#include <random>

#include "Checker.h"
#include "FileWalk.h"
#include "HexPrinter.h"
#include "PagePrinter.h"
#include "Tool.h"
#include "format/HexDump.h"

namespace zel {
namespace {

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
    std::ostringstream page;
    PagePrinter printer(page, {});
    Surveyor::Survey(file, printer);
    if (auto same = SameBytes(file, Assembler::Assemble(JsonOf(file))); !same) return same << JsonOf(file);
    if (auto same = SameBytes(file, BytesListed(file)); !same) return same << "hex listing";

    SketchFile loaded;
    ReadFrom(loaded, file);
    HeaderImage stored{};
    file.copy(reinterpret_cast<char*>(&stored), FileHeader::kMandatorySize);
    if (!Checker::Check(file).empty() || stored.Flags != loaded.header.image.Flags)
        return testing::AssertionSuccess();
    return SameBytes(Written(loaded), file) << "a sound file is one that the library writes";
}

std::string SampleOf(int version, int flags) {
    SketchFile file;
    file.header.image.Flags = flags;
    file.header.image.Type = static_cast<std::uint8_t>(version % 2 ? 5 : 1);
    file.header.image.CreatedBy.Put("J\xFCrgen \x80");
    DefinitionRecord& record = file.definitions.Append();
    for (int c = 1; c < 256; ++c) record.AreaCode.text += static_cast<char>(c);
    record.block.Multiplier = 0.1;
    record.block.AreaName.Put("a longer name");
    record.block.AreaName.Put("Living");
    record.Members.Append().SubtractAreaCode.text = "GAR";
    record.Members.Append().Members.Append().Hidden = 7;
    file.definitions.Append();
    file.SetVersion(version);
    return Written(file);
}

std::string Mutated(std::string file, std::mt19937& random) {
    const auto below = [&random](std::size_t limit) { return random() % (limit + 1); };
    for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
        const std::size_t at = below(file.size());
        const char byte = below(1) ? static_cast<char>(random()) : "\0\1\6\x7F\x80\xFF"[below(5)];
        switch (below(4)) {
            case 0:
                file.insert(at, 1, byte);
                break;
            case 1:
                file.erase(at, below(8));
                break;
            case 2:
                file.resize(at);
                break;
            case 3:
                file.append(below(300), byte);
                break;
            default:
                if (at < file.size()) file[at] = byte;
        }
    }
    return file;
}

TEST(RoundTrip, OddFilesOfEveryVersion) {
    std::mt19937 random(741);
    for (int version = 0; version <= 6; ++version) {
        for (const int flags : {0, 0x10, 0x100, 0x110}) {
            const std::string file = SampleOf(version, flags);
            ASSERT_TRUE(Survives(file));
            for (int i = 0; i < 100; ++i) ASSERT_TRUE(Survives(Mutated(file, random)));
        }
    }
}

TEST(RoundTrip, EveryLengthThatAFileMayBeCutTo) {
    const std::string file = SampleOf(5, 0x110);
    for (std::size_t size = 0; size < file.size(); ++size)
        ASSERT_TRUE(Survives(file.substr(0, size))) << size;
}

TEST(RoundTrip, EveryPatternOfADouble) {
    constexpr std::uint64_t kPatterns[] = {0x0000000000000001, 0x8000000000000000, 0x7FF0000000000000,
                                           0xFFF0000000000000, 0x7FF0000000000001, 0xFFFFFFFFFFFFFFFF,
                                           0x43F0000000000000, 0x7FEFFFFFFFFFFFFF, 0x3FB999999999999A};
    for (const std::uint64_t bits : kPatterns) {
        std::string file = SampleOf(5, 0x110);
        for (std::size_t i = 0; i < 8; ++i)
            file[107 + 5 + 1 + 2 + 255 + i] = static_cast<char>(bits >> (8 * i));
        EXPECT_TRUE(Survives(file)) << std::hex << bits;
    }
}

// A stack that no recursion over the levels would fit into.
TEST(RoundTrip, LevelsCostNoStack) {
    constexpr std::size_t kLevels = 100000;
    const std::string record = Hex("06 01 'A' 00*109 00 06 00 01");
    std::string file = SampleOf(5, 0x110).substr(0, 113);
    for (std::size_t i = 0; i < kLevels; ++i) file += record;
    file.append(kLevels + 1, '\0');

    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 256 * 1024);
    pthread_t thread;
    const auto run = [](void* bytes) -> void* {
        const std::string& deep = *static_cast<std::string*>(bytes);
        std::ostringstream page;
        PagePrinter printer(page, {});
        Surveyor::Survey(deep, printer);
        EXPECT_TRUE(Assembler::Assemble(JsonOf(deep)) == deep);
        EXPECT_TRUE(Checker::Check(deep).empty());
        return nullptr;
    };
    ASSERT_EQ(0, pthread_create(&thread, &attributes, run, &file));
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

}  // namespace
}  // namespace zel
