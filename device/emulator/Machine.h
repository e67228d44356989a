#pragma once

#include <unicorn/unicorn.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace zel {

// An address or a word of the handheld.
using Word = std::uint32_t;

// What the image does against the rules of its platform: ends the test.
struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The handheld's processor and memory, stricter than the real one: every access must be aligned, be allowed
// by its page and, in the heap, lie within a live block; functions of the system leave nothing in the
// registers and flags that the convention lets them use; calls must keep the others and the stack. The image
// is loaded where it is told to.
class Machine {
public:
    // Stacks are 64 KiB; a call begins at 4 modulo 8, which the convention allows.
    static constexpr Word kStackSize = 0x10000;
    static constexpr int kThreads = 2;

    Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    ~Machine();

    // A function of the system: the arguments are read with Argument, the result goes to r0.
    using Function = std::function<Word()>;
    // The address at which the image can call it.
    Word Expose(std::string name, Function function);
    Word Argument(int index) const;

    // Calls a function of the image as a client does, also from within a function of the system.
    Word Call(Word address, const std::vector<Word>& arguments);
    template <class... Arguments>
    Word Invoke(Word object, int slot, Arguments... arguments) {
        return Call(Read<Word>(Read<Word>(object) + 4 * static_cast<Word>(slot)),
                    {object, static_cast<Word>(arguments)...});
    }

    // Where calls run: each thread has a stack of its own.
    int thread = 0;
    // The most of a stack that any call has used since the last question, in bytes.
    Word StackUsed();
    std::uint64_t Instructions() const { return instructions_; }
    // For what the system does in the module's stead.
    void Count(std::uint64_t instructions) { instructions_ += instructions; }
    // Checks of each access make it some times slower.
    void CheckAccesses(bool check) { checksAccesses_ = check; }

    // Memory of an image's section, readable at least.
    void MapSection(Word address, const std::vector<std::uint8_t>& bytes, bool writable, bool executable);

    // The heap. Blocks are filled with a pattern when they are made and when they go.
    Word Allocate(Word size);
    void Release(Word block);
    Word SizeOf(Word block) const;
    std::size_t LiveBlocks() const { return blocks_.size(); }
    std::uint64_t LiveBytes() const;
    // Refused from the n-th allocation on (or only that one); negative: none is.
    long allocationsLeft = -1;
    bool refusesOnlyOne = false;
    bool hasRefused = false;

    template <class T>
    T Read(Word address) const {
        T value;
        ReadBytes(address, &value, sizeof value);
        return value;
    }
    template <class T>
    void Write(Word address, T value) {
        WriteBytes(address, &value, sizeof value);
    }
    void ReadBytes(Word address, void* to, std::size_t size) const;
    void WriteBytes(Word address, const void* from, std::size_t size);
    std::string Bytes(Word address, std::size_t size) const;
    std::string Text(Word address) const;
    std::u16string Wide(Word address) const;
    void WriteWide(Word address, const std::u16string& text);

private:
    static void OnAccess(uc_engine*, uc_mem_type, std::uint64_t address, int size, std::int64_t, void* self);
    static void OnBlock(uc_engine*, std::uint64_t, std::uint32_t size, void* self);

    Word Register(int id) const;
    void SetRegister(int id, Word value);
    void RunUntil(Word end);
    void CallSystem(Word address);
    void CheckAccess(Word address, int size);
    Word StackTop(int of) const;

    uc_engine* engine_ = nullptr;
    std::vector<std::function<Word()>> functions_;
    std::vector<std::string> names_;
    std::map<Word, Word> blocks_;     // live: size
    std::multimap<Word, Word> free_;  // by room: address
    Word heapEnd_;
    std::vector<std::uint8_t> valid_;  // of each byte of the heap
    std::vector<std::uint8_t> heap_;
    std::uint64_t instructions_ = 0;
    std::uint32_t noise_ = 0x5A17C0DE;
    bool checksAccesses_ = true;
    int depth_ = 0;
    std::string fault_;
};

}  // namespace zel
