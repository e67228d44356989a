#pragma once

#include <cstddef>
#include <list>
#include <stdexcept>

namespace zel {

// The elements of a list, whatever its framing in the file: owned, in file order.
template <class T>
class ElementList {
public:
    using Iterator = typename std::list<T>::iterator;

    std::size_t size() const { return elements_.size(); }
    bool empty() const { return elements_.empty(); }
    auto begin() { return elements_.begin(); }
    auto begin() const { return elements_.begin(); }
    auto end() { return elements_.end(); }
    auto end() const { return elements_.end(); }

    // Drops elements from the back, or appends new ones there.
    void Resize(std::size_t count) {
        if (count > elements_.max_size()) ThrowTooLong();
        while (elements_.size() > count) elements_.pop_back();
        while (elements_.size() < count) elements_.emplace_back();
    }
    T& Append() {
        if (elements_.size() == elements_.max_size()) ThrowTooLong();
        return elements_.emplace_back();
    }
    void Clear() { Resize(0); }

    std::list<T>& Elements() { return elements_; }
    const std::list<T>& Elements() const { return elements_; }

protected:
    ElementList() = default;
    ElementList(const ElementList&) = default;
    ElementList& operator=(const ElementList&) = default;
    ~ElementList() = default;

private:
    [[noreturn]] static void ThrowTooLong() { throw std::length_error("list<T> too long"); }

    std::list<T> elements_;
};

}  // namespace zel
