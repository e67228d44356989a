#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "zel/survey/Field.h"

namespace zel {

// A file's records with their fields, to be looked at in any order. The file must outlive it.
class Outline : public FieldVisitor {
public:
    struct Record {
        std::size_t begin = 0;
        std::size_t end = 0;  // behind its members
        std::vector<Field> fields;
        std::vector<std::uint32_t> members;  // records
        Place place;
    };

    explicit Outline(std::string_view file);

    // The file itself: the header's fields, those behind it, and its definitions as members.
    const Record& root() const { return records_[0]; }
    const Record& operator[](std::uint32_t index) const { return records_[index]; }
    std::string_view Bytes(const Record& record) const {
        return file_.substr(record.begin, record.end - record.begin);
    }

    void OnField(const Field& field) override;
    void OnRecord(const Place& place) override;

private:
    std::string_view file_;
    std::deque<Record> records_;
    std::deque<std::string> completed_;  // fields that the file's end cuts
    std::vector<std::uint32_t> path_;    // from the file to the record at hand
};

}  // namespace zel
