#include "SvgPrinter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "zel/drawing/EntityRecord.h"
#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

constexpr double kFarthest = 1e12;  // coordinates beyond it would leave nothing else to be seen

double RealOf(const Field& field, std::size_t index) {
    const std::uint64_t bits = field.Bits(index);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::string Number(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return Decimal(bits);
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '&') {
            escaped += "&amp;";
        } else if (c == '<') {
            escaped += "&lt;";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

// Hues as far from those before as can be.
std::string ColourOf(std::size_t style) {
    constexpr double kStep = 137.508, kLightness = 0.4, kSaturation = 0.3;
    const double hue = std::fmod(static_cast<double>(style) * kStep, 360);
    std::string bytes;
    for (const double channel : {0, 8, 4}) {
        const double k = std::fmod(channel + hue / 30, 12);
        const double value = kLightness - kSaturation * std::max(std::min({k - 3, 9 - k, 1.0}), -1.0);
        bytes += static_cast<char>(std::lround(value * 255));
    }
    return '#' + HexDigits(bytes);
}

}  // namespace

void SvgPrinter::Box::Include(const Box& other) {
    if (other.IsEmpty()) return;
    if (IsEmpty()) *this = other;
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
}

double SvgPrinter::Box::Size() const { return IsEmpty() ? 0 : std::max(right - left, bottom - top); }

void SvgPrinter::OnField(const Field& field) {
    if (field.name == "EntityKind" && !field.Missing()) return void(Begin(field));
    if (records_.empty() || records_.back() == kNone || field.Missing()) return;
    Entity& entity = entities_[records_.back()];
    if (field.name == "PrimaryStyle") entity.style = StyleOf(Printable(field.Text()));
    if (field.kind == FieldKind::kTypedList && field.name == EntityRecord::kNestedName) entity.isGroup = true;
    if (field.kind != FieldKind::kReal || field.Count() != 2) return;
    const Dot dot{RealOf(field, 0), RealOf(field, 1), field.name.substr(0, 6) == "Anchor"};
    if (std::abs(dot.x) <= kFarthest && std::abs(dot.y) <= kFarthest) {
        entity.dots.push_back(dot);
    } else {
        ++undrawn_;
    }
}

// The entity around it is that of the record around its own.
SvgPrinter::Entity& SvgPrinter::Begin(const Field& kind) {
    const std::size_t around = records_.size() > 1 ? records_[records_.size() - 2] : kNone;
    records_.back() = entities_.size();
    return entities_.emplace_back(
        Entity{PlaceText(*kind.place), kind.Integer(), around, kNone, {}, kEmpty, false});
}

std::size_t SvgPrinter::StyleOf(const std::string& name) {
    const auto found = std::find(styles_.begin(), styles_.end(), name);
    const auto style = static_cast<std::size_t>(found - styles_.begin());
    if (found == styles_.end()) styles_.push_back(name);
    return style;
}

// Gives each entity its box, and all of them.
SvgPrinter::Box SvgPrinter::Measure() {
    Box all = kEmpty;
    for (auto entity = entities_.rbegin(); entity != entities_.rend(); ++entity) {
        for (const Dot& dot : entity->dots) entity->box.Include({dot.x, dot.y, dot.x, dot.y});
        (entity->parent == kNone ? all : entities_[entity->parent].box).Include(entity->box);
    }
    return all;
}

void SvgPrinter::Finish() {
    constexpr double kMarksAcross = 150, kMargin = 8, kLine = 5;
    const Box all = Measure();
    const Box box = all.IsEmpty() ? Box{0, 0, 1, 1} : all;
    const double unit = std::max(box.Size(), 1e-6) / kMarksAcross, margin = kMargin * unit;
    const double lines = static_cast<double>(styles_.size()) * kLine * unit;
    out_ << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" << Number(box.left - margin) << ' '
         << Number(box.top - margin) << ' ' << Number(std::max(box.right - box.left, 50 * unit) + 2 * margin)
         << ' ' << Number(box.bottom - box.top + 2 * margin + lines)
         << "\" font-family=\"sans-serif\" font-size=\"" << Number(3 * unit)
         << "\">\n<desc>Squares are anchors, dots are points, numbers are kinds, frames hold "
         << "the entities of a group. Y grows downwards.";
    if (undrawn_) out_ << ' ' << Counted(undrawn_, "point") << " too far away to be drawn.";
    out_ << "</desc>\n";
    for (const Entity& entity : entities_) Print(entity, unit);
    PrintLegend(box, unit);
    out_ << "</svg>\n";
}

void SvgPrinter::Print(const Entity& entity, double unit) {
    const std::string colour = entity.style == kNone ? "#808080" : ColourOf(entity.style);
    out_ << "<g fill=\"" << colour << "\"><title>" << Escaped(entity.place) << ", kind " << entity.kind;
    if (entity.style != kNone) out_ << ", style " << Escaped(styles_[entity.style]);
    out_ << "</title>\n";
    if (entity.isGroup && !entity.box.IsEmpty())
        out_ << "<rect x=\"" << Number(entity.box.left - 2 * unit) << "\" y=\""
             << Number(entity.box.top - 2 * unit) << "\" width=\""
             << Number(entity.box.right - entity.box.left + 4 * unit) << "\" height=\""
             << Number(entity.box.bottom - entity.box.top + 4 * unit) << "\" fill=\"none\" stroke=\""
             << colour << "\" stroke-width=\"" << Number(unit / 4) << "\"/>\n";
    for (const Dot& dot : entity.dots) {
        if (dot.isAnchor) {
            out_ << "<rect x=\"" << Number(dot.x - unit / 2) << "\" y=\"" << Number(dot.y - unit / 2)
                 << "\" width=\"" << Number(unit) << "\" height=\"" << Number(unit) << "\"/>\n";
        } else {
            out_ << "<circle cx=\"" << Number(dot.x) << "\" cy=\"" << Number(dot.y) << "\" r=\""
                 << Number(unit / 2) << "\"/>\n";
        }
    }
    if (!entity.dots.empty())
        out_ << "<text x=\"" << Number(entity.dots[0].x + unit) << "\" y=\""
             << Number(entity.dots[0].y - unit) << "\">" << entity.kind << "</text>\n";
    out_ << "</g>\n";
}

// The styles in their colours, below the drawing.
void SvgPrinter::PrintLegend(const Box& box, double unit) {
    constexpr double kLine = 5;
    double y = box.bottom + 8 * unit;
    for (std::size_t i = 0; i < styles_.size(); ++i, y += kLine * unit)
        out_ << "<text x=\"" << Number(box.left) << "\" y=\"" << Number(y) << "\" fill=\"" << ColourOf(i)
             << "\">" << (styles_[i].empty() ? "(no name)" : Escaped(styles_[i])) << "</text>\n";
}

}  // namespace zel
