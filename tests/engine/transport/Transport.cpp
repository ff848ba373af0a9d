#include "Transport.h"
#include "TreeFolders.h"

#include "DISPATCH.h"

namespace frigana::test {

bool simplyScaled(double T, double D) {
    double tz = 0.0, rhoz = 0.0;
    REDK(1, tz, rhoz);
    const double A = PHIK(1, 0, 0, tz / T, D / rhoz), Z = 1.0 + PHIK(1, 0, 1, tz / T, D / rhoz);
    ConformalState state;
    return conformalState(0, A, Z, fluidConstants.TCRIT[1], fluidConstants.DCRIT[1], T, D, state) && !state.newton;
}

testing::AssertionResult setUpForced(std::string_view fluid, const char* viscosity, const char* conductivity) {
    int ierr = 0;
    Text255 herr;
    ComponentArray<Text3> tags{};
    tags.fill("NBS");
    SETMOD(1, "NBS", "NBS", tags, ierr, herr);
    tags[1] = viscosity;
    SETMOD(1, "ETA", viscosity, tags, ierr, herr);
    tags[1] = conductivity;
    SETMOD(1, "TCX", conductivity, tags, ierr, herr);
    setPath();
    FileNames files{};
    files[1].assign(std::string(fluid) + ".FLD");
    Text3 reference = "DEF";
    SETUP(1, files, "HMX.BNC", reference, ierr, herr);
    if (ierr > 0) return testing::AssertionFailure() << "set-up " << ierr << ": " << words(herr);
    return testing::AssertionSuccess();
}

std::vector<std::vector<std::string>> referenceRows(std::string_view file) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream in(std::string(test::testsFolder) + "/reference/" + std::string(file));
    std::string line;
    std::getline(in, line);
    while (std::getline(in, line)) {
        std::vector<std::string> fields;
        std::istringstream parts(line);
        for (std::string field; std::getline(parts, field, ',');) fields.push_back(field);
        rows.push_back(fields);
    }
    return rows;
}

namespace {

// Value of a key in one object of the list: the text between quotes, or the number; blank for null.
std::string member(const std::string& object, const std::string& key) {
    auto at = object.find("\"" + key + "\":");
    if (at == std::string::npos) return "";
    at = object.find_first_not_of(' ', at + key.size() + 3);
    if (object[at] == '"') return object.substr(at + 1, object.find('"', at + 1) - at - 1);
    const std::string value = object.substr(at, object.find_first_of(",}", at) - at);
    return value == "null" ? "" : value;
}

}  // namespace

std::vector<PublishedValue> publishedValues(std::string_view file) {
    std::vector<PublishedValue> values;
    std::ifstream in(std::string(test::testsFolder) + "/reference/" + std::string(file));
    std::ostringstream all;
    all << in.rdbuf();
    const std::string text = all.str();
    for (auto at = text.find('{'); at != std::string::npos; at = text.find('{', at + 1)) {
        const std::string object = text.substr(at, text.find('}', at) - at + 1);
        PublishedValue v;
        v.fluid = member(object, "fluid");
        v.property = member(object, "property");
        v.source = member(object, "source");
        v.T = std::stod(member(object, "T"));
        v.perMass = member(object, "rho_mol_L").empty();
        v.rho = std::stod(member(object, v.perMass ? "rho_kg_m3" : "rho_mol_L"));
        v.value = std::stod(member(object, "value"));
        v.tolerance = std::stod(member(object, "tolerance"));
        values.push_back(v);
    }
    return values;
}

}  // namespace frigana::test
