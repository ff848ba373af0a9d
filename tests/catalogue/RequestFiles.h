// Requests of the tree, for tests that go over all of them.
#pragma once

#include <string>
#include <vector>

namespace frigana::test {

struct RequestText {
    std::string name;  // of a file or case
    std::string text;  // the positional request
};

// The examples, one for each request, in the order of their names.
std::vector<RequestText> exampleRequests();

// The cycles of the reference values.
std::vector<RequestText> referenceRequests();

}  // namespace frigana::test
