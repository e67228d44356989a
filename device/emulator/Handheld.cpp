#include "Handheld.h"

namespace zel {
namespace {

constexpr Word kScratch = 0x40000000, kScratchSize = 0x100000;
constexpr Word kProcessAttach = 1, kProcessDetach = 0, kThreadDetach = 3;

}  // namespace

Handheld::Handheld(const std::string& file, Word base)
    : scratch_(kScratch), permanent_(kScratch + kScratchSize) {
    machine.MapSection(kScratch, std::vector<std::uint8_t>(kScratchSize), true, false);
    DefineMemory();
    DefineThreads();
    DefineText();
    DefineFiles();
    DefineModules();
    DefineRegistry();
    DefineGraphics();
    DefineStrings();
    DefineValues();
    DefineTypeLibraries();
    image_ = std::make_unique<Image>(
        machine, file, base,
        [this](const std::string& from, const std::string& name) { return Import(from, name); });
    const Image::Resource resource = image_->Find(u"TYPELIB", 1);
    library = std::make_unique<TypeLibraryInfo>(machine.Bytes(resource.place, resource.size));
    if (Enter(kProcessAttach) != 1) throw Fault("the module refuses to be loaded");
}

Handheld::~Handheld() = default;

Word Handheld::Enter(Word reason) {
    const Word result = machine.Call(image_->Entry(), {image_->Base(), reason, 0});
    // What a thread kept in its slots goes with it.
    if (reason == kThreadDetach) {
        for (const Word slot : slots_) slotValues_[{machine.thread, slot}] = 0;
    }
    return result;
}

std::string Handheld::Unload() {
    std::string left;
    const auto report = [&left](const char* what, std::size_t count) {
        if (count > 0) left += std::to_string(count) + " " + what + "\n";
    };
    if (machine.Call(image_->Export("DllCanUnloadNow"), {}) != kOk) left += "the module is in use\n";
    Enter(kProcessDetach);
    std::size_t objects = 0;
    for (const auto& [place, object] : objects_) objects += object.references != 0;
    report("blocks", machine.LiveBlocks());
    report("files", open_.size());
    report("keys", keys_.size());
    report("locks", sections_.size());
    report("thread slots", slots_.size());
    report("objects of the system", objects);
    return left;
}

// Each function is called through a place of its own, also one that is looked up.
void Handheld::Define(const std::string& name, Machine::Function function) {
    functions_[name] = [this, function = std::move(function)] {
        if (beforeSystem && !inSystem_) {
            inSystem_ = true;
            beforeSystem();
            inSystem_ = false;
        }
        return function();
    };
}

Word Handheld::Import(const std::string& from, const std::string& name) {
    const auto found = addresses_.find(name);
    if (found != addresses_.end()) return found->second;
    Machine::Function function = [from] {
        throw Fault("is not imitated");
        return Word{0};
    };
    if (const auto known = functions_.find(name); known != functions_.end()) function = known->second;
    return addresses_[name] = machine.Expose(name, function);
}

Word Handheld::RunProgram(const std::string& file, const std::u16string& commandLine) {
    constexpr Word kProgramBase = 0x00010000;
    const Image program(
        machine, file, kProgramBase,
        [this](const std::string& from, const std::string& name) { return Import(from, name); });
    Scratch scratch(*this);
    try {
        machine.Call(program.Entry(), {program.Base(), 0, scratch.Wide(commandLine), 5});
    } catch (const ProgramEnd& end) {
        return end.code;
    }
    throw Fault("the program does not end");
}

bool Handheld::HoldsLock() const {
    for (const auto& [place, section] : sections_) {
        if (section.depth > 0) return true;
    }
    return false;
}

Word Handheld::Fail(Word error) {
    lastErrors_[machine.thread] = error;
    return 0;
}

Word Handheld::Create(const std::string& clsid, const std::string& iid, Word& object) {
    static const std::string kClassFactory("\1\0\0\0\0\0\0\0\xC0\0\0\0\0\0\0\x46", 16);
    Scratch scratch(*this);
    const Word out = scratch.Take(4);
    Word result = machine.Call(image_->Export("DllGetClassObject"),
                               {scratch.Bytes(clsid), scratch.Bytes(kClassFactory), out});
    if (result != kOk) return result;
    const Word factory = machine.Read<Word>(out);
    result = machine.Invoke(factory, 3, 0u, scratch.Bytes(iid), out);
    object = machine.Read<Word>(out);
    Release(factory);
    return result;
}

Word Handheld::QueryInterface(Word object, const std::string& iid, Word& out) {
    Scratch scratch(*this);
    const Word place = scratch.Take(4);
    const Word result = machine.Invoke(object, 0, scratch.Bytes(iid), place);
    out = machine.Read<Word>(place);
    return result;
}

Word Handheld::CallByName(Word object, const std::u16string& name, Word flags, std::vector<Value> arguments,
                          Value& result) {
    Scratch scratch(*this);
    const Word nil = scratch.Bytes(std::string(16, '\0')), id = scratch.Take(4), names = scratch.Take(4);
    machine.Write(names, scratch.Wide(name));
    const Word found = machine.Invoke(object, 5, nil, names, 1u, 0x400u, id);
    if (found != kOk) return found;
    const Word values = scratch.Take(16 * static_cast<Word>(arguments.size() + 1));
    for (std::size_t i = 0; i < arguments.size(); ++i)
        WriteValue(values + 16 * static_cast<Word>(arguments.size() - 1 - i), arguments[i]);
    const Word parameters = scratch.Take(16), put = scratch.Take(4), out = scratch.Take(16);
    const bool puts = flags & 4;
    machine.Write<Word>(put, static_cast<Word>(-3));
    machine.Write(parameters, values);
    machine.Write<Word>(parameters + 4, puts ? put : 0);
    machine.Write(parameters + 8, static_cast<Word>(arguments.size()));
    machine.Write<Word>(parameters + 12, puts ? 1 : 0);
    WriteValue(out, {});
    const Word answer =
        machine.Invoke(object, 6, machine.Read<Word>(id), nil, 0x400u, flags, parameters, out, 0u, 0u);
    result = ReadValue(out);
    return answer;
}

Word Handheld::Scratch::Take(Word size) {
    const Word place = handheld_.scratch_;
    handheld_.scratch_ += (size + 7) / 8 * 8;
    if (handheld_.scratch_ > handheld_.permanent_) throw Fault("too many arguments at once");
    handheld_.machine.WriteBytes(place, std::string(size, '\0').data(), size);
    return place;
}

Word Handheld::Scratch::Bytes(const std::string& bytes) {
    const Word place = Take(static_cast<Word>(bytes.size()));
    handheld_.machine.WriteBytes(place, bytes.data(), bytes.size());
    return place;
}

Word Handheld::Scratch::Wide(const std::u16string& text) {
    const Word place = Take(2 * static_cast<Word>(text.size() + 1));
    handheld_.machine.WriteWide(place, text);
    return place;
}

}  // namespace zel
