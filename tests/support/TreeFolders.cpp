#include "TreeFolders.h"

namespace frigana::test {

const char* const dataFolder = FRIGANA_DATA;
const char* const testsFolder = FRIGANA_TESTS;
const char* const examplesFolder = FRIGANA_EXAMPLES;

}  // namespace frigana::test
