// The mistakes that a wrong library can make.
#pragma once

namespace kormtest {

enum class Mistake {
    none,  // as a proof that the rest of the wrong library is right
    doesNothing,
    swapsOperands,
    writesBeyond,
    flipsZeros,      // the sign of a result of zero
    quietsNans,      // copies through arithmetic, which alters a signalling NaN
    storesEarly,     // before it has read its inputs
    forgetsTheLast,  // vector of a batch
    skipsChecks,
    reordersChecks,
    missesLimit,      // stays serial one vector too long
    forgetsFailures,  // always reports success
};

}  // namespace kormtest
