// Blends set up from the data folder or from files of a test, and files of mixing parameters made of single records.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "PROP_SUB.h"
#include "ReferenceState.h"
#include "SETUP.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"
#include "UTILITY.h"

namespace frigana::test {

using Names = std::vector<std::string>;

inline std::string dataFile(const std::string& name) {
    return std::string(test::dataFolder) + "/fluids/" + name;
}

// An engine that is as new before and after each test, and a folder for its files.
class MixtureSetUp : public testing::Test {
  protected:
    void SetUp() override { renew(); }
    void TearDown() override { renew(); }

    static void renew() {
        modelTags = ModelTags();
        setupMemory = SetupMemory();
        referenceState = ReferenceState();
        fluidFiles.HPATH.clear();
        RESETA();
    }

    // The code of SETUP. A name without a folder is that of a fluid of the data folder.
    int setUp(const Names& names, const std::string& mixtureFile = dataFile("HMX.BNC"), const char* reference = "NA") {
        renew();  // a file of the same name may have changed
        FileNames files{};
        int count = 0;
        for (const std::string& name : names)
            files[++count] =
                std::string_view(name.find_first_of("/\\") == std::string::npos ? dataFile(name + ".FLD") : name);
        Text3 hrf = reference;
        SETUP(count, files, std::string_view(mixtureFile), hrf, ierr, herr);
        return ierr;
    }
    std::string write(const std::string& name, const std::string& text) const {
        writeFile(folder.path(name), text);
        return folder.path(name);
    }
    static std::string words(const Text255& text) {
        const std::string_view view = text.view();
        return std::string(trimRight(view.substr(0, view.find('\0'))));
    }
    std::string message() const { return words(herr); }

    TemporaryFolder folder;
    int ierr = 0;
    Text255 herr;
};

inline Composition fractions(std::initializer_list<double> values) {
    Composition x{};
    int i = 0;
    for (const double value : values) x[++i] = value;
    return x;
}

// ---- files of mixing parameters ---------------------------------------------------------------------------------

// A data line: pair (blank on all but the first), tag, numbers.
inline std::string dataLine(std::string pair, const std::string& tag, const std::string& numbers) {
    pair.resize(26, ' ');
    return pair + tag + "  " + numbers + "\n";
}
inline const std::string endOfRecord = "!\n";

// A departure function: tag, the five counts, the rows.
inline std::string ruleText(const std::string& tag, const std::string& counts, const std::string& rows) {
    return "#MXM\n" + tag + " departure function of a test\n?source\n!\n" +
           "first    second   third    fourth   fifth    sixth   \n"
           "  1.0  1.0  0.0  1.0  1.0  0.0\n" +
           counts + "\n" + rows;
}
inline const std::string plainKW0 = ruleText("KW0", "  2  3  1  0  0", "  0.5  1.0  1.0  0.0\n -0.2  0.5  2.0  1.0\n");
inline const std::string plainLJ6 = ruleText("LJ6", "  1  3  1  0  0", " -0.01  7.4  1.0  1.0\n");

inline std::string mixtureFileText(const std::string& pairs, const std::string& rules = plainKW0 + plainLJ6,
                                   const std::string& model = "HMX") {
    return model + "\n 1\n" + rules + "#BNC\nBNC\n?records of a test\n!\n" + pairs + "@END\n";
}

}  // namespace frigana::test
