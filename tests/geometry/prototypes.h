// The geometry functions as C declarations and as assembly, for form_list.cpp.
#pragma once

namespace kormtest {

// A line for each function that assigns it to a pointer of the expected type.
void printGeometryPrototypes();

// A stub for each function, for the libraries that are wrong on purpose.
void printGeometryStubs();

}  // namespace kormtest
