#include "VariantArray.h"

namespace zel {

VariantArray::~VariantArray() {
    for (std::size_t i = front_; i < items_.size(); ++i) VariantClear(&items_[i]);
}

void VariantArray::Append(const VARIANT& item) {
    Variant copy;
    VariantCopyInd(copy.InOut(), const_cast<VARIANT*>(&item));
    Append(std::move(copy));
}

void VariantArray::Append(Variant&& item) {
    items_.push_back(item.Get());
    item.Detach();
}

void VariantArray::Remove(std::size_t position) noexcept {
    const auto item = items_.begin() + static_cast<std::ptrdiff_t>(front_ + position);
    const Variant removed = Variant::Attach(*item);
    if (position != 0) {
        items_.erase(item);
        return;
    }
    ++front_;
    if (2 * front_ < items_.size()) return;
    items_.erase(items_.begin(), items_.begin() + static_cast<std::ptrdiff_t>(front_));
    front_ = 0;
}

}  // namespace zel
