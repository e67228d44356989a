// The platform's identifiers: there is no library of them to link.
#include <initguid.h>

#include <windows.h>
#include <olectl.h>
#include <ole2.h>

// The headers only declare these.
extern "C" const GUID GUID_NULL = {};
extern "C" const IID IID_IUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
