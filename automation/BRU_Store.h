#pragma once

#include <string>

#include "zel/com/ComPtr.h"
#include "zel/control/Control.h"
#include "zel/com/Dispatch.h"
#include "zel/com/Object.h"
#include "zel/definition/SketchFile.h"
#include "ZEL_BRU_members.h"
#include "ZEL_Collection.h"
#include "ZEL_Header.h"

namespace zel {

// The root object: a file image, and the header object and the collection of definition objects that clients
// see of it. A load publishes the image as objects, a save gathers it from them; in between clients work on
// the objects alone. Header and collection are made with the store, are never exchanged and may outlive it.
// As a control it shows its caption and nothing else.
class BRU_Store final : public Object<ControlInterfaces<IBRU_Store>, Dispatch<IBRU_Store>, Control> {
public:
    BRU_Store();

    STDMETHODIMP get_Header(IZEL_Header** pVal) noexcept override;
    STDMETHODIMP put_Header(IZEL_Header* newVal) noexcept override;
    STDMETHODIMP get_Definitions(IZEL_Collection** pVal) noexcept override;
    STDMETHODIMP put_Definitions(IZEL_Collection* newVal) noexcept override;
    // A file that cannot be opened is no error: what the image holds is published again.
    STDMETHODIMP LoadFromFile(BSTR FileName, LONG* Result) noexcept override;
    // Refuses unknown versions, and those too old to be saved, before it opens anything.
    STDMETHODIMP SaveToFile(BSTR FileName, LONG* Result) noexcept override;
    STDMETHODIMP get_DefinitionType(unsigned char* pVal) noexcept override;
    STDMETHODIMP put_DefinitionType(unsigned char newVal) noexcept override;
    STDMETHODIMP get_Flags(LONG* pVal) noexcept override;
    STDMETHODIMP put_Flags(LONG newVal) noexcept override;

private:
    void Finish() noexcept override { FinishWithWindow(); }
    void Delete() noexcept override { delete this; }
    HRESULT Paint(HDC hdc, const RECT& bounds) noexcept override;

    void CopyImageWithoutDefinitions(SketchFile& image) const;
    void GatherImage(SketchFile& image) const;

    SketchFile file_;  // the image
    ComPtr<ZEL_Header> header_;
    ComPtr<ZEL_Collection> definitions_;
};

}  // namespace zel
