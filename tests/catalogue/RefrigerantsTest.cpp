// Designations, classes and potentials of refrigerants.json: every fluid and blend of the installation has its record,
// and the figures of blends are those of their components.
#include "OneRefrigerant.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <tuple>

#include "Larger.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

namespace fs = std::filesystem;

std::set<std::string> stemsOf(const char* folder, const char* extension) {
    std::set<std::string> stems;
    for (const auto& entry : fs::directory_iterator(fs::path(test::dataFolder) / folder))
        if (entry.path().extension() == extension) stems.insert(entry.path().stem().string());
    return stems;
}

TEST(Refrigerants, EveryFileOfTheInstallationHasItsRecord) {
    const Refrigerants& list = Refrigerants::of(test::dataFolder);
    const auto fluids = stemsOf("fluids", ".FLD"), blends = stemsOf("mixtures", ".MIX");
    EXPECT_EQ(list.all().size(), fluids.size() + blends.size());
    for (const std::string& name : fluids) {
        const Refrigerant* found = list.find(name + ".fld");
        ASSERT_NE(found, nullptr) << name;
        EXPECT_FALSE(found->blend) << name;
        EXPECT_NE(std::find(fluidFamilies.begin(), fluidFamilies.end(), found->family), fluidFamilies.end()) << name;
        // the number stands in the second line of the fluid file
        std::ifstream file(fs::path(test::dataFolder) / "fluids" / (name + ".FLD"));
        std::string line;
        std::getline(file, line);
        std::getline(file, line);
        EXPECT_EQ(line.substr(0, line.find(' ')), found->cas) << name;
    }
    for (const std::string& name : blends) {
        const Refrigerant* found = list.find(name);
        ASSERT_NE(found, nullptr) << name;
        EXPECT_TRUE(found->blend) << name;
        EXPECT_FALSE(found->safetyClass.empty()) << name;
    }
    EXPECT_EQ(list.find("R999"), nullptr);
}

// To the four digits given. A component that is left out counts as 0.
TEST(Refrigerants, PotentialsOfBlendsAreMassMeans) {
    const Refrigerants& list = Refrigerants::of(test::dataFolder);
    std::ifstream file(fs::path(test::dataFolder) / "refrigerants.json");
    int compared = 0;
    double worst = 0.0;
    const nlohmann::json root = nlohmann::json::parse(file);
    for (const auto& record : root["fluids"]) {
        if (!record.contains("components")) continue;
        const Refrigerant* blend = list.find(record["name"].get<std::string>());
        ASSERT_NE(blend, nullptr);
        for (std::size_t k = 0; k < climateReports.size(); ++k) {
            double sum = 0.0, mass = 0.0;
            for (const auto& part : record["components"]) {
                const std::string name = part[0];
                const Refrigerant* component = list.find(name);
                ASSERT_NE(component, nullptr) << name;
                const double share = part[1];
                mass += share;
                if (component->gwp[k]) {
                    sum += share * *component->gwp[k];
                } else if (blend->gwp[k]) {
                    EXPECT_NE(std::find(blend->gwpLeftOut[k].begin(), blend->gwpLeftOut[k].end(), name),
                              blend->gwpLeftOut[k].end())
                        << blend->name << ' ' << name;
                }
            }
            if (!blend->gwp[k]) continue;
            const double off = std::fabs(sum / mass - *blend->gwp[k]);
            // half a unit of the last of four digits
            EXPECT_LE(off, 0.5001 * std::pow(10.0, std::floor(std::log10(std::max(*blend->gwp[k], 1e-9))) - 3.0))
                << blend->name << ' ' << climateReports[k] << ' ' << sum / mass << ' ' << *blend->gwp[k];
            worst = test::larger(worst, off / std::max(*blend->gwp[k], 1.0));
            ++compared;
        }
    }
    EXPECT_GT(compared, 300);
    std::printf("%d potentials of blends, largest deviation %.1e\n", compared, worst);
}

TEST(Refrigerants, PotentialsAreShownWithTheirKind) {
    const Refrigerants& list = Refrigerants::of(test::dataFolder);
    EXPECT_EQ(shownPotential(*list.find("R134A"), 2), "1530");
    EXPECT_EQ(shownPotential(*list.find("R1234YF"), 1), "<1");
    EXPECT_EQ(shownPotential(*list.find("R1234YF"), 0), "-");
    EXPECT_EQ(shownPotential(*list.find("BUTANE"), 2), "0.006");
    EXPECT_EQ(shownPotential(*list.find("R22"), 2), "1960");
}

