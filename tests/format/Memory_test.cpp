// Deep nesting on a small stack, and running out of memory at every point.

#include <cstdlib>
#include <new>

#include "HexDump.h"
#include "SampleFile.h"
#include "SmallStack.h"

namespace {

std::ptrdiff_t liveBlocks = 0;
std::ptrdiff_t blocksLeft = -1;  // until one is refused; none is while negative

}  // namespace

// Not inlined: the compiler would warn of a pair that does not match.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (blocksLeft == 0) throw std::bad_alloc();
    if (blocksLeft > 0) --blocksLeft;
    void* block = std::malloc(size == 0 ? 1 : size);
    if (!block) throw std::bad_alloc();
    ++liveBlocks;
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    if (!block) return;
    --liveBlocks;
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

namespace zel {
namespace {

// Refuses the first block, then the second and so on, until the call needs no more. Each time, what was got
// must have been given back.
template <class Call>
void RefuseEachBlock(Call call) {
    bool refused = true;
    for (std::ptrdiff_t granted = 0; refused; ++granted) {
        ASSERT_LT(granted, 10000);
        const std::ptrdiff_t before = liveBlocks;
        blocksLeft = granted;
        refused = false;
        try {
            call();
        } catch (const std::bad_alloc&) {
            refused = true;
        }
        refused = refused || blocksLeft == 0;
        blocksLeft = -1;
        ASSERT_EQ(liveBlocks, before) << "after " << granted << " blocks";
    }
}

TEST(OutOfMemory, ReadWriteAndCopyGiveBackWhatTheyGot) {
    SketchFile file = SampleFile(5);
    const std::string bytes = Written(file);
    RefuseEachBlock([&] {
        std::istringstream stream(bytes);
        SketchFile().Read(stream);
    });
    RefuseEachBlock([&] {
        std::ostringstream stream;
        file.Write(stream);
    });
    RefuseEachBlock([&] { SketchFile copy(file); });
}

TEST(OutOfMemory, AFailedAssignmentChangesNothing) {
    const SketchFile source = SampleFile(5);
    DefinitionRecord target;
    const std::string before = Written(target);
    std::ptrdiff_t granted = 0;
    for (bool refused = true; refused; ++granted) {
        blocksLeft = granted;
        refused = false;
        try {
            target = source.definitions.Elements().front();
        } catch (const std::bad_alloc&) {
            refused = true;
        }
        blocksLeft = -1;
        EXPECT_TRUE(!refused || Written(target) == before) << granted;
    }
    EXPECT_EQ(target.Members.Elements().size(), 2u);
}

TEST(Depth, AHundredThousandLevelsNeedNoStack) {
    constexpr std::size_t kDepth = 100000;
    SketchFile empty;
    std::string bytes = Written(empty);
    bytes.pop_back();
    for (std::size_t i = 0; i < kDepth; ++i) bytes += Hex("06 00 00*109 00 06 00 01");
    bytes.append(kDepth + 1, '\0');
    std::string written;
    std::int32_t deepest = 0;
    OnSmallStack([&] {
        SketchFile file;
        ReadFrom(file, bytes);
        SketchFile copy(file);
        file = SketchFile();
        written = Written(copy);
        copy.SetVersion(3);
        const DefinitionList* list = &copy.definitions;
        while (!list->Elements().empty()) list = &list->Elements().front().Members;
        deepest = list->GetVersion();
        DefinitionRecord record(copy.definitions.Elements().front());
        record = DefinitionRecord();
    });
    EXPECT_TRUE(written == bytes);
    EXPECT_EQ(deepest, 3);
}

}  // namespace
}  // namespace zel
