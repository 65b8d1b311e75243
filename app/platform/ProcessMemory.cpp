#include "app/platform/ProcessMemory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tallyview {

void returnFreedMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace tallyview
