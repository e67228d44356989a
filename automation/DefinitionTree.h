#pragma once

#include "zel/definition/DefinitionList.h"
#include "VariantArray.h"
#include "ZEL_BRU.h"

namespace zel {

// The two directions between the records of a file and the objects that clients see. Both keep to a constant
// stack however deep the definitions nest, and throw std::bad_alloc with nothing changed.

// One new definition object per record, its members likewise. A record of the outermost list for which no
// object can be made is left out.
VariantArray Publish(const DefinitionList& records);

// The definitions in a collection, in order, and their members; any implementation of the interfaces will do,
// and what is no definition is left out. So is a definition among its own descendants, where it would repeat
// itself.
DefinitionList Gather(IZEL_Collection& collection);

}  // namespace zel
