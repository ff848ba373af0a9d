#include <filesystem>

#include "FluidFilePath.h"
#include "FluidText.h"
#include "TextFile.h"

namespace frigana::test {
namespace {

class OpenFile : public EngineTest {
  protected:
    // Opens a name; true if it was found. The first line of the file found stays in `found`.
    bool open(const std::string& name, int kind = 1) {
        int unit = 12;
        Text255 file = std::string_view(name);
        OPENFL(unit, file, kind, ierr, herr);
        found.clear();
        if (ierr != 0) {
            EXPECT_EQ(ierr, 101);
            EXPECT_TRUE(herr.blank()) << message();
            EXPECT_FALSE(unitIsOpen(unit));
            return false;
        }
        EXPECT_EQ(readText(unit, found), ReadStatus::ok);
        closeUnit(unit);
        return true;
    }
    void put(const std::string& name, const std::string& firstLine) const {
        std::filesystem::create_directories(std::filesystem::path(folder.path(name)).parent_path());
        writeFile(folder.path(name), firstLine + "\n");
    }
    Text255 found;
};

TEST_F(OpenFile, ANameInTheWrongCaseOrWithItsExtensionInTheWrongCaseIsFound) {
    struct Row {
        const char* onDisk;
        const char* asked;
    };
    constexpr Row rows[] = {
        {"R134A.FLD", "r134a.fld"}, {"r134a.fld", "R134A.FLD"}, {"R134a.fld", "R134a.FLD"},
        {"R134a.FLD", "R134a.fld"}, {"hmx.bnc", "HMX.BNC"},     {"HMX.bnc", "HMX.BNC"},
    };
    for (const Row& row : rows) {
        // beside the installation folder's name and in its folder of fluids
        for (const char* where : {"", "fluids/"}) {
            const TemporaryFolder own;
            std::filesystem::create_directories(own.path("fluids"));
            writeFile(own.path(std::string(where) + row.onDisk), "here\n");
            SETPATH(own.path());
            EXPECT_TRUE(open(row.asked)) << row.onDisk << " asked as " << row.asked << " in " << where;
        }
    }
}

TEST_F(OpenFile, AFullPathInTheWrongCaseOfItsNameIsFoundWithoutAnInstallationFolder) {
    put("Data/R32.FLD", "upper");
    EXPECT_TRUE(open(folder.path("Data/r32.fld")));
    EXPECT_EQ(found, "upper");
}

TEST_F(OpenFile, TheInstallationFolderComesBeforeItsFluidFolder) {
    put("fluids/R32.FLD", "in fluids");
    put("mixtures/R32.FLD", "in mixtures");
    SETPATH(folder.path());
    ASSERT_TRUE(open("R32.FLD"));
    EXPECT_EQ(found, "in fluids");
    ASSERT_TRUE(open("R32.FLD", 2));
    EXPECT_EQ(found, "in mixtures");
    put("R32.FLD", "on top");
    ASSERT_TRUE(open("R32.FLD"));
    EXPECT_EQ(found, "on top");
}

TEST_F(OpenFile, TheInstallationFolderMayEndInASeparatorOfEitherKind) {
    put("fluids/R32.FLD", "here");
    for (const char* end : {"", "/", "\\"}) {
        SETPATH(folder.path() + end);
        EXPECT_TRUE(open("R32.FLD")) << end;
        EXPECT_TRUE(open("r32.fld")) << end;
    }
}

TEST_F(OpenFile, ANullCharacterEndsTheInstallationFolder) {
    put("fluids/R32.FLD", "here");
    SETPATH(folder.path() + std::string("\0trailing", 9));
    EXPECT_TRUE(open("R32.FLD"));
    EXPECT_EQ(fluidFiles.HPATH, std::string_view(folder.path()));
}

TEST_F(OpenFile, ACarriageReturnBeforeTheBlanksIsCutOut) {
    put("R32.FLD", "here");
    SETPATH(folder.path());
    EXPECT_TRUE(open("R32.FLD\r"));
    EXPECT_TRUE(open("r32.fld\r"));
}

TEST_F(OpenFile, AFileThatIsNowhereAnswers101WithoutAText) {
    SETPATH(folder.path());
    EXPECT_FALSE(open("NOWHERE.FLD"));
    EXPECT_FALSE(open("NOWHERE.MIX", 2));
    EXPECT_FALSE(open(""));
}

TEST_F(OpenFile, AFolderIsNotAFile) {
    std::filesystem::create_directories(folder.path("R32.FLD"));
    SETPATH(folder.path());
    EXPECT_FALSE(open("R32.FLD"));
}

// What stands beside a fluid's file bears its name; a fluid without a file, or with one of another kind, has nothing.
TEST_F(OpenFile, AFileBesideThatOfAFluid) {
    write("ONE.SAT", "beside\n");
    const auto opens = [&](const std::string& path) {
        noteFluidFile(1, path);
        int unit = 12;
        const bool open = openBesideFluid(1, ".SAT", unit);
        if (open) closeUnit(unit);
        return open;
    };
    EXPECT_TRUE(opens(folder.path("ONE.FLD")));
    EXPECT_TRUE(opens(folder.path("ONE.fld")));
    for (const std::string& none : {std::string(), folder.path("TWO.FLD"), folder.path("ONE.TXT"), std::string("ONE"),
                                    std::string(5000, 'x') + ".FLD"})
        EXPECT_FALSE(opens(none)) << none.substr(0, 50);
    EXPECT_TRUE(opens(folder.path("ONE.FLD")));
    noteFluidFile(0, folder.path("TWO.FLD"));
    noteFluidFile(-1, folder.path("TWO.FLD"));
    int unit = 12;
    EXPECT_TRUE(openBesideFluid(1, ".SAT", unit)) << "slots of reference fluids are not remembered";
    closeUnit(unit);
    noteFluidFile(1, {});
}

TEST_F(OpenFile, AUnitInUseIsPassedOver) {
    put("R32.FLD", "here");
    SETPATH(folder.path());
    int first = 12, second = 12;
    Text255 name = "R32.FLD";
    OPENFL(first, name, 1, ierr, herr);
    ASSERT_EQ(ierr, 0);
    OPENFL(second, name, 1, ierr, herr);
    ASSERT_EQ(ierr, 0);
    EXPECT_EQ(second, first + 1);
    closeUnit(second);
    closeUnit(first);
}

TEST_F(OpenFile, AReferenceFileTakesTheFolderOfTheFirst) {
    struct Row {
        const char *first, *second, *result;
    };
    constexpr Row rows[] = {
        {"c:\\data\\fluids\\r32.fld", "propane.fld", "c:\\data\\fluids\\propane.fld"},
        {"/data/fluids/r32.fld", "propane.fld", "/data/fluids/propane.fld"},
        {"c:r32.fld", "propane.fld", "c:propane.fld"},
        {"r32.fld", "propane.fld", "propane.fld"},
        {"BDATA/r32", "propane.fld", "propane.fld"},
        {"bdata/r32", "propane.fld", "propane.fld"},
    };
    for (const Row& row : rows) {
        Text255 name = row.second;
        RFFILE(row.first, name);
        EXPECT_EQ(name, row.result) << row.first;
    }
    Text255 name = "propane.fld";
    RFFILE(std::string_view("a/b\0/c/d", 8), name);
    EXPECT_EQ(name, "a/propane.fld");
}

}  // namespace
}  // namespace frigana::test
