// The version record, the hooks of loading and unloading, and the slot index of a merged build.

#include <cstdint>

#include "entry/variant.h"
#include "korm.h"

#define TEXT(word) #word
#define TEXT_OF(word) TEXT(word)
#define VARIANT TEXT_OF(KORM_VARIANT)
#define REVISION 37466

extern "C" {

extern const kormLibVersion s_libVer;
const kormLibVersion s_libVer = {
    .major = KORM_VERSION_MAJOR,
    .minor = KORM_VERSION_MINOR,
    .patch = KORM_VERSION_PATCH,
    .revision = REVISION,
    .target = VARIANT,
    .name = "korm SSSE3 (" VARIANT ")",
    .version = KORM_VERSION " (r" TEXT_OF(REVISION) ")",
    .buildDate = "Sep 24 2012",  // fixed, so that the record is the same in every build
};

// Which slot of an entry record a build with several variants would take. With one variant nobody reads it.
extern std::int32_t korJumpIndexForMergedDLL;
[[gnu::used]] std::int32_t korJumpIndexForMergedDLL = 0;

const kormLibVersion* getLibVersion() asm(VARIANT "_kormGetLibVersion");
const kormLibVersion* getLibVersion() { return &s_libVer; }

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
