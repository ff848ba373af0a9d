// Texts of small fluid files, section by section, and an engine that is as new before each test.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "FluidConstants.h"
#include "FluidFiles.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "ReferenceState.h"
#include "SETUP.h"
#include "TemporaryFolder.h"

namespace frigana::test {

struct Header {
    std::string name = "testfluid";
    std::string cas = "000-00-0";
    std::string reference = "NA";
    std::string version = "10.0";
    std::string freeLines = "";
};

inline std::string headerText(const Header& header) {
    return header.name + "\n" + header.cas + "\n" +
           "full name of a test fluid\n"
           "CH2F2\n"
           "synonym\n"
           "  52.0       !molar mass\n"
           "  136.34     !triple point temperature\n"
           "  221.5      !normal boiling point\n"
           "  351.255    !critical temperature\n"
           "  5782.0     !critical pressure\n"
           "  8.15       !critical density\n"
           "  0.2769     !acentric factor\n"
           "  1.978      !dipole moment\n" +
           header.reference + "\n" + header.version + "\n" + header.freeLines;
}

// A Helmholtz equation of one attractive and one repulsive term; the molar mass tells blocks apart.
inline std::string helmholtzSection(const std::string& marker, const std::string& tag, const std::string& molarMass,
                                    const std::string& idealGas = "CPP") {
    return marker + "EOS\n" + tag + "  equation of state of a test fluid\n?source line one\n?source line two\n!\n" +
           "  136.34\n  435.0\n  70000.0\n  27.4734\n" + idealGas + "\n  " + molarMass +
           "\n  136.34\n  0.0480\n  27.4734\n  221.5\n  0.2769\n"
           "  351.255  5782.0  8.1500846\n"
           "  351.255  8.1500846\n"
           "  8.314471\n"
           "  2 4 0 0 0 0\n"
           "  -1.5  1.5  1.0  0.0\n"
           "   0.5  0.5  2.0  1.0\n";
}

inline std::string heatCapacitySection(const std::string& tag, const std::string& counts, const std::string& terms) {
    return "#AUX\n" + tag + "  heat capacity of a test fluid\n?source\n!\n  100.0\n  1000.0\n  0.0\n  0.0\n" +
           "  1.0  8.314471\n" + counts + "\n" + terms;
}
inline const std::string plainHeatCapacity = heatCapacitySection("CPP", "  1 0 0 0 0 0 0", "  4.0  0.0\n");

inline const std::string endOfFile = "@END\nc\n0\n";

inline std::string plainFile(const Header& header = {}) {
    return headerText(header) + "\n" + helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity + endOfFile;
}

// A folder for the files of a test, and an engine that has not been set up.
class EngineTest : public ::testing::Test {
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

    // Sets up the named files with a reference state.
    int setUp(std::initializer_list<std::string> names, const char* reference = "NA") {
        FileNames files{};
        int nc = 0;
        for (const std::string& name : names) files[++nc] = std::string_view(name);
        hrf = reference;
        SETUP(nc, files, std::string_view(mixtureFile), hrf, ierr, herr);
        return ierr;
    }
    int force(const char* property, const char* top, std::initializer_list<const char*> models) {
        ComponentArray<Text3> tags{};
        int nc = 0;
        for (const char* model : models) tags[++nc] = model;
        SETMOD(nc, property, top, tags, ierr, herr);
        return ierr;
    }
    std::string write(const std::string& name, const std::string& text) const {
        writeFile(folder.path(name), text);
        return folder.path(name);
    }
    std::string message() const { return std::string(herr.view().substr(0, herr.view().find('\0'))); }

    TemporaryFolder folder;
    std::string mixtureFile = "HMX.BNC";
    Text3 hrf;
    int ierr = 0;
    Text255 herr;
};

}  // namespace frigana::test
