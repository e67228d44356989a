#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "zel/survey/Field.h"

namespace zel {

// Draws the entities of a drawing to scale: a square for each anchor, a dot for each further point, the kind
// as a label, a colour for each style name and a frame around what an entity holds. What a kind means is not
// known here, so that no lines are drawn. Y grows downwards.
class SvgPrinter : public FieldVisitor {
public:
    explicit SvgPrinter(std::ostream& out) : out_(out) {}

    void OnField(const Field& field) override;
    void OnRecord(const Place&) override { records_.push_back(kNone); }
    void OnRecordEnd() override { records_.pop_back(); }
    void Finish();

private:
    static constexpr std::size_t kNone = SIZE_MAX;

    struct Dot {
        double x;
        double y;
        bool isAnchor;
    };
    struct Box {
        double left, top, right, bottom;  // left is above right where there is nothing in it
        void Include(const Box& other);
        bool IsEmpty() const { return left > right; }
        double Size() const;
    };
    static constexpr Box kEmpty = {1, 1, 0, 0};

    struct Entity {
        std::string place;
        std::int64_t kind;
        std::size_t parent;
        std::size_t style = kNone;
        std::vector<Dot> dots;
        Box box = kEmpty;  // of all that it holds
        bool isGroup = false;
    };

    Entity& Begin(const Field& kind);
    std::size_t StyleOf(const std::string& name);
    Box Measure();
    void Print(const Entity& entity, double unit);
    void PrintLegend(const Box& box, double unit);

    std::ostream& out_;
    std::vector<std::size_t> records_;  // those around the field at hand: the entity, or none
    std::vector<Entity> entities_;      // each in front of those that it holds
    std::vector<std::string> styles_;
    std::size_t undrawn_ = 0;
};

}  // namespace zel
