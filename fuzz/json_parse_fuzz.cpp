// Any text as JSON: it is refused in one line that says where, or its values stand in the text one in
// another.

#include "zel/json/JsonText.h"
#include "zel/text/Failure.h"
#include "Target.h"

using zel::JsonText;
using zel::JsonValue;

namespace {

using Type = JsonText::Type;

void CheckValue(const JsonText& json, JsonValue value) {
    const std::string_view source = json.Source(value);
    const auto isBetween = [source](char first, char last) {
        return source.size() >= 2 && source.front() == first && source.back() == last;
    };
    const Type type = json.TypeOf(value);
    zel::Check(!source.empty() && (type == Type::kObject) == isBetween('{', '}') &&
                   (type == Type::kArray) == isBetween('[', ']') &&
                   (type == Type::kString) == isBetween('"', '"'),
               "a value says where it begins and ends");
    if (type == Type::kString) json.String(value);
}

// Within `outer`, behind what came before; says what is next.
void Push(JsonValue outer, std::size_t& behind, JsonValue inner, std::vector<JsonValue>& pending) {
    zel::Check(inner.begin >= behind && inner.end < outer.end, "values stand in order in their container");
    behind = inner.end;
    pending.push_back(inner);
}

void CheckAll(const JsonText& json) {
    std::vector<JsonValue> pending{json.Root()};
    std::vector<zel::JsonMember> members;
    while (!pending.empty()) {
        const JsonValue value = pending.back();
        pending.pop_back();
        CheckValue(json, value);
        std::size_t behind = value.begin + 1;
        if (json.TypeOf(value) == Type::kObject) {
            json.Members(value, members);
            for (const zel::JsonMember& member : members) Push(value, behind, member.value, pending);
        }
        JsonValue element;
        if (json.TypeOf(value) != Type::kArray || !json.FirstElement(value, element)) continue;
        do Push(value, behind, element, pending);
        while (json.NextElement(element));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        CheckAll(JsonText(zel::Input(data, size)));
    } catch (const zel::Failure& failure) {
        zel::Check(std::string_view(failure.what()).substr(0, 5) == "line ", "a refusal says where");
    }
    return 0;
}
