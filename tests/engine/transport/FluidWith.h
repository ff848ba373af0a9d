// A fluid file of the data folder with other transport sections, in a folder of the test.
#pragma once

#include <string>

#include "TemporaryFolder.h"
#include "Transport.h"
#include "TreeFolders.h"

namespace frigana::test {

// The file's text without its sections of viscosity, conductivity, corresponding states and surface tension, and with
// `sections` before its end.
inline std::string textWith(const std::string& base, const std::string& sections) {
    std::istringstream in(readFile(std::string(test::dataFolder) + "/fluids/" + base + ".FLD"));
    std::string text, line, head;
    bool keep = true;
    while (std::getline(in, line)) {
        const bool opens = !line.empty() && (line[0] == '#' || line[0] == '@');
        if (opens && line.compare(1, 3, "END") == 0) return text + sections + line + "\nc\n0\n";
        if (opens) {
            const std::string key = line.substr(1, 3);
            const auto place = in.tellg();
            std::string tag;
            std::getline(in, tag);
            in.seekg(place);
            tag = tag.substr(0, 2);
            keep = !(key == "ETA" || key == "TCX" || key == "TRN" || key == "STN" ||
                     (key == "AUX" && (tag == "CI" || tag == "TK")));
        }
        if (keep) text += line + "\n";
    }
    return text;
}

// Opening lines of a section; the body follows.
inline std::string section(const std::string& key, const std::string& tag) {
    return "#" + key + "\n" + tag + "  section of a test\n?source\n!\n";
}
inline const std::string wideLimits = "  50.0\n  2000.0\n  1000000.0\n  100.0\n";

class FluidWithSections : public testing::Test {
  protected:
    // Sets up the fluid; returned is the code of the set-up.
    int setUpWith(const std::string& base, const std::string& sections) {
        writeFile(folder.path("FLUID.FLD"), textWith(base, sections));
        FileNames files{};
        files[1] = std::string_view(folder.path("FLUID.FLD"));
        Text3 reference = "NA";
        // the last file of this name may have held other sections
        modelTags.LFORCESETUP = true;
        SETUP(1, files, "HMX.BNC", reference, ierr, herr);
        return ierr;
    }
    std::string message() const { return words(herr); }

    TemporaryFolder folder;
    int ierr = 0;
    Text255 herr;
};

}  // namespace frigana::test
