// A person's own blends: found by what people write differently, told where they cannot be read, replaced by name.
#include "StoredBlends.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "NamedRequest.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

const FluidNames& names() {
    return FluidNames::of(test::dataFolder);
}

FilledRequest blend(const std::string& name, double share) {
    FilledRequest filled = typicalRequest(*findRequest("store-blend"));
    Fluid& fluid = filled.blocks.front().fluid;
    fluid.blendName = name;
    fluid.components = {{"R32.FLD", share}, {"R1234YF.FLD", 1.0 - share}};
    return filled;
}

std::string store(const FilledRequest& request, const std::string& folder) {
    std::string path;
    return storeOwnBlend(request, folder, names(), path);
}

std::size_t filesIn(const std::string& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

double shareOf(const char* name, const std::string& folder) {
    std::string problem;
    const auto found = storedBlend(name, folder, names(), problem);
    return found ? found->components.front().fraction : -1.0;
}

TEST(StoredBlends, AreFoundByWhatPeopleWriteDifferently) {
    const test::TemporaryFolder folder;
    ASSERT_EQ(store(blend("My-Blend 1", 0.3), folder.path()), "");
    for (const char* name : {"My-Blend 1", "my blend 1", "MYBLEND1", "my_blend_1"})
        EXPECT_EQ(shareOf(name, folder.path()), 0.3) << name;
    EXPECT_EQ(shareOf("MYBLEND", folder.path()), -1.0);
    EXPECT_EQ(shareOf("MYBLEND1", ""), -1.0);
    EXPECT_EQ(shareOf("MYBLEND1", folder.path("none")), -1.0);

    Fluid fluid;
    EXPECT_EQ(findFluid("myblend1", names(), folder.path(), fluid), "");
    EXPECT_EQ(fluid.kind, 3);
    EXPECT_EQ(shownName(fluid, names()), "My-Blend 1");
    // The installation comes first.
    ASSERT_EQ(store(blend("R410A", 0.3), folder.path()), "");
    EXPECT_EQ(findFluid("R410A", names(), folder.path(), fluid), "");
    EXPECT_EQ(fluid.kind, 2);
    EXPECT_EQ(shownName(fluid, names()), "R410A");
    EXPECT_EQ(findFluid("myblend2 or so", names(), folder.path(), fluid), "is no fluid or blend of the installation");
}

TEST(StoredBlends, OneOfTheSameNameIsReplacedWhateverItsLetters) {
    const test::TemporaryFolder folder;
    ASSERT_EQ(store(blend("mine", 0.3), folder.path()), "");
    ASSERT_EQ(store(blend("mine", 0.4), folder.path()), "");
    EXPECT_EQ(filesIn(folder.path()), 1u);
    ASSERT_EQ(store(blend("MI-NE", 0.6), folder.path()), "");
    EXPECT_EQ(filesIn(folder.path()), 1u);
    EXPECT_EQ(shareOf("mine", folder.path()), 0.6);
    // Of two that somebody has put there the same is taken whatever the order of the folder.
    test::writeFile(folder.path("MINE.toml"), test::readFile(folder.path("MI-NE.toml")));
    ASSERT_EQ(store(blend("other", 0.5), folder.path()), "");
    const auto all = storedBlends(folder.path(), names());
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].name, "MI-NE");
    EXPECT_EQ(all[1].name, "MINE");
    EXPECT_EQ(all[2].name, "other");
    EXPECT_EQ(all[2].fluid.components.front().fraction, 0.5);
}

TEST(StoredBlends, AFileThatIsNoBlendIsTold) {
    const test::TemporaryFolder folder;
    test::writeFile(folder.path("broken.toml"), "fluid = {");
    test::writeFile(folder.path("pure.toml"), "request = \"fluid-information\"\nfluid = \"R134a\"\n");
    test::writeFile(folder.path("notes.txt"), "fluid = {");
    std::filesystem::create_directory(folder.path("folder.toml"));
    Fluid fluid;
    const std::string broken = findFluid("Broken", names(), folder.path(), fluid);
    EXPECT_TRUE(broken.starts_with("is a stored blend that cannot be read: ")) << broken;
    EXPECT_NE(broken.find("broken.toml:1: this is no TOML"), std::string::npos) << broken;
    const std::string pure = findFluid("PURE", names(), folder.path(), fluid);
    EXPECT_TRUE(pure.starts_with("is a stored blend that lists no components: ")) << pure;
    EXPECT_TRUE(pure.ends_with("pure.toml")) << pure;
    const auto all = storedBlends(folder.path(), names());
    ASSERT_EQ(all.size(), 2u);
    EXPECT_NE(all[0].problem, "");
    EXPECT_NE(all[1].problem, "");
    EXPECT_TRUE(storedBlends("", names()).empty());
    EXPECT_TRUE(storedBlends(folder.path("none"), names()).empty());
    // A stored blend is no fluid to mix from.
    ASSERT_EQ(store(blend("mine", 0.3), folder.path()), "");
    const NamedRequest named = readNamed("request = \"fluid-information\"\nfluid = { mine = 0.5, R32 = 0.5 }\n",
                                         NamedFormat::toml, names(), folder.path());
    ASSERT_EQ(named.problems.size(), 1u);
}

TEST(StoredBlends, WhereNoneCanBeStoredTheReasonIsTold) {
    EXPECT_EQ(store(blend("mine", 0.3), ""),
              "the blend cannot be stored: the system names no folder for a person's data");
    const test::TemporaryFolder folder;
    const std::string deep = folder.path(std::string(250, 'd'));
    EXPECT_EQ(store(blend("mine", 0.3), deep), "the blend cannot be stored: its path has more than 255 characters: " +
                                                   (std::filesystem::path(deep) / "mine.toml").string());
    EXPECT_FALSE(std::filesystem::exists(deep));
    test::writeFile(folder.path("file"), "");
    EXPECT_EQ(store(blend("mine", 0.3), folder.path("file")),
              "the blend cannot be stored: " + (std::filesystem::path(folder.path("file")) / "mine.toml").string() +
                  " cannot be written");
}

}  // namespace
}  // namespace frigana::catalogue
