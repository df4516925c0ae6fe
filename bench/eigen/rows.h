// What rows of eigenproblems share: places, names and peers of linear algebra.
#pragma once

#include "../linalg/rows.h"

namespace bench {

// A file for each.
void measureSymmetric();

}  // namespace bench
