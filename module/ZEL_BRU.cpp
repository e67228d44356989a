#include <windows.h>

#include "Module.h"

using zel::Module;

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* processEnds) {
    if (reason == DLL_PROCESS_ATTACH) Module::Attach(instance, nullptr, 0);
    // At the end of the process other libraries may be gone before this one: nothing is given back to them.
    if (reason == DLL_PROCESS_DETACH && !processEnds) Module::Detach();
    return TRUE;
}

STDAPI DllCanUnloadNow() { return Module::CanUnloadNow(); }

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** out) {
    return Module::GetClassObject(clsid, iid, out);
}
