#include "Outline.h"

#include "zel/survey/Surveyor.h"

namespace zel {

Outline::Outline(std::string_view file) : file_(file), records_(1), path_{0} {
    records_[0].end = file.size();
    Surveyor::Survey(file, *this);
}

void Outline::OnRecord(const Place& place) {
    path_.resize(place.size());
    const auto index = static_cast<std::uint32_t>(records_.size());
    records_[path_.back()].members.push_back(index);
    path_.push_back(index);
    records_.emplace_back().place = place;
}

void Outline::OnField(const Field& field) {
    path_.resize(field.place->size() + 1);
    Record& record = records_[path_.back()];
    if (record.fields.empty()) record.begin = field.offset;
    record.end = field.offset + field.present;
    Field& kept = record.fields.emplace_back(field);
    kept.place = &record.place;
    if (field.Missing()) kept.bytes = completed_.emplace_back(field.bytes);
}

}  // namespace zel
