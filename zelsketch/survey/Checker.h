#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Field.h"

namespace zel {

// Something about a file, and where.
struct Finding {
    // Damage: a reader loses or misreads something. A note: what other writers leave, and every reader copes.
    enum Gravity { kNote, kDamage };

    std::size_t offset;
    std::string what;  // "Definitions[2].AreaName: the count is 25, at most 19 characters fit"
    Gravity gravity = kDamage;
};

using Findings = std::vector<Finding>;
bool IsDamaged(const Findings& findings);
// "damaged at 0x00000070: ...", in a line; empty where nothing is.
std::string DamageOf(const Findings& findings);

// Finds what is wrong with a file: everything that a writer would not have written, and versions that the
// store refuses. Findings come in file order. Behind the first code that is longer than its count byte tells,
// a reader is out of step: nothing more is looked for there.
class Checker : public FieldVisitor {
public:
    static Findings Check(std::string_view file);
    // Whether the header has the sections of its stored Flags, although readers look for more.
    static bool FollowsStoredFlags(std::string_view file);

    void OnField(const Field& field) override;
    void OnRecord(const Place& place) override;

private:
    explicit Checker(std::string_view file) : file_(file) {}

    static Findings CheckBySections(std::string_view file, bool& followsStoredFlags);
    static Findings CheckAs(std::string_view file, bool asWritten);
    void CheckText(const Field& field);
    void CheckMissing(const Field& field);
    void CheckVersion(const Field& field);
    void Add(const Field& field, const std::string& what);
    void AddRemains();
    bool FindLongCode(const Place& place);
    std::size_t LengthOfLongCode(std::size_t code);

    std::string_view file_;
    Findings findings_;
    Finding remains_{};  // the first text with old characters behind it
    std::size_t remainsCount_ = 0;
    std::int32_t version_ = 0;
    std::vector<std::size_t> codes_;  // offsets of the codes of the definition at hand
    bool isJudged_ = true;            // that definition was looked through for an over-long code
    int trials_ = 0;
    bool isCut_ = false;
    bool isOutOfStep_ = false;
};

}  // namespace zel
