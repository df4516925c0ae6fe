// The mistakes that a wrong library can make.
#pragma once

namespace kormtest {

enum class Mistake {
    none,  // as a proof that the rest of the wrong library is right
    doesNothing,
    swapsOperands,
    writesBeyond,
    forgetsTheLast,  // vector of a batch
    skipsChecks,
    reordersChecks,
    missesLimit,      // stays serial one vector too long
    forgetsFailures,  // always reports success
};

}  // namespace kormtest
