// What the page's worker calls: class Document with its answers as JSON texts, or bytes.

#include <emscripten/bind.h>
#include <emscripten/val.h>

#include <nlohmann/json.hpp>

#include "Document.h"
#include "zel/text/Failure.h"

namespace zel {
namespace {

using emscripten::val;

// What a call cannot do becomes { "failure": why }.
template <class Call>
std::string Answer(Call call) {
    try {
        return call();
    } catch (const Failure& failure) {
        return nlohmann::json{{"failure", failure.what()}}.dump();
    }
}

// A view of bytes that the worker copies before it calls again.
val Bytes(const std::string& bytes) {
    return val(
        emscripten::typed_memory_view(bytes.size(), reinterpret_cast<const unsigned char*>(bytes.data())));
}
val KeptBytes(std::string bytes) {
    static std::string kept;
    kept = std::move(bytes);
    return Bytes(kept);
}

// A change, and what the document looks like then.
template <auto change, class... Parameters>
std::string Changed(Document& document, Parameters... parameters) {
    return Answer([&] {
        (document.*change)(parameters...);
        return document.Summary();
    });
}

}  // namespace

EMSCRIPTEN_BINDINGS(zelsketch) {
    emscripten::class_<Document>("Document")
        .constructor<std::string>()
        .function("summary", &Document::Summary)
        .function("rows", &Document::Rows)
        .function("allRows", &Document::AllRows)
        .function("fields", &Document::Fields)
        .function("fieldAt", &Document::FieldAt)
        .function("fold", &Changed<&Document::Fold, std::int32_t, bool>)
        .function("indexOf", emscripten::optional_override([](Document& document, std::int32_t row) {
                      return std::to_string(document.IndexOf(row));
                  }))
        .function("find", &Document::Find)
        .function("bytes",
                  emscripten::optional_override([](Document& document, std::size_t from, std::size_t count) {
                      const std::string& bytes = document.bytes();
                      return KeptBytes(from < bytes.size() ? bytes.substr(from, count) : std::string());
                  }))
        .function("set", &Changed<&Document::Set, std::int32_t, std::string, std::string>)
        .function("add", &Changed<&Document::Add, std::int32_t>)
        .function("remove", &Changed<&Document::Remove, std::int32_t>)
        .function("move", &Changed<&Document::Move, std::int32_t, std::int32_t>)
        .function("undo", &Changed<&Document::Undo>)
        .function("redo", &Changed<&Document::Redo>)
        .function("saved", &Changed<&Document::MarkSaved>)
        .function("save",
                  emscripten::optional_override([](Document& document) { return Bytes(document.bytes()); }))
        .function("losses", emscripten::optional_override([](Document& document, std::int32_t version) {
                      return Answer([&] { return document.Losses(version); });
                  }))
        .function("converted", emscripten::optional_override([](Document& document, std::int32_t version) {
                      return KeptBytes(document.Converted(version));
                  }))
        .function("differences", emscripten::optional_override([](Document& document, const Document& other) {
                      return Answer([&] { return document.Differences(other); });
                  }))
        .function("json", emscripten::optional_override(
                              [](Document& document) { return KeptBytes(document.AsJson()); }))
        .function("csv", emscripten::optional_override([](Document& document, const std::string& name) {
                      return KeptBytes(document.AsCsv(name));
                  }));
}

}  // namespace zel
