#include "FieldNames.h"

#include <algorithm>
#include <sstream>

#include "zel/definition/SketchFile.h"
#include "Surveyor.h"

namespace zel {
namespace {

struct NameCollector : FieldVisitor {
    void OnField(const Field& field) override {
        if (field.kind == FieldKind::kMarkedList || field.kind == FieldKind::kListEnd) return;
        std::vector<std::string>& level = field.isOfHeader       ? names.header
                                          : field.place->empty() ? names.file
                                                                 : names.definition;
        level.emplace_back(field.name);
    }
    FieldNames names;
};

}  // namespace

FieldNames FieldNames::Of(std::int32_t version) {
    SketchFile file;  // with both sections
    file.definitions.Append();
    file.SetVersion(version);
    std::ostringstream stream;
    file.Write(stream);
    NameCollector collector;
    Surveyor::Survey(stream.str(), collector);
    return std::move(collector.names);
}

bool FieldNames::Has(const std::string& name) const {
    const auto has = [&](const std::vector<std::string>& names) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    return has(header) || has(file) || has(definition);
}

}  // namespace zel
