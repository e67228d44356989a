#include "InterfaceInfo.h"

#include "ComPtr.h"
#include "Publish.h"
#include "TypeLibrary.h"

namespace zel {

InterfaceInfo::InterfaceInfo(const IID& iid) noexcept : iid_(iid), next_(first_) { first_ = this; }

HRESULT InterfaceInfo::Find(ITypeInfo** out) noexcept {
    ComPtr<ITypeInfo> found;
    const HRESULT result = TypeLibrary::GetInfo(iid_, found.Out());
    if (SUCCEEDED(result)) *out = Publish(info_, std::move(found));
    return result;
}

void InterfaceInfo::ReleaseAll() noexcept {
    for (InterfaceInfo* each = first_; each; each = each->next_) {
        if (ITypeInfo* info = each->info_) info->Release();
        each->info_ = nullptr;
    }
}

}  // namespace zel
