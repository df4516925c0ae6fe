// Eigen's solutions of general eigenproblems of known order, float.
#include "general_known.h"

template bench::Run bench::eigenOfKnownOrder<float>(const bench::Problems<float>&, const bench::Family&);