TEST(Refrigerants, AFileThatIsMissingOrDamagedListsNothing) {
    test::TemporaryFolder folder;
    EXPECT_TRUE(Refrigerants(folder.path()).all().empty());
    for (const char* text : {"", "{", "[]", "{\"fluids\": 3}", "{\"fluids\": [3, {}, {\"name\": 4}, null]}"}) {
        test::writeFile(folder.path("refrigerants.json"), text);
        EXPECT_TRUE(Refrigerants(folder.path()).all().empty()) << text;
    }
    test::writeFile(folder.path("refrigerants.json"),
                    R"({"fluids": [{"name": "A", "gwp100": [1], "odp": "x", "aliases": {"b": 1}}, {"name": "a"}]})");
    const Refrigerants list(folder.path());
    ASSERT_EQ(list.all().size(), 1u);
    EXPECT_FALSE(list.all()[0].gwp[2]);
    EXPECT_FALSE(list.all()[0].odp);
}

TEST(OneRefrigerant, IsTheRecordOfTheList) {
    int compared = 0;
    for (const Refrigerant& listed : Refrigerants::of(test::dataFolder).all()) {
        SCOPED_TRACE(listed.name);
        const Refrigerant* one = oneRefrigerant(test::dataFolder, listed.name + (listed.blend ? ".mix" : ".FLD"));
        ASSERT_NE(one, nullptr);
        EXPECT_EQ(std::tie(one->name, one->blend, one->family, one->designation, one->cas, one->safetyClass, one->note,
                           one->aliases, one->odp, one->gwp, one->gwpBelow, one->gwpLeftOut),
                  std::tie(listed.name, listed.blend, listed.family, listed.designation, listed.cas, listed.safetyClass,
                           listed.note, listed.aliases, listed.odp, listed.gwp, listed.gwpBelow, listed.gwpLeftOut));
        ++compared;
    }
    EXPECT_GT(compared, 200);
    EXPECT_EQ(oneRefrigerant(test::dataFolder, "R999.FLD"), nullptr);
    EXPECT_EQ(oneRefrigerant(test::dataFolder, ""), nullptr);
}

// Each text is read as that of another folder, since what was read is kept.
TEST(OneRefrigerant, IsFoundInAnyFormOfTheFileAndNotInADamagedOne) {
    const auto classIn = [](const char* text) {
        const test::TemporaryFolder folder;
        if (text != nullptr) test::writeFile(folder.path("refrigerants.json"), text);
        const Refrigerant* one = oneRefrigerant(folder.path(), "R1");
        return one == nullptr ? std::string("none") : one->safetyClass;
    };
    EXPECT_EQ(classIn(R"({"fluids":[{"name":"R2","safety_class":"B"},{"safety_class":"A","name":"R1"}]})"), "A");
    EXPECT_EQ(
        classIn("{\n\t\"note\" : \"}]\\\\\\\" {\",\r\n \"fluids\" : [ null , 3.5e1 , [\"name\"] ,\n"
                "{ \"x\" : {\"name\" : \"R1\"} , \"safety_class\" : \"C\" , \"name\" : \"\\u0052\\u0031\" } ] }\n"),
        "C");
    // the first of two counts
    EXPECT_EQ(classIn(R"({"fluids": [{"name": "r1", "safety_class": "A"}, {"name": "R1", "safety_class": "B"}]})"),
              "A");
    for (const char* damaged :
         {"", "{", "[]", "{\"fluids\": 3}", "{\"fluids\": [{\"name\": \"R1\"", "{\"fluids\": [{\"name\": \"R1\"}]",
          "{\"fluids\": [{\"name\": \"R1\"}", "{\"fluids\": [{\"name\": \"R1}]}", "{\"fluids\": [{\"name\": 1}]}",
          "{\"fluids\": [{\"name\": \"R1\", \"odp\": x y}]}", "{\"fluids\" [{\"name\": \"R1\"}]}", "{\"fluids\": ,}"})
        EXPECT_EQ(classIn(damaged), "none") << damaged;
    EXPECT_EQ(classIn(nullptr), "none");
}

TEST(Refrigerants, EstimatesAreToldByTheFiles) {
    using Texts = std::vector<std::string>;
    const std::string data = test::dataFolder;
    EXPECT_EQ(estimatedProperties(data, "R134A.FLD"), Texts{});
    EXPECT_EQ(estimatedProperties(data, "R161.FLD"), (Texts{"viscosity", "conductivity"}));
    EXPECT_EQ(estimatedProperties(data, "CYCLOPEN.FLD"), Texts{"viscosity"});
    EXPECT_EQ(estimatedProperties(data, "DME.FLD"), Texts{"conductivity"});
    EXPECT_EQ(estimatedProperties(data, "R1123.FLD"), (Texts{"viscosity", "conductivity", "surface tension"}));
    EXPECT_EQ(estimatedProperties(data, "R513A.MIX", {"R1234YF", "R134A"}), Texts{});
    EXPECT_EQ(estimatedProperties(data, "R510A.MIX", {"DME", "ISOBUTAN"}), Texts{"conductivity"});
    EXPECT_EQ(estimatedProperties(data, "NOTHING.FLD"), Texts{});
    int estimated = 0;
    for (const std::string& name : stemsOf("fluids", ".FLD")) estimated += !estimatedProperties(data, name).empty();
    EXPECT_EQ(estimated, 37);  // R113 and 36 of the further fluids
}

}  // namespace
}  // namespace frigana::catalogue
