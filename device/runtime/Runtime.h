#pragma once

namespace zel {

// What an image of the device does when it is loaded, before its first constructor, and when it goes, behind
// its last destructor: in this order, and back.
void AttachThreads();
void DetachThreads();
// False: the system has no thread slot left, and the image must not be loaded.
bool AttachExceptions();
void DetachExceptions();
// When a thread ends.
void DetachThreadExceptions();

}  // namespace zel
