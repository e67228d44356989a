// The functions of the handheld's core library.
#include <algorithm>

#include "Handheld.h"

namespace zel {
namespace {

constexpr Word kFileNotFound = 2, kInvalidHandle = 6, kWriteProtected = 5, kDiskFull = 112,
               kSharingViolation = 32, kNoMoreItems = 259;
constexpr Word kNoHandle = 0xFFFFFFFF;

// The ANSI code page of a device in the western world: 1252.
constexpr char16_t kHighControls[] = {0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                      0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                      0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};

char16_t ToWide(char letter) {
    const auto code = static_cast<unsigned char>(letter);
    return code >= 0x80 && code < 0xA0 ? kHighControls[code - 0x80] : code;
}

// 0: the code page has no such character.
char ToAnsi(char16_t letter) {
    const auto* found = std::find(std::begin(kHighControls), std::end(kHighControls), letter);
    if (found != std::end(kHighControls))
        return static_cast<char>(0x80 + (found - std::begin(kHighControls)));
    return letter < 0x100 && (letter < 0x80 || letter >= 0xA0) ? static_cast<char>(letter) : '\0';
}

}  // namespace

void Handheld::DefineMemory() {
    // Counted as an instruction a byte, more than any that go by words take.
    for (const char* copy : {"memcpy", "memmove"}) {
        Define(copy, [this] {
            machine.Count(A(2));
            machine.WriteBytes(A(0), machine.Bytes(A(1), A(2)).data(), A(2));
            return A(0);
        });
    }
    Define("memset", [this] {
        machine.Count(A(2));
        const std::string bytes(A(2), static_cast<char>(A(1)));
        machine.WriteBytes(A(0), bytes.data(), A(2));
        return A(0);
    });
    Define("strlen", [this] {
        Word length = 0;
        while (machine.Read<std::uint8_t>(A(0) + length) != 0) ++length;
        machine.Count(length);
        return length;
    });
    Define("LocalAlloc", [this] {
        const Word block = machine.Allocate(A(1));
        return block ? block : Fail(14);
    });
    Define("LocalFree", [this] {
        machine.Release(A(0));
        return Word{0};
    });
    Define("LocalReAlloc", [this] {
        const Word old = A(0), size = A(1), kept = std::min(size, machine.SizeOf(old));
        const Word block = machine.Allocate(size);
        if (!block) return Fail(14);
        machine.WriteBytes(block, machine.Bytes(old, kept).data(), kept);
        machine.Release(old);
        return block;
    });
    Define("InterlockedExchangeAdd", [this] {
        const Word old = machine.Read<Word>(A(0));
        machine.Write(A(0), old + A(1));
        return old;
    });
    Define("InterlockedExchange", [this] {
        const Word old = machine.Read<Word>(A(0));
        machine.Write(A(0), A(1));
        return old;
    });
    Define("InterlockedCompareExchange", [this] {
        const Word old = machine.Read<Word>(A(0));
        if (old == A(2)) machine.Write(A(0), A(1));
        return old;
    });
}

// One thread runs at a time: one that had to wait for another would wait for ever.
void Handheld::DefineThreads() {
    Define("TlsCall", [this] {
        if (A(0) == 1) return Word{slots_.erase(A(1)) == 1};
        Word slot = 4;  // the first ones are the system's
        while (slots_.count(slot)) ++slot;
        if (slot >= 64) return kNoHandle;
        slots_.insert(slot);
        for (int i = 0; i < Machine::kThreads; ++i) slotValues_[{i, slot}] = 0;
        return slot;
    });
    Define("TlsGetValue", [this] {
        if (!slots_.count(A(0))) throw Fault("no such slot");
        lastErrors_[machine.thread] = 0;
        return slotValues_[{machine.thread, A(0)}];
    });
    Define("TlsSetValue", [this] {
        if (!slots_.count(A(0))) throw Fault("no such slot");
        slotValues_[{machine.thread, A(0)}] = A(1);
        return Word{1};
    });
    Define("GetLastError", [this] { return lastErrors_[machine.thread]; });
    Define("SetLastError", [this] { return Fail(A(0)); });
    Define("InitializeCriticalSection", [this] {
        sections_[A(0)] = {};
        return Word{0};
    });
    Define("DeleteCriticalSection", [this] {
        if (sections_.at(A(0)).depth != 0) throw Fault("the lock is held");
        sections_.erase(A(0));
        return Word{0};
    });
    Define("EnterCriticalSection", [this] {
        if (!sections_.count(A(0))) throw Fault("no such lock");
        Section& section = sections_[A(0)];
        if (section.depth > 0 && section.owner != machine.thread)
            throw Fault("another thread holds the lock");
        section.owner = machine.thread;
        ++section.depth;
        return Word{0};
    });
    Define("LeaveCriticalSection", [this] {
        Section& section = sections_.at(A(0));
        if (section.depth-- == 0 || section.owner != machine.thread) throw Fault("the lock is not held");
        return Word{0};
    });
    Define("Sleep", []() -> Word { throw Fault("waits"); });
    Define("RaiseException", []() -> Word { throw Fault("the process ends"); });
}

void Handheld::DefineText() {
    Define("MultiByteToWideChar", [this]() -> Word {
        const bool ended = A(3) == kNoHandle;
        const std::string text = ended ? machine.Text(A(2)) + '\0' : machine.Bytes(A(2), A(3));
        if (text.empty()) return Fail(87);
        if (A(5) == 0) return static_cast<Word>(text.size());
        if (A(5) < text.size()) return Fail(122);
        for (Word i = 0; i < text.size(); ++i) machine.Write(A(4) + 2 * i, ToWide(text[i]));
        return static_cast<Word>(text.size());
    });
    Define("WideCharToMultiByte", [this]() -> Word {
        std::string text;
        if (A(3) == kNoHandle) throw Fault("no length");
        for (Word i = 0; i < A(3); ++i) {
            const auto wide = machine.Read<char16_t>(A(2) + 2 * i);
            const char letter = ToAnsi(wide);
            text += wide != 0 && letter == 0 ? '?' : letter;
        }
        if (text.empty()) return Fail(87);
        if (A(5) == 0) return static_cast<Word>(text.size());
        if (A(5) < text.size()) return Fail(122);
        machine.WriteBytes(A(4), text.data(), text.size());
        return static_cast<Word>(text.size());
    });
    Define("wcstombs", [this] {
        std::string text;
        for (const char16_t wide : machine.Wide(A(1))) {
            const char letter = ToAnsi(wide);
            if (letter == 0) return kNoHandle;
            text += letter;
        }
        machine.WriteBytes(A(0), text.c_str(), std::min<std::size_t>(text.size() + 1, A(2)));
        return static_cast<Word>(std::min<std::size_t>(text.size(), A(2)));
    });
    Define("_ultow", [this] {
        std::u16string text;
        Word value = A(0);
        const Word radix = A(2);
        do text.insert(text.begin(), u"0123456789abcdefghijklmnopqrstuvwxyz"[value % radix]);
        while (value /= radix);
        machine.WriteWide(A(1), text);
        return A(1);
    });
}

void Handheld::DefineFiles() {
    constexpr Word kWrite = 0x40000000, kCreateAlways = 2, kOpenExisting = 3, kShareAll = 3;
    Define("CreateFileW", [=] {
        const std::u16string name = machine.Wide(A(0));
        const Word disposition = A(4);
        const bool exists = files.count(name) > 0;
        if (name.empty() ||
            (!exists && (disposition == kOpenExisting || name.find(u"\\nowhere\\") != name.npos))) {
            Fail(kFileNotFound);
            return kNoHandle;
        }
        // Another program has every file open, to read and to write.
        if (A(2) != kShareAll) {
            Fail(kSharingViolation);
            return kNoHandle;
        }
        if (disposition == kCreateAlways) files[name].clear();
        if ((A(1) & kWrite) == 0 && !exists) files[name];
        open_[nextHandle_] = {name, 0};
        return nextHandle_ += 4, nextHandle_ - 4;
    });
    Define("CloseHandle", [this] { return open_.erase(A(0)) == 1 ? Word{1} : Fail(kInvalidHandle); });
    Define("ReadFile", [this] {
        OpenFile& file = open_.at(A(0));
        const std::string& bytes = files.at(file.name);
        const std::size_t count =
            std::min<std::size_t>(A(2), bytes.size() - std::min(file.position, bytes.size()));
        if (count > 0) machine.WriteBytes(A(1), bytes.data() + file.position, count);
        file.position += count;
        machine.Write(A(3), static_cast<Word>(count));
        return Word{1};
    });
    Define("WriteFile", [this] {
        constexpr Word kOutput = 1;
        if (A(0) == kOutput) {
            shown += machine.Bytes(A(1), A(2));
            machine.Write(A(3), A(2));
            return Word{1};
        }
        OpenFile& file = open_.at(A(0));
        std::string& bytes = files.at(file.name);
        if (diskLeft >= 0 && A(2) > static_cast<Word>(diskLeft)) return Fail(kDiskFull);
        if (diskLeft >= 0) diskLeft -= static_cast<long>(A(2));
        bytes.resize(std::max(bytes.size(), file.position + A(2)));
        bytes.replace(file.position, A(2), machine.Bytes(A(1), A(2)));
        file.position += A(2);
        machine.Write(A(3), A(2));
        return Word{1};
    });
    Define("SetFilePointer", [this] {
        OpenFile& file = open_.at(A(0));
        const std::size_t from = A(3) == 0 ? 0 : A(3) == 1 ? file.position : files.at(file.name).size();
        file.position = from + static_cast<std::size_t>(static_cast<std::int32_t>(A(1)));
        return static_cast<Word>(file.position);
    });
    Define("GetFileSize", [this] {
        if (!open_.count(A(0))) return kNoHandle;
        return static_cast<Word>(files.at(open_.at(A(0)).name).size());
    });
}

void Handheld::DefineModules() {
    Define("GetModuleFileNameW", [this] {
        const std::u16string name =
            std::u16string(kFolder) + (A(0) == 0 ? u"\\zelreg.exe" : u"\\ZEL_BRU.dll");
        if ((A(0) != 0 && A(0) != image_->Base()) || A(2) <= name.size()) return Fail(122);
        machine.WriteWide(A(1), name);
        return static_cast<Word>(name.size());
    });
    Define("GetModuleHandleW",
           [this] { return machine.Wide(A(0)) == u"ole32.dll" ? Word{0x42000000} : Fail(126); });
    Define("GetProcAddressW", [this] {
        const std::u16string wide = machine.Wide(A(1));
        if (A(0) == image_->Base())
            return image_->Exports(Utf8(wide)) ? image_->Export(Utf8(wide)) : Fail(127);
        const auto found = ole.find(Utf8(wide));
        if (found == ole.end()) return Fail(127);
        functions_[found->first] = found->second;
        return Import("ole32.dll", found->first);
    });
    Define("LoadLibraryW", [this] {
        return machine.Wide(A(0)) == std::u16string(kFolder) + u"\\ZEL_BRU.dll" ? image_->Base() : Fail(126);
    });
    Define("FreeLibrary", [] { return Word{1}; });
    Define("MessageBoxW", [this] {
        shown += Utf8(machine.Wide(A(1))) + "\n";
        return Word{1};
    });
    Define("ExitThread", [this]() -> Word { throw ProgramEnd{A(0)}; });
    Define("FindResourceW", [this] {
        const Image::Resource found = image_->Find(machine.Wide(A(2)), A(1));
        if (found.size == 0) return Fail(1814);
        resources_[found.place] = found;
        return found.place;
    });
    Define("LoadResource", [this] { return resources_.at(A(1)).place; });
    Define("SizeofResource", [this] { return resources_.at(A(1)).size; });
}

RegistryTree* Handheld::KeyOf(Word handle) {
    if (handle == 0x80000000) return &registry;
    const auto found = keys_.find(handle);
    if (found == keys_.end()) throw Fault("no such key");
    return found->second;
}

Word Handheld::SetKey(RegistryTree* key, Word place) {
    if (!key) return kFileNotFound;
    keys_[nextHandle_] = key;
    machine.Write(place, nextHandle_);
    nextHandle_ += 4;
    return 0;
}

void Handheld::DefineRegistry() {
    Define("RegCreateKeyExW", [this] { return SetKey(KeyOf(A(0))->Find(machine.Wide(A(1)), true), A(7)); });
    Define("RegOpenKeyExW", [this] { return SetKey(KeyOf(A(0))->Find(machine.Wide(A(1)), false), A(4)); });
    Define("RegCloseKey", [this] { return keys_.erase(A(0)) == 1 ? Word{0} : kInvalidHandle; });
    Define("RegSetValueExW", [this] {
        KeyOf(A(0))->values[machine.Wide(A(1))] = {A(3), machine.Bytes(A(4), A(5))};
        return Word{0};
    });
    Define("RegDeleteValueW",
           [this] { return KeyOf(A(0))->values.erase(machine.Wide(A(1))) == 1 ? Word{0} : kFileNotFound; });
    Define("RegDeleteKeyW", [this] {
        RegistryTree* from = KeyOf(A(0));
        if (!from->Find(machine.Wide(A(1)), false)) return kFileNotFound;
        return from->Remove(machine.Wide(A(1))) ? Word{0} : kWriteProtected;
    });
    Define("RegEnumKeyExW", [this] {
        const RegistryTree* key = KeyOf(A(0));
        if (A(1) >= key->keys.size()) return kNoMoreItems;
        const std::u16string& name = std::next(key->keys.begin(), static_cast<long>(A(1)))->first;
        if (machine.Read<Word>(A(3)) <= name.size()) return Word{234};
        machine.WriteWide(A(2), name);
        machine.Write(A(3), static_cast<Word>(name.size()));
        return Word{0};
    });
}

// Drawing is written down, not done.
void Handheld::DefineGraphics() {
    struct Rectangle {
        std::int32_t left, top, right, bottom;
    };
    const auto text = [](const Rectangle& r) {
        return std::to_string(r.left) + " " + std::to_string(r.top) + " " + std::to_string(r.right) + " " +
               std::to_string(r.bottom);
    };
    Define("UnregisterClassW", [this] { return Fail(1411); });
    Define("GetStockObject", [this] { return 0x600 + A(0); });
    Define("SelectObject", [this] {
        drawn += "SelectObject " + std::to_string(A(1) - 0x600) + "\n";
        return Word{0x6FF};
    });
    Define("Rectangle", [=] {
        const Rectangle bounds = {static_cast<std::int32_t>(A(1)), static_cast<std::int32_t>(A(2)),
                                  static_cast<std::int32_t>(A(3)), static_cast<std::int32_t>(A(4))};
        drawn += "Rectangle " + text(bounds) + "\n";
        return Word{1};
    });
    Define("DrawTextW", [=] {
        drawn += "DrawText '" + Utf8(machine.Wide(A(1))) + "' " + text(machine.Read<Rectangle>(A(3))) +
                 " flags " + std::to_string(A(4)) + "\n";
        return Word{16};
    });
    Define("PtInRect", [=] {
        const auto r = machine.Read<Rectangle>(A(0));
        const auto x = static_cast<std::int32_t>(A(1)), y = static_cast<std::int32_t>(A(2));
        return Word{x >= r.left && x < r.right && y >= r.top && y < r.bottom};
    });
    Define("IntersectRect", [=] {
        const auto a = machine.Read<Rectangle>(A(1)), b = machine.Read<Rectangle>(A(2));
        Rectangle common = {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                            std::min(a.bottom, b.bottom)};
        const bool meet = common.left < common.right && common.top < common.bottom;
        machine.Write(A(0), meet ? common : Rectangle());
        return Word{meet};
    });
}

}  // namespace zel
