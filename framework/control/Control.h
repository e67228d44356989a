#pragma once

#include <windows.h>
#include <ocidl.h>

#include "ControlClassInfo.h"
#include "ControlData.h"
#include "ControlInPlace.h"
#include "ControlObject.h"
#include "ControlPersist.h"
#include "ControlView.h"
#include "zel/com/Object.h"

namespace zel {

// An embeddable control: all interface families, and the one that ties them together in a single call when a
// container loads it (IQuickActivate). A class derives from it beside its own dual interface, hands
// ControlCore its class and natural extent, implements Paint, and finishes with its window
// (ControlInPlace.h):
//     class BRU_Store final : public Object<ControlInterfaces<IBRU_Store>, Dispatch<IBRU_Store>, Control>
class Control : public ControlView,
                public ControlInPlace,
                public ControlObject,
                public ControlPersist,
                public ControlClassInfo,
                public ControlData,
                public IQuickActivate {
public:
    // The sinks for properties and events stay unused: the control has neither to tell of.
    STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* control) noexcept override;
    STDMETHODIMP SetContentExtent(SIZEL* extent) noexcept override;
    STDMETHODIMP GetContentExtent(SIZEL* extent) noexcept override;

protected:
    // While the object still keeps the module loaded.
    ~Control() override { ReleaseContainer(); }
};

// The interface table of a control whose own dual interface is `Primary`.
template <class Primary>
using ControlInterfaces =
    Interfaces<Primary, IDispatch, IViewObjectEx, IViewObject2, IViewObject, IOleInPlaceObjectWindowless,
               IOleInPlaceObject, Through<IOleWindow, IOleInPlaceObjectWindowless>, IOleInPlaceActiveObject,
               IOleControl, IOleObject, IPersistStreamInit, Through<IPersist, IPersistStreamInit>,
               ISpecifyPropertyPages, IQuickActivate, IPersistStorage, IDataObject, IProvideClassInfo,
               IProvideClassInfo2>;

}  // namespace zel
