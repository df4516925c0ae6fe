// What every program of tests does first.
#pragma once

namespace kormtest {

// Before any call of the library: teams larger than the machine mustn't spin, and faults are told.
void prepareProcess();

}  // namespace kormtest
