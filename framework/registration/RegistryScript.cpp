#include "RegistryScript.h"

#include <cstdint>

namespace zel {
namespace {

// As deep as the registry itself goes.
constexpr std::size_t kMaxDepth = 512;

struct Word {
    std::wstring text;
    bool quoted = false;

    // Only a word without quotes has a meaning of its own.
    bool Is(const wchar_t* meaning) const { return !quoted && text == meaning; }
};

bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == L'\0'; }

bool Expand(std::wstring& text, std::wstring_view module) {
    for (std::size_t at = text.find(L'%'); at != text.npos; at = text.find(L'%', at)) {
        const std::size_t close = text.find(L'%', at + 1);
        if (close == text.npos) return false;
        const std::wstring name = text.substr(at + 1, close - at - 1);
        if (!name.empty() && name != L"MODULE") return false;
        const std::wstring_view replacement = name.empty() ? L"%" : module;
        text.replace(at, close - at + 1, replacement);
        at += replacement.size();
    }
    return true;
}

// Takes a quoted word off the front of `text`, which starts behind its opening quote.
bool TakeQuoted(std::wstring_view& text, std::wstring& word) {
    for (;;) {
        const std::size_t quote = text.find(L'\'');
        if (quote == text.npos) return false;
        word.append(text.substr(0, quote));
        text.remove_prefix(quote + 1);
        if (text.empty() || text[0] != L'\'') return true;
        word.push_back(L'\'');
        text.remove_prefix(1);
    }
}

void TakePlain(std::wstring_view& text, std::wstring& word) {
    std::size_t length = 0;
    while (length < text.size() && !IsBlank(text[length])) ++length;
    word = text.substr(0, length);
    text.remove_prefix(length);
}

// Splits a script into words; behind the last one stands an empty one without quotes.
bool Split(std::wstring_view text, std::wstring_view module, std::vector<Word>& words) {
    for (;;) {
        while (!text.empty() && IsBlank(text[0])) text.remove_prefix(1);
        Word& word = words.emplace_back();
        if (text.empty()) return true;
        word.quoted = text[0] == L'\'';
        if (word.quoted) {
            text.remove_prefix(1);
            if (!TakeQuoted(text, word.text)) return false;
        } else {
            TakePlain(text, word.text);
        }
        if (!Expand(word.text, module)) return false;
    }
}

// Decimal, or hexadecimal behind 0x.
bool ToNumber(std::wstring_view text, DWORD& number) {
    const bool hex = text.size() > 2 && text[0] == L'0' && text[1] == L'x';
    if (hex) text.remove_prefix(2);
    std::uint64_t sum = 0;
    for (wchar_t c : text) {
        const unsigned digit = c >= L'0' && c <= L'9'          ? c - L'0'
                               : hex && c >= L'a' && c <= L'f' ? c - L'a' + 10
                               : hex && c >= L'A' && c <= L'F' ? c - L'A' + 10
                                                               : 16;
        if (digit == 16) return false;
        sum = sum * (hex ? 16 : 10) + digit;
        if (sum > 0xFFFFFFFF) return false;
    }
    number = static_cast<DWORD>(sum);
    return !text.empty();
}

class Parser {
public:
    Parser(const std::vector<Word>& words, std::vector<RegistryKey>& keys)
        : next_(words.data()), keys_(keys) {}

    bool Run() {
        while (!next_->Is(L"")) {
            if (!(open_.empty() ? Root() : Statement())) return false;
        }
        return open_.empty();
    }

private:
    static constexpr std::size_t kRoot = static_cast<std::size_t>(-1);

    bool Accept(const wchar_t* meaning) {
        if (!next_->Is(meaning)) return false;
        ++next_;
        return true;
    }

    // A name or data: not empty, and none of the signs.
    bool TakeText(std::wstring& text, bool mayBeEmpty) {
        if (next_->Is(L"") || next_->Is(L"{") || next_->Is(L"}") || next_->Is(L"=")) return false;
        text = next_->text;
        ++next_;
        return mayBeEmpty || !text.empty();
    }

    bool Root() {
        if (!Accept(L"HKCR") && !Accept(L"HKEY_CLASSES_ROOT")) return false;
        open_.push_back(kRoot);
        return Accept(L"{");
    }

    bool Statement() {
        if (Accept(L"}")) {
            open_.pop_back();
            return true;
        }
        if (Accept(L"val")) return NamedValue();
        const Removal removal = Accept(L"NoRemove")      ? Removal::kNoRemove
                                : Accept(L"ForceRemove") ? Removal::kForceRemove
                                                         : Removal::kPlain;
        return Key(removal);
    }

    bool NamedValue() {
        RegistryValue value;
        if (open_.back() == kRoot || !TakeText(value.name, false) || !Accept(L"=")) return false;
        return Data(value, keys_[open_.back()]);
    }

    bool Key(Removal removal) {
        RegistryKey key;
        if (!TakeText(key.path, false)) return false;
        if (open_.back() != kRoot) key.path.insert(0, keys_[open_.back()].path + L"\\");
        key.removal = removal;
        keys_.push_back(std::move(key));
        if (Accept(L"=") && !Data(RegistryValue(), keys_.back())) return false;
        if (!Accept(L"{")) return true;
        open_.push_back(keys_.size() - 1);
        return open_.size() <= kMaxDepth;
    }

    bool Data(RegistryValue value, RegistryKey& key) {
        const bool isText = Accept(L"s");
        if (!isText && !Accept(L"d")) return false;
        if (!TakeText(value.text, isText)) return false;
        value.type = isText ? REG_SZ : REG_DWORD;
        if (!isText && !ToNumber(value.text, value.number)) return false;
        key.values.push_back(std::move(value));
        return true;
    }

    const Word* next_;
    std::vector<RegistryKey>& keys_;
    std::vector<std::size_t> open_;
};

}  // namespace

bool RegistryScript::Parse(std::wstring_view text, std::wstring_view module) {
    std::vector<Word> words;
    keys.clear();
    return Split(text, module, words) && Parser(words, keys).Run();
}

}  // namespace zel
