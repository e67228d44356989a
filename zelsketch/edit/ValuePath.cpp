#include "ValuePath.h"

#include <algorithm>
#include <charconv>

#include "zel/text/Failure.h"
#include "zel/text/Windows1252.h"

namespace zel {
namespace {

class Parser {
public:
    explicit Parser(const std::string& text) : rest_(text) { path_.text = text; }

    ValuePath Path() {
        if (TakeWord("Header")) {
            path_.isOfHeader = true;
            if (!rest_.empty()) Expect('.'), TakeField();
            return path_;
        }
        const char* list = "Definitions";
        while (TakeWord(list)) {
            list = "Members";
            path_.isList = rest_.empty();
            if (path_.isList) return path_;
            path_.steps.push_back(TakeStep());
            if (rest_.empty()) return path_;
            Expect('.');
        }
        TakeField();
        return path_;
    }

private:
    [[noreturn]] void Fail(const std::string& expected) const {
        throw Failure(kUnusable, path_.text + ": expected " + expected +
                                     (rest_.empty() ? " at the end" : " in front of " + std::string(rest_)));
    }

    // A whole name.
    bool TakeWord(std::string_view word) {
        if (rest_.substr(0, word.size()) != word) return false;
        const std::string_view behind = rest_.substr(word.size());
        if (!behind.empty() && behind[0] != '.' && behind[0] != '[') return false;
        rest_ = behind;
        return true;
    }
    void Expect(char c) {
        if (rest_.empty() || rest_[0] != c) Fail(std::string("'") + c + '\'');
        rest_.remove_prefix(1);
    }
    void TakeField() {
        const auto isLetter = [](char c) {
            return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        };
        if (rest_.empty() || !std::all_of(rest_.begin(), rest_.end(), isLetter)) Fail("the name of a field");
        path_.field = rest_;
        rest_ = {};
    }

    ValuePath::Step TakeStep() {
        ValuePath::Step step;
        Expect('[');
        if (!rest_.empty() && rest_[0] == '"') {
            step.kind = ValuePath::Step::kCode;
            step.code = Encoded(TakeQuoted());
        } else {
            const std::string_view word = rest_.substr(0, std::min(rest_.find(']'), rest_.size()));
            if (word.empty()) Fail("an index, a code or '*'");
            rest_.remove_prefix(word.size());
            const auto parsed = std::from_chars(word.data(), word.data() + word.size(), step.index);
            const bool isNumber = parsed.ptr == word.data() + word.size();
            if (isNumber && parsed.ec != std::errc()) Fail("an index below 4294967296");
            step.kind = isNumber      ? ValuePath::Step::kIndex
                        : word == "*" ? ValuePath::Step::kEach
                                      : ValuePath::Step::kCode;
            if (step.kind == ValuePath::Step::kCode) step.code = Encoded(word);
        }
        Expect(']');
        return step;
    }

    // Quotes and backslashes in it stand behind a backslash.
    std::string TakeQuoted() {
        std::string text;
        for (rest_.remove_prefix(1); !rest_.empty() && rest_[0] != '"'; rest_.remove_prefix(1)) {
            if (rest_[0] == '\\' && rest_.size() > 1) rest_.remove_prefix(1);
            text += rest_[0];
        }
        Expect('"');
        return text;
    }

    std::string Encoded(std::string_view text) const {
        const std::optional<std::string> code = EncodeWindows1252(text);
        if (!code) Fail("characters of Windows-1252");
        return *code;
    }

    std::string_view rest_;
    ValuePath path_;
};

}  // namespace

ValuePath ValuePath::Parse(const std::string& text) { return Parser(text).Path(); }

}  // namespace zel
