#include "Machine.h"

#include <algorithm>
#include <array>

namespace zel {
namespace {

constexpr Word kPage = 0x1000;
constexpr Word kHeap = 0x20000000, kHeapSize = 0x2000000;
constexpr Word kStacks = 0x30000000, kStackRoom = 0x100000;
// Never mapped: going there leaves the image, for a function of the system or the end of a call.
constexpr Word kSystem = 0xF0000000, kReturn = 0xF8000000;
constexpr std::uint8_t kFresh = 0xCD, kFreed = 0xDD, kUnused = 0xA5;

void Check(uc_err error, const char* what) {
    if (error != UC_ERR_OK) throw Fault(std::string(what) + ": " + uc_strerror(error));
}

std::string Hex(Word value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", value);
    return text;
}

Word Rounded(Word size) { return (size + 15) / 16 * 16 + 16; }

}  // namespace

Machine::Machine() : heapEnd_(kHeap), valid_(kHeapSize), heap_(kHeapSize) {
    Check(uc_open(UC_ARCH_ARM, UC_MODE_ARM, &engine_), "open");
    Check(uc_ctl_set_cpu_model(engine_, UC_CPU_ARM_SA1110), "processor");
    Check(uc_mem_map_ptr(engine_, kHeap, kHeapSize, UC_PROT_READ | UC_PROT_WRITE, heap_.data()), "heap");
    const std::vector<std::uint8_t> pattern(kStackSize, kUnused);
    for (int i = 0; i < kThreads; ++i) {
        const Word bottom = StackTop(i) - kStackSize;
        Check(uc_mem_map(engine_, bottom, kStackSize, UC_PROT_READ | UC_PROT_WRITE), "stack");
        WriteBytes(bottom, pattern.data(), kStackSize);
    }
    uc_hook hook;
    Check(uc_hook_add(engine_, &hook, UC_HOOK_MEM_READ | UC_HOOK_MEM_WRITE,
                      reinterpret_cast<void*>(&OnAccess), this, 1, 0),
          "hook");
    Check(uc_hook_add(engine_, &hook, UC_HOOK_BLOCK, reinterpret_cast<void*>(&OnBlock), this, 1, 0), "hook");
}

Machine::~Machine() { uc_close(engine_); }

Word Machine::StackTop(int of) const { return kStacks + static_cast<Word>(of + 1) * kStackRoom; }

Word Machine::Register(int id) const {
    Word value = 0;
    uc_reg_read(engine_, id, &value);
    return value;
}

void Machine::SetRegister(int id, Word value) { uc_reg_write(engine_, id, &value); }

void Machine::OnBlock(uc_engine*, std::uint64_t, std::uint32_t size, void* self) {
    static_cast<Machine*>(self)->instructions_ += size / 4;
}

void Machine::OnAccess(uc_engine* engine, uc_mem_type, std::uint64_t address, int size, std::int64_t,
                       void* self) {
    auto& machine = *static_cast<Machine*>(self);
    if (!machine.checksAccesses_) return;
    machine.CheckAccess(static_cast<Word>(address), size);
    if (!machine.fault_.empty()) uc_emu_stop(engine);
}

void Machine::CheckAccess(Word address, int size) {
    if (!fault_.empty()) return;
    const auto last = static_cast<Word>(size - 1);
    if (address % static_cast<Word>(size) != 0) {
        fault_ = "an access of " + std::to_string(size) + " bytes at " + Hex(address);
    } else if (address - kHeap < kHeapSize && !(valid_[address - kHeap] && valid_[address - kHeap + last])) {
        fault_ = "an access outside live blocks at " + Hex(address);
    } else if (address - kStacks < kThreads * kStackRoom && address + 64 < Register(UC_ARM_REG_SP) &&
               address > Register(UC_ARM_REG_SP) - kStackSize) {
        fault_ = "an access below the stack pointer at " + Hex(address);
    }
}

Word Machine::Expose(std::string name, Function function) {
    functions_.push_back(std::move(function));
    names_.push_back(std::move(name));
    return kSystem + 4 * static_cast<Word>(functions_.size() - 1);
}

Word Machine::Argument(int index) const {
    constexpr int kRegisters[] = {UC_ARM_REG_R0, UC_ARM_REG_R1, UC_ARM_REG_R2, UC_ARM_REG_R3};
    return index < 4 ? Register(kRegisters[index])
                     : Read<Word>(Register(UC_ARM_REG_SP) + 4 * static_cast<Word>(index - 4));
}

// A function of the system may leave anything in the registers and flags that are not kept.
void Machine::CallSystem(Word address) {
    const std::size_t index = (address - kSystem) / 4;
    if (index >= functions_.size()) throw Fault("a jump to " + Hex(address));
    const Word stack = Register(UC_ARM_REG_SP), back = Register(UC_ARM_REG_LR);
    if (stack % 4 != 0) throw Fault(names_[index] + ": the stack is at " + Hex(stack));
    Word result = 0;
    try {
        result = functions_[index]();
    } catch (const Fault& fault) {
        throw Fault(names_[index] + ": " + fault.what());
    }
    SetRegister(UC_ARM_REG_R0, result);
    for (const int id : {UC_ARM_REG_R1, UC_ARM_REG_R2, UC_ARM_REG_R3, UC_ARM_REG_R12, UC_ARM_REG_LR})
        SetRegister(id, noise_ = noise_ * 1664525 + 1013904223);
    SetRegister(UC_ARM_REG_CPSR, Register(UC_ARM_REG_CPSR) ^ (noise_ & 0xF0000000));
    SetRegister(UC_ARM_REG_PC, back);
}

void Machine::RunUntil(Word end) {
    for (;;) {
        const uc_err error = uc_emu_start(engine_, Register(UC_ARM_REG_PC), end, 0, 0);
        const Word at = Register(UC_ARM_REG_PC);
        if (!fault_.empty()) throw Fault(fault_ + ", from " + Hex(at));
        if (at == end) return;
        if (error != UC_ERR_FETCH_UNMAPPED || at < kSystem)
            throw Fault(std::string(uc_strerror(error)) + " at " + Hex(at) + ", called from " +
                        Hex(Register(UC_ARM_REG_LR)));
        CallSystem(at);
    }
}

Word Machine::Call(Word address, const std::vector<Word>& arguments) {
    constexpr std::array kKept = {UC_ARM_REG_R4, UC_ARM_REG_R5, UC_ARM_REG_R6,  UC_ARM_REG_R7,
                                  UC_ARM_REG_R8, UC_ARM_REG_R9, UC_ARM_REG_R10, UC_ARM_REG_R11};
    const bool nested = depth_ > 0;
    uc_context* context = nullptr;
    const Word outer = Register(UC_ARM_REG_SP);
    // A thread's first call begins at the top, one from within another below it.
    const bool onThisStack = nested && outer <= StackTop(thread) && outer > StackTop(thread) - kStackSize;
    if (nested) {
        Check(uc_context_alloc(engine_, &context), "context");
        uc_context_save(engine_, context);
    }
    Word stack = (onThisStack ? outer : StackTop(thread) - 64) / 8 * 8 - 4;
    if (arguments.size() > 4) stack -= (4 * static_cast<Word>(arguments.size() - 4) + 7) / 8 * 8;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        constexpr int kRegisters[] = {UC_ARM_REG_R0, UC_ARM_REG_R1, UC_ARM_REG_R2, UC_ARM_REG_R3};
        if (i < 4) SetRegister(kRegisters[i], arguments[i]);
        if (i >= 4) Write(stack + 4 * static_cast<Word>(i - 4), arguments[i]);
    }
    std::array<Word, kKept.size()> kept;
    for (std::size_t i = 0; i < kKept.size(); ++i) {
        kept[i] = noise_ = noise_ * 1664525 + 1013904223;
        SetRegister(kKept[i], kept[i]);
    }
    SetRegister(UC_ARM_REG_SP, stack);
    const Word end = kReturn + 16 * static_cast<Word>(depth_);
    SetRegister(UC_ARM_REG_LR, end);
    SetRegister(UC_ARM_REG_PC, address);
    ++depth_;
    try {
        RunUntil(end);
    } catch (...) {
        --depth_;
        uc_context_free(context);
        throw;
    }
    --depth_;
    const Word result = Register(UC_ARM_REG_R0);
    if (Register(UC_ARM_REG_SP) != stack) throw Fault("a call returned with another stack");
    for (std::size_t i = 0; i < kKept.size(); ++i) {
        if (Register(kKept[i]) != kept[i]) throw Fault("a call did not keep r" + std::to_string(4 + i));
    }
    if (nested) {
        uc_context_restore(engine_, context);
        uc_context_free(context);
    }
    return result;
}

