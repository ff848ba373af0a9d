// A folder with one file for the tests of units.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "TemporaryFolder.h"
#include "TextFile.h"

namespace frigana {

namespace fs = std::filesystem;

class TextFile : public testing::Test {
  protected:
    void TearDown() override { closeAllUnits(); }
    void contents(std::string_view bytes) const { test::writeFile(path, bytes); }
    std::string contents() const { return test::readFile(path); }
    bool open(std::string_view bytes) const {
        contents(bytes);
        return openForReading(1, path);
    }
    test::TemporaryFolder temporary;
    fs::path folder = temporary.path();
    std::string path = temporary.path("file.txt");
};

inline int filesIn(const fs::path& folder) {
    int count = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder)) ++count;
    return count;
}

}  // namespace frigana
