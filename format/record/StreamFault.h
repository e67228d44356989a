#pragma once

#include <ios>

namespace zel {

// Runs a call into the stream's buffer. What the buffer throws marks the stream bad and goes on to the caller
// only if the stream's exception mask asks for it, as the standard's own input and output functions do.
template <class Call>
void GuardStream(std::ios& stream, Call call) {
    try {
        call();
    } catch (...) {
        try {
            stream.setstate(std::ios_base::badbit);
        } catch (const std::ios_base::failure&) {
            // What the buffer threw says more; it is passed on below.
        }
        if (stream.exceptions() & std::ios_base::badbit) throw;
    }
}

}  // namespace zel
