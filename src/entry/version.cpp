// The version record, the hooks of loading and unloading, and the slot index of a merged build.

#include <cstdint>

#include "korm.h"

extern "C" {

extern const kormLibVersion s_libVer;
const kormLibVersion s_libVer = {
    .major = 7,
    .minor = 1,
    .patch = 1,
    .revision = 37466,
    .target = {'v', '8', '\0', '\0'},
    .name = "korm SSSE3 (v8)",
    .version = "7.1.1 (r37466)",
    .buildDate = "Sep 24 2012",
};

// Which slot of an entry record a build with several variants would take. With one variant nobody reads it.
extern std::int32_t korJumpIndexForMergedDLL;
[[gnu::used]] std::int32_t korJumpIndexForMergedDLL = 0;

const kormLibVersion* v8_kormGetLibVersion();
const kormLibVersion* v8_kormGetLibVersion() { return &s_libVer; }

// Everything works from the moment the library is loaded: the hooks have nothing to prepare.
[[gnu::constructor]] void initializer();
void initializer() {
    static volatile std::int32_t loaded = 0;
    if (loaded == 0) loaded = 1;
}

[[gnu::destructor]] void destructor();
void destructor() {
    asm volatile("");  // an empty function would be dropped from the list of unload hooks
}

}  // extern "C"
