#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ComPtr.h"
#include "RegistryScope.h"
#include "Server.h"

namespace zel {
namespace {

TEST(Manifest, ActivatesEveryClassWithoutARegistry) {
    ComScope com;
    RegistryScope registry;
    ManifestScope manifest;
    for (const wchar_t* progId : {L"ZEL_BRU.BRU_Store", L"ZEL_BRU.ZEL_Header.1", L"ZEL_BRU.ZEL_Collection",
                                  L"ZEL_BRU.ZEL_Definition.1"}) {
        CLSID clsid = {};
        EXPECT_EQ(CLSIDFromProgID(progId, &clsid), S_OK);
        ComPtr<IDispatch> object;
        EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.OutVoid()),
                  S_OK);
        ComPtr<ITypeInfo> info;
        EXPECT_EQ(object ? object->GetTypeInfo(0, 0, info.Out()) : E_FAIL, S_OK);
    }
    EXPECT_THAT(registry.Tree(), testing::IsEmpty());
}

}  // namespace
}  // namespace zel
