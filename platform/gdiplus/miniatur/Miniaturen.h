#pragma once

#include "platform/basic/kvo_export.h"

/// The desktop's own cache of small pictures (freedesktop.org, Thumbnail Managing Standard): pictures that were shown
/// small are kept in the user's cache folder over the end of the program, and shown from there while their files are
/// unchanged. It is on from the start. For the whole process; may be called from any thread.
namespace miniaturen {

/// Off: nothing is read from the cache and nothing written to it. What lies there stays.
KVO_EXPORT void an(bool wert);

/// It is on and of use. Also false where there is no cache folder, where it can't be written to, or where it turned out
/// to be too slow.
KVO_EXPORT bool ist_an();

}  // namespace miniaturen
