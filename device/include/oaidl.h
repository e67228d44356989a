// A VARIANT among the arguments of a call takes the next four words: the compiler grants that to an alignment
// of 4 only.
#pragma pack(push, 4)
#include_next <oaidl.h>
#pragma pack(pop)