Word Machine::StackUsed() {
    Word most = 0;
    for (int i = 0; i < kThreads; ++i) {
        const Word bottom = StackTop(i) - kStackSize;
        std::string bytes = Bytes(bottom, kStackSize);
        const std::size_t first = bytes.find_first_not_of(static_cast<char>(kUnused));
        if (first != bytes.npos) most = std::max(most, kStackSize - static_cast<Word>(first));
        bytes.assign(kStackSize, static_cast<char>(kUnused));
        WriteBytes(bottom, bytes.data(), kStackSize);
    }
    return most;
}

void Machine::MapSection(Word address, const std::vector<std::uint8_t>& bytes, bool writable,
                         bool executable) {
    const auto size = (static_cast<Word>(bytes.size()) + kPage - 1) / kPage * kPage;
    const auto access = static_cast<std::uint32_t>(UC_PROT_READ | (writable ? UC_PROT_WRITE : 0) |
                                                   (executable ? UC_PROT_EXEC : 0));
    Check(uc_mem_map(engine_, address, size, access), "section");
    WriteBytes(address, bytes.data(), bytes.size());
}

Word Machine::Allocate(Word size) {
    if (allocationsLeft == 0) {
        hasRefused = true;
        if (refusesOnlyOne) allocationsLeft = -1;
        return 0;
    }
    if (allocationsLeft > 0) --allocationsLeft;
    const Word room = Rounded(size);
    Word block = heapEnd_;
    if (const auto found = free_.find(room); found != free_.end()) {
        block = found->second;
        free_.erase(found);
    } else {
        if (kHeap + kHeapSize - heapEnd_ < room) return 0;
        heapEnd_ += room;
    }
    blocks_[block] = size;
    std::memset(&heap_[block - kHeap], kFresh, size);
    std::memset(&valid_[block - kHeap], 1, size);
    return block;
}

