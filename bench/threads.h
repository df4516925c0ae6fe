#pragma once

namespace bench {

// Rows that compare the library on one thread with itself on two.
void addThreadRows();

}  // namespace bench
