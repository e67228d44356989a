#include <windows.h>

#include "zel/automation/BRU_Store.h"
#include "zel/com/Module.h"
#include "zel/control/ControlWindow.h"
#include "zel/registration/Registrar.h"
#include "zel/automation/ZEL_Collection.h"
#include "zel/automation/ZEL_Definition.h"
#include "zel/automation/ZEL_Header.h"

using zel::Module;

namespace {

// The object table: what clients may create.
const zel::ClassRow kClasses[] = {
    {CLSID_BRU_Store, 102, &zel::CreateInstance<zel::BRU_Store>},
    {CLSID_ZEL_Header, 103, &zel::CreateInstance<zel::ZEL_Header>},
    {CLSID_ZEL_Collection, 104, &zel::CreateInstance<zel::ZEL_Collection>},
    {CLSID_ZEL_Definition, 105, &zel::CreateInstance<zel::ZEL_Definition>},
};

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* processEnds) {
    if (reason == DLL_PROCESS_ATTACH) Module::Attach(instance, kClasses, std::size(kClasses));
    // At the end of the process other libraries may be gone before this one: nothing is given back to them.
    if (reason == DLL_PROCESS_DETACH && !processEnds) {
        zel::ControlWindow::ReleaseClass();
        Module::Detach();
    }
    return TRUE;
}

STDAPI DllCanUnloadNow() { return Module::CanUnloadNow(); }

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** out) {
    return Module::GetClassObject(clsid, iid, out);
}

STDAPI DllRegisterServer() { return zel::Registrar::RegisterModule(); }

STDAPI DllUnregisterServer() {
    zel::Registrar::UnregisterModule();
    return S_OK;
}
