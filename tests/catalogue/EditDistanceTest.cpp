#include "EditDistance.h"

#include <gtest/gtest.h>

#include <string>

namespace frigana::catalogue {
namespace {

TEST(EditDistance, CountsLettersThatAreChangedPutInOrLeftOut) {
    EXPECT_EQ(editDistance("kitten", "sitting", 7), 3u);
    EXPECT_EQ(editDistance("R134a", "R134a", 0), 0u);
    EXPECT_EQ(editDistance("", "R32", 3), 3u);
    EXPECT_EQ(editDistance("R407C", "R470C", 2), 2u);
}

TEST(EditDistance, OfWordsOfFarOtherLengthsIsBeyondWhatIsAskedFor) {
    EXPECT_GT(editDistance("R32", std::string(10'000, 'R'), 3), 3u);
    EXPECT_GT(editDistance(std::string(10'000, 'R'), "", 9'999), 9'999u);
}

}  // namespace
}  // namespace frigana::catalogue
