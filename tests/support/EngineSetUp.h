// Setting the engine up from a test, and random states for identities.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "OPENFL.h"
#include "SETUP.h"
#include "TreeFolders.h"

namespace frigana::test {

inline std::string words(const Text255& text) {
    std::string_view view = text.view();
    view = view.substr(0, view.find('\0'));
    return std::string(trimRight(view));
}

// Sets up the fluids of the data folder, or of another one; eos forces the tag of every component's equation.
inline testing::AssertionResult setUp(std::initializer_list<std::string_view> names, std::string_view eos = "",
                                      std::string_view folder = test::dataFolder) {
    int ierr = 0;
    Text255 herr;
    SETPATH(folder);
    FileNames files{};
    int count = 0;
    for (const std::string_view name : names) files[++count].assign(std::string(name) + ".FLD");
    if (!eos.empty()) {
        ComponentArray<Text3> tags{};
        tags.fill("NBS");
        SETMOD(count, "NBS", "NBS", tags, ierr, herr);
        for (int i = 1; i <= count; ++i) tags[i] = eos;
        SETMOD(count, "EOS", count > 1 ? "HMX" : eos, tags, ierr, herr);
    }
    Text3 reference = "DEF";
    SETUP(count, files, "HMX.BNC", reference, ierr, herr);
    if (ierr > 0) return testing::AssertionFailure() << "set-up " << ierr << ": " << words(herr);
    return testing::AssertionSuccess();
}

// Uniform numbers, the same in every run.
class Random {
  public:
    double between(double low, double high) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return low + (high - low) * static_cast<double>(state_ >> 11U) * 0x1p-53;
    }

  private:
    std::uint64_t state_ = 20260101;
};

}  // namespace frigana::test
