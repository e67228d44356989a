#include "ZEL_Collection.h"

#include <cstdint>
#include <iterator>

#include "zel/com/Boundary.h"
#include "zel/com/EnumVariant.h"
#include "zel/com/Variant.h"

namespace zel {
namespace {

enum Member : DISPID { kItem = DISPID_VALUE, kAdd = 2, kRemove = 3, kNewEnum = DISPID_NEWENUM };

volatile LONG collectionSerial = 0;

// A tenth, without the division that the handheld's processor lacks.
constexpr std::uint32_t Tenth(std::uint32_t number) noexcept {
    return static_cast<std::uint32_t>((std::uint64_t{number} * 0xCCCCCCCD) >> 35);
}

// Part of making and unmaking a collection since its first release. Nothing looks at the text, so that it has
// to be volatile. By hand: the platform's function was a twentieth of a load.
void FormatSerial() noexcept {
    volatile wchar_t text[11];
    std::size_t first = std::size(text) - 1;
    text[first] = L'\0';
    auto rest = static_cast<std::uint32_t>(collectionSerial);
    do {
        const std::uint32_t tenth = Tenth(rest);
        text[--first] = static_cast<wchar_t>(L'0' + (rest - 10 * tenth));
        rest = tenth;
    } while (rest != 0);
}

ULONG PositionIn(const VARIANT& index) noexcept { return V_UI4(&index); }

bool IsNumber(VARTYPE type) noexcept {
    return (type >= VT_I2 && type <= VT_CY) || (type >= VT_DECIMAL && type <= VT_UINT);
}

// What is no number, or none of 32 bits, becomes a position that no collection has.
void ToPosition(Variant& argument) noexcept {
    if (!IsNumber(argument.Type()) || FAILED(VariantChangeType(argument.InOut(), argument.InOut(), 0, VT_I4)))
        argument = Variant::Int(-1);
}

}  // namespace

ZEL_Collection::ZEL_Collection() noexcept {
    InterlockedIncrement(&collectionSerial);
    FormatSerial();
}

ZEL_Collection::~ZEL_Collection() { FormatSerial(); }

HRESULT ZEL_Collection::Item(VARIANT index, VARIANT* pItem) noexcept {
    if (!pItem || PositionIn(index) >= items_.Size()) return S_OK;
    // What `pItem` held may change the array, or end the collection, as it is released.
    Variant copy;
    CopyVariant(copy.InOut(), items_[PositionIn(index)]);
    if (SUCCEEDED(VariantClear(pItem))) *pItem = copy.Detach();
    return S_OK;
}

HRESULT ZEL_Collection::get_Count(LONG* pVal) noexcept {
    if (pVal) *pVal = static_cast<LONG>(items_.Size());
    return S_OK;
}

HRESULT ZEL_Collection::get__NewEnum(IUnknown** pVal) noexcept {
    return Boundary([&]() -> HRESULT {
        // The enumerator's copies may call into the objects, and those into this collection.
        const std::vector<VARIANT> snapshot(items_.Data(), items_.Data() + items_.Size());
        const ComPtr<EnumVariant> enumerator = Make<EnumVariant>();
        if (!enumerator) return S_FALSE;
        enumerator->Init(snapshot.data(), static_cast<ULONG>(snapshot.size()));
        return enumerator->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(pVal));
    });
}

HRESULT ZEL_Collection::Add(VARIANT pNew) noexcept {
    return Boundary([&] {
        items_.Append(pNew);
        return S_OK;
    });
}

HRESULT ZEL_Collection::Remove(VARIANT index) noexcept {
    if (PositionIn(index) < items_.Size()) items_.Remove(PositionIn(index));
    return S_OK;
}

HRESULT ZEL_Collection::Copy(IZEL_Collection* pCopy) noexcept {
    if (!pCopy || pCopy == this) return S_OK;
    // The collection is empty while the other one is asked, and as it was when memory runs out.
    VariantArray previous;
    previous.Swap(items_);
    return Boundary([&] {
        try {
            AppendItemsOf(*pCopy);
        } catch (...) {
            items_.Swap(previous);
            throw;
        }
        return S_OK;
    });
}

void ZEL_Collection::AppendItemsOf(IZEL_Collection& other) {
    LONG count = 0;
    other.get_Count(&count);
    VARIANT item;
    VariantInit(&item);
    try {
        for (LONG i = 0; i < count; ++i) {
            other.Item(Variant::UnsignedInt(static_cast<ULONG>(i)).Get(), &item);
            items_.Append(item);
        }
    } catch (...) {
        VariantClear(&item);
        throw;
    }
    // The last item fetched keeps the reference in `item`: clients have come to count on it.
}

HRESULT ZEL_Collection::Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                               VARIANT* value, EXCEPINFO* exception, UINT* badArgument) noexcept {
    const auto forward = [&](DISPPARAMS* values) {
        return Dispatch::Invoke(member, reserved, locale, flags, values, value, exception, badArgument);
    };
    // Engines differ in whether an item and the enumerator are got or called.
    constexpr WORD kGetOrCall = DISPATCH_PROPERTYGET | DISPATCH_METHOD;
    if ((member == kItem || member == kNewEnum) && (flags & kGetOrCall)) flags |= kGetOrCall;

    if (!arguments || arguments->cArgs != 1 || (member != kItem && member != kAdd && member != kRemove))
        return forward(arguments);
    Variant argument;
    if (FAILED(VariantCopyInd(argument.InOut(), &arguments->rgvarg[0])) && member == kAdd)
        return forward(arguments);
    if (member != kAdd) ToPosition(argument);
    DISPPARAMS plain = *arguments;
    plain.rgvarg = argument.InOut();
    return forward(&plain);
}

}  // namespace zel
