// All small sizes beside plain loops.
#pragma once

namespace bench {

void measureSweeps();

}  // namespace bench
