#pragma once

#include <windows.h>
#include <unknwn.h>

#include <utility>

#include "ComPtr.h"
#include "Module.h"

namespace zel {

// Interface tables. An entry is an interface, or Through<Interface, Base> where several bases derive from
// that interface and one of them has to be named. The first entry also answers for IUnknown: the object's
// identity.
template <class Interface, class Base>
struct Through {};

template <class... Entries>
struct Interfaces {};

template <class Entry>
struct InterfaceEntry {
    using Interface = Entry;
    using Base = Entry;
};
template <class I, class B>
struct InterfaceEntry<Through<I, B>> {
    using Interface = I;
    using Base = B;
};

template <class Table, class... Bases>
class Object;

// A COM object on the heap: reference count, module lock from construction to destruction, QueryInterface
// over a table in its order. A class states its table and what it implements it with:
//     class ZEL_Header final : public Object<Interfaces<IZEL_Header, IDispatch>, Dispatch<IZEL_Header>>
// Made by Make or CreateInstance below with its first reference; the last Release destroys it. It cannot be
// aggregated.
template <class First, class... Rest, class... Bases>
class Object<Interfaces<First, Rest...>, Bases...> : private ModuleLock, public Bases... {
public:
    // Written out, not defaulted: the class itself hands a virtual base its arguments, past this constructor.
    Object() noexcept {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept override {
        if (!out) return E_POINTER;
        *out = iid == IID_IUnknown ? Pointer<First>() : Find(iid);
        if (!*out) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    STDMETHODIMP_(ULONG) AddRef() noexcept override { return InterlockedIncrement(&references_); }

    STDMETHODIMP_(ULONG) Release() noexcept override {
        const ULONG left = InterlockedDecrement(&references_);
        if (left != 0) return left;
        references_ = kDying;
        Finish();
        return 0;
    }

protected:
    virtual ~Object() = default;  // NOLINT(modernize-use-override): some bases have one, some not
    // The last reference is gone. An object that the system still calls goes when that has ended.
    virtual void Finish() noexcept { delete this; }

private:
    // What a destructor calls may take and give back references of the dying object: that must not destroy it
    // again.
    static constexpr LONG kDying = 1 << 30;

    template <class Entry>
    void* Pointer() noexcept {
        using Row = InterfaceEntry<Entry>;
        return static_cast<typename Row::Interface*>(static_cast<typename Row::Base*>(this));
    }

    // Not inlined: QueryInterface is compiled once more for each base that the object can be seen by.
    [[gnu::noinline]] void* Find(REFIID iid) noexcept {
        void* found = nullptr;
        static_cast<void>(Matches<First>(iid, found) || (Matches<Rest>(iid, found) || ...));
        return found;
    }

    template <class Entry>
    bool Matches(REFIID iid, void*& found) noexcept {
        if (iid != __uuidof(typename InterfaceEntry<Entry>::Interface)) return false;
        found = Pointer<Entry>();
        return true;
    }

    volatile LONG references_ = 1;
};

// A new object with its first reference; null when memory is exhausted or the constructor throws.
template <class T, class... Arguments>
ComPtr<T> Make(Arguments&&... arguments) noexcept {
    try {
        return ComPtr<T>::Attach(new T(std::forward<Arguments>(arguments)...));
    } catch (...) {
        return nullptr;
    }
}

// The creator of a class row: a new object, asked for `iid`. An object that does not answer is gone on
// return.
template <class T>
HRESULT CreateInstance(REFIID iid, void** out) noexcept {
    ComPtr<T> object = Make<T>();
    return object ? object->QueryInterface(iid, out) : E_OUTOFMEMORY;
}

}  // namespace zel
