// The folders of the tree that tests read. Only one source knows where the tree lies, so that every other is the same
// in every checkout and compiles from a shared cache.
#pragma once

namespace frigana::test {

extern const char* const dataFolder;   // the installation's data
extern const char* const testsFolder;  // the tests, with the reference values
extern const char* const examplesFolder;

}  // namespace frigana::test