void Machine::Release(Word block) {
    const auto found = blocks_.find(block);
    if (found == blocks_.end()) throw Fault("no block at " + Hex(block));
    std::memset(&heap_[block - kHeap], kFreed, found->second);
    std::memset(&valid_[block - kHeap], 0, found->second);
    free_.emplace(Rounded(found->second), block);
    blocks_.erase(found);
}

Word Machine::SizeOf(Word block) const {
    const auto found = blocks_.find(block);
    if (found == blocks_.end()) throw Fault("no block at " + Hex(block));
    return found->second;
}

std::uint64_t Machine::LiveBytes() const {
    std::uint64_t bytes = 0;
    for (const auto& [block, size] : blocks_) bytes += size;
    return bytes;
}

void Machine::ReadBytes(Word address, void* to, std::size_t size) const {
    if (address - kHeap < kHeapSize && address - kHeap + size <= kHeapSize) {
        if (size > 0 && !(valid_[address - kHeap] && valid_[address - kHeap + size - 1]))
            throw Fault("the system reads outside live blocks at " + Hex(address));
        std::memcpy(to, &heap_[address - kHeap], size);
        return;
    }
    if (uc_mem_read(engine_, address, to, size) != UC_ERR_OK)
        throw Fault("the system reads at " + Hex(address));
}

void Machine::WriteBytes(Word address, const void* from, std::size_t size) {
    if (address - kHeap < kHeapSize && address - kHeap + size <= kHeapSize) {
        if (size > 0 && !(valid_[address - kHeap] && valid_[address - kHeap + size - 1]))
            throw Fault("the system writes outside live blocks at " + Hex(address));
        std::memcpy(&heap_[address - kHeap], from, size);
        return;
    }
    if (uc_mem_write(engine_, address, from, size) != UC_ERR_OK)
        throw Fault("the system writes at " + Hex(address));
}

std::string Machine::Bytes(Word address, std::size_t size) const {
    std::string bytes(size, '\0');
    ReadBytes(address, bytes.data(), size);
    return bytes;
}

std::string Machine::Text(Word address) const {
    std::string text;
    while (const char next = Read<char>(address++)) text += next;
    return text;
}

std::u16string Machine::Wide(Word address) const {
    std::u16string text;
    while (const auto next = Read<char16_t>(address)) {
        text += next;
        address += 2;
    }
    return text;
}

void Machine::WriteWide(Word address, const std::u16string& text) {
    WriteBytes(address, text.c_str(), 2 * (text.size() + 1));
}

}  // namespace zel
