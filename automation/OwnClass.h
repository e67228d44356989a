#pragma once

namespace zel {

// Tells the objects of this module's class T from a client's implementations of its interface: they alone
// have its virtual table.
template <class T, class Interface>
class OwnClass {
public:
    // For the constructor of T, which is final. All note the same.
    static void Note(const Interface& object) noexcept { table_ = TableOf(object); }
    // Null for a client's.
    static T* Cast(Interface& object) noexcept {
        return TableOf(object) == table_ ? static_cast<T*>(&object) : nullptr;
    }

private:
    // Every interface begins with the address of its virtual table.
    static const void* TableOf(const Interface& object) noexcept {
        return *reinterpret_cast<const void* const*>(&object);
    }

    static inline const void* volatile table_ = nullptr;
};

}  // namespace zel
