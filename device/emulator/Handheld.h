#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Image.h"
#include "Machine.h"
#include "Registry.h"
#include "TypeInfo.h"

namespace zel {

// A VARIANT's type and data, as they lie in memory.
struct Value {
    std::uint16_t type = kEmpty;
    std::uint64_t data = 0;

    static Value Int(std::int32_t number) { return {kI4, static_cast<std::uint32_t>(number)}; }
    static Value Real(double number);
    static Value Object(Word object) { return {kDispatch, object}; }
    Word Low() const { return static_cast<Word>(data); }
    double AsReal() const;
};

enum Result : Word {
    kOk = 0,
    kFalse = 1,
    kNotImplemented = 0x80004001,
    kNoInterface = 0x80004002,
    kOutOfMemory = 0x8007000E,
    kMemberNotFound = 0x80020003,
    kTypeMismatch = 0x80020005,
    kUnknownName = 0x80020006,
    kException = 0x80020009,
    kOverflow = 0x8002000A,
    kBadParameterCount = 0x8002000E,
    kParameterNotOptional = 0x8002000F,
    kElementNotFound = 0x8002802B
};

// Thrown where a program ends itself.
struct ProgramEnd {
    Word code;
};

// The handheld's system with the module loaded: the functions that the module imports, a registry, files in
// memory. What it does not imitate ends the test when the module calls it.
class Handheld {
public:
    static constexpr Word kPreferredBase = 0x10000000, kOtherBase = 0x01A50000;
    static constexpr char16_t kFolder[] = u"\\Programme";

    explicit Handheld(const std::string& file, Word base = kPreferredBase);
    ~Handheld();

    // The module's entry point, with the reason: 1 attach, 0 detach, 3 a thread ends.
    Word Enter(Word reason);
    // Unloads the module; what it did not give back, one line each.
    std::string Unload();

    // Runs a program to its end; gives what it ends with. What it shows stands in `shown`, one text a line.
    Word RunProgram(const std::string& file, const std::u16string& commandLine);
    std::string shown;

    // Clients' calls.
    Word Create(const std::string& clsid, const std::string& iid, Word& object);
    Word QueryInterface(Word object, const std::string& iid, Word& out);
    Word AddRef(Word object) { return machine.Invoke(object, 1); }
    Word Release(Word object) { return machine.Invoke(object, 2); }
    // Late-bound, as a script engine does it: the identifier of the name, then the call. Owned values in
    // `result` are the caller's.
    Word CallByName(Word object, const std::u16string& name, Word flags, std::vector<Value> arguments,
                    Value& result);

    // Automation strings and values in the handheld's memory.
    Word NewString(const std::u16string& text);
    void FreeString(Word text);
    std::u16string StringOf(Word text) const;
    Value ReadValue(Word place) const;
    void WriteValue(Word place, const Value& value);
    void Clear(Value value);
    Word Convert(const Value& from, std::uint16_t type, Value& to);
    std::u16string TextOf(const Value& value);

    // Memory of the system for arguments, until the scope ends.
    class Scratch {
    public:
        explicit Scratch(Handheld& handheld) : handheld_(handheld), mark_(handheld.scratch_) {}
        Scratch(const Scratch&) = delete;
        Scratch& operator=(const Scratch&) = delete;
        ~Scratch() { handheld_.scratch_ = mark_; }
        Word Take(Word size);
        Word Bytes(const std::string& bytes);
        Word Wide(const std::u16string& text);

    private:
        Handheld& handheld_;
        Word mark_;
    };

    Machine machine;
    RegistryTree registry;
    std::map<std::u16string, std::string> files;
    // Bytes that can still be written; negative: any number.
    long diskLeft = -1;
    Word Export(const std::string& name) const { return image_->Export(name); }
    // Whether any lock is held.
    bool HoldsLock() const;
    // What was drawn, one call a line.
    std::string drawn;
    // Functions of ole32 that this size of COM has; called by what they are found with.
    std::map<std::string, Machine::Function> ole;
    // Called before each function of the system, unless it is running already.
    std::function<void()> beforeSystem;
    std::unique_ptr<TypeLibraryInfo> library;

private:
    friend class Scratch;
    struct OpenFile {
        std::u16string name;
        std::size_t position;
    };
    struct Section {
        int owner = -1;
        int depth = 0;
    };
    // An object of the system: what it is for, and its references.
    struct SystemObject {
        const InterfaceInfo* type;
        long references;
    };

    void Define(const std::string& name, Machine::Function function);
    Word Import(const std::string& library, const std::string& name);
    Word A(int index) const { return machine.Argument(index); }
    Word Fail(Word error);
    Word LastErrorOf(bool succeeded, Word error);

    void DefineMemory();
    void DefineThreads();
    void DefineText();
    void DefineFiles();
    void DefineModules();
    void DefineRegistry();
    void DefineGraphics();
    void DefineStrings();
    void DefineValues();
    void DefineTypeLibraries();

    RegistryTree* KeyOf(Word handle);
    Word SetKey(RegistryTree* key, Word place);
    Word CopyValue(Word to, const Value& from);
    Value Followed(Value value) const;
    Word LoadLibrary(Word out);
    void RegisterLibrary();
    Word NewSystemObject(Word table, const InterfaceInfo* type);
    Word InvokeMember(const InterfaceInfo& type, Word object, Word member, Word flags, Word parameters,
                      Word result);
    Word Pass(const ParameterInfo& parameter, const Value& argument, std::vector<Word>& words,
              std::vector<Value>& owned);

    std::map<std::string, Machine::Function> functions_;
    std::map<std::string, Word> addresses_;
    std::unique_ptr<Image> image_;
    // Its own memory: arguments from below, objects that stay from above.
    Word scratch_, permanent_;
    bool inSystem_ = false;
    std::map<Word, OpenFile> open_;
    std::map<Word, Section> sections_;
    std::map<Word, RegistryTree*> keys_;
    std::set<Word> strings_;
    std::set<Word> slots_;
    std::map<std::pair<int, Word>, Word> slotValues_;
    std::map<int, Word> lastErrors_;
    std::map<Word, Image::Resource> resources_;
    std::map<Word, SystemObject> objects_;
    Word libraryObject_ = 0;
    Word libraryTable_ = 0, infoTable_ = 0;
    Word nextHandle_ = 0x51000004;
};

}  // namespace zel
