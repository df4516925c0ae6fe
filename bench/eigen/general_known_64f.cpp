// Eigen's solutions of general eigenproblems of known order, double.
#include "general_known.h"

template bench::Run bench::eigenOfKnownOrder<double>(const bench::Problems<double>&, const bench::Family&);
