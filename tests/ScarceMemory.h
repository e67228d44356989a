// An allocator that gives out; for one source file of a test program.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

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
