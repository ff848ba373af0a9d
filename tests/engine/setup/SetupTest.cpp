#include <chrono>
#include <filesystem>

#include "CORE_ANC.h"
#include "DISPATCH.h"
#include "FluidText.h"
#include "SAT_SUB.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

class Setup : public EngineTest {};

TEST_F(Setup, VersionIsAnsweredAndNothingTouched) {
    modelTags.NC = 7;
    herr = "kept";
    FileNames files{};
    hrf = "DEF";
    SETUP(-1, files, "HMX.BNC", hrf, ierr, herr);
    EXPECT_EQ(ierr, 91000);
    EXPECT_EQ(herr, "kept");
    EXPECT_EQ(modelTags.NC, 7);
    EXPECT_TRUE(modelTags.LFIRSTSETUP);
    EXPECT_EQ(hrf, "DEF");
}

TEST_F(Setup, ASecondSetUpWithEqualArgumentsOpensNoFile) {
    const std::string file = write("ONE.FLD", plainFile());
    ASSERT_EQ(setUp({file}), 0) << message();
    // another content under the same size and time is not seen, so the file was not opened
    Header other;
    other.name = "seenfluid";
    const auto time = std::filesystem::last_write_time(file);
    write("ONE.FLD", plainFile(other));
    std::filesystem::last_write_time(file, time);
    EXPECT_EQ(setUp({file}), 0) << message();
    EXPECT_EQ(modelTags.NC, 1);
    EXPECT_EQ(fluidFiles.HNAME[1], "testfluid");
    // any change takes the full way
    EXPECT_EQ(setUp({file}, "DEF"), 0) << message();
    EXPECT_EQ(fluidFiles.HNAME[1], "seenfluid");
}

TEST_F(Setup, AFileThatWasReplacedIsReadAgain) {
    const std::string file = write("ONE.FLD", plainFile());
    Header other;
    other.name = "seenfluid";
    // a later time of change
    ASSERT_EQ(setUp({file}), 0) << message();
    const auto time = std::filesystem::last_write_time(file);
    write("ONE.FLD", plainFile(other));
    std::filesystem::last_write_time(file, time + std::chrono::seconds(1));
    EXPECT_EQ(setUp({file}), 0) << message();
    EXPECT_EQ(fluidFiles.HNAME[1], "seenfluid");
    // another size under the same time
    other.name = "third";
    const auto second = std::filesystem::last_write_time(file);
    write("ONE.FLD", plainFile(other));
    std::filesystem::last_write_time(file, second);
    EXPECT_EQ(setUp({file}), 0) << message();
    EXPECT_EQ(fluidFiles.HNAME[1], "third");
    // a file that is gone
    std::filesystem::remove(file);
    EXPECT_EQ(setUp({file}), 101);
}

// Reference fluids and the mixing parameters belong to a set-up as its components do.
TEST_F(Setup, EveryFileThatWasReadIsWatched) {
    const std::string data = std::string(test::dataFolder) + "/fluids/";
    const char* names[] = {"R32.FLD", "R125.FLD", "NITROGEN.FLD", "PROPANE.FLD", "C12.FLD", "R134A.FLD", "HMX.BNC"};
    for (const char* name : names) write(name, readFile(data + name));
    SETPATH(folder.path());
    ASSERT_EQ(setUp({"R32.FLD", "R125.FLD"}), 0) << message();
    for (const char* name : names) {
        modelTags.LFORCESETUP = false;
        fluidFiles.HNAME[1] = "not read";
        ASSERT_EQ(setUp({"R32.FLD", "R125.FLD"}), 0) << message();
        EXPECT_EQ(fluidFiles.HNAME[1], "not read") << "nothing has changed before " << name;
        const std::filesystem::path file = folder.path(name);
        std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + std::chrono::seconds(2));
        ASSERT_EQ(setUp({"R32.FLD", "R125.FLD"}), 0) << message();
        EXPECT_EQ(fluidFiles.HNAME[1], "R32") << name;
    }
}

TEST_F(Setup, AnotherInstallationFolderWithTheSameNamesIsReadAnew) {
    Header other;
    other.name = "elsewhere";
    std::filesystem::create_directories(folder.path("here"));
    std::filesystem::create_directories(folder.path("there"));
    write("here/ONE.FLD", plainFile());
    write("there/ONE.FLD", plainFile(other));
    SETPATH(folder.path("here"));
    ASSERT_EQ(setUp({"ONE.FLD"}), 0) << message();
    EXPECT_EQ(fluidFiles.HNAME[1], "testfluid");
    SETPATH(folder.path("there"));
    ASSERT_EQ(setUp({"ONE.FLD"}), 0) << message();
    EXPECT_EQ(fluidFiles.HNAME[1], "elsewhere");
}

// A fluid without ancillary equations does not answer with those of the fluid before it in its slot.
TEST_F(Setup, EquationsOfSaturationDoNotOutliveTheirFluid) {
    SETPATH(test::dataFolder);
    ASSERT_EQ(setUp({"R134A.FLD"}, "DEF"), 0) << message();
    EXPECT_GT(ancTerms[1].NPS[1], 0);
    ASSERT_EQ(setUp({write("ONE.FLD", plainFile())}), 0) << message();
    // the tags of forced ancillaries stand while the block has nothing for them
    modelTags.HPSK[1] = "PS5";
    double p = 0.0;
    PSATK(1, 300.0, p, ierr, herr);
    EXPECT_EQ(ancTerms[1].NPS[1], 0);
    EXPECT_EQ(ancTerms[1].PSPRD, 0.0);
    EXPECT_FALSE(p > 0.0) << p;
}

// A reference fluid of mixtures may do without an equation of state, but not without a heat capacity as well.
TEST_F(Setup, AReferenceFluidWithoutAHeatCapacityIsAnError) {
    const std::string data = std::string(test::dataFolder) + "/fluids/";
    for (const char* name : {"R125.FLD", "NITROGEN.FLD", "C12.FLD", "R134A.FLD", "HMX.BNC"})
        write(name, readFile(data + name));
    write("PROPANE.FLD", headerText({}) + "\n" + endOfFile);
    SETPATH(folder.path());
    EXPECT_EQ(setUp({"R125.FLD", "R134A.FLD"}), 106);
    EXPECT_EQ(message(), "[SETUP error 106] ideal gas heat capacity equation not found for component #-21.");
}

// An error of the mixture model is not hidden by a warning of the reference state.
TEST_F(Setup, AnErrorOfThePairsComesBeforeAWarningOfTheReferenceState) {
    SETPATH(test::dataFolder);
    EXPECT_EQ(setUp({"AMMONIA.FLD", "R227EA.FLD"}, "nbp"), 117);
    EXPECT_EQ(message(),
              "[SETUP error 117] Estimation of mixing parameters is not possible for most mixtures containing water, "
              "heavy water, helium, hydrogen, parahydrogen, deuterium, neon, ammonia, fluorine, methanol, or ethanol.");
    EXPECT_EQ(setUp({"AMMONIA.FLD", "R227EA.FLD"}, "nbp"), 117) << "and the set-up is not taken for a good one";
    mixtureFile = "NOWHERE.BNC";
    EXPECT_EQ(setUp({"R32.FLD", "R125.FLD"}, "nbp"), 111);
    // two warnings: that of the reference state stands
    mixtureFile = "HMX.BNC";
    EXPECT_EQ(setUp({"R227EA.FLD", "CF3I.FLD"}, "nbp"), -29);
}

TEST_F(Setup, AChangedArgumentReadsTheFilesAgain) {
    const std::string file = write("ONE.FLD", plainFile());
    ASSERT_EQ(setUp({file}), 0) << message();
    Header other;
    other.name = "second   ";  // as long as the first
    const auto time = std::filesystem::last_write_time(file);
    write("ONE.FLD", plainFile(other));
    std::filesystem::last_write_time(file, time);
    ASSERT_EQ(setUp({file}), 0);
    EXPECT_EQ(fluidFiles.HNAME[1], "testfluid");
    mixtureFile = "OTHER.BNC";
    ASSERT_EQ(setUp({file}), 0);
    EXPECT_EQ(fluidFiles.HNAME[1], "second");
}

TEST_F(Setup, ForcedModelsMakeTheSetUpAndTheNextRunInFull) {
    const std::string file = write("ONE.FLD", plainFile());
    ASSERT_EQ(setUp({file}), 0);
    ASSERT_EQ(force("EOS", "HMX", {"FEQ"}), 0);
    ASSERT_EQ(setUp({file}), 0);
    EXPECT_TRUE(modelTags.LFORCESETUP);
    std::filesystem::remove(file);
    EXPECT_EQ(setUp({file}), 101);
}

// Any model that is asked for reads the file again; without one an equal set-up reads nothing.
TEST_F(Setup, AModelOfAnyPropertyReadsTheFileAgain) {
    const std::string file = write("ONE.FLD", plainFile());
    ASSERT_EQ(setUp({file}), 0);
    for (const char* property : {"EOS", "ETA", "TCX", "STN", "eos", "vis", "tcx", "stn"}) {
        fluidFiles.HNAME[1] = "left alone";
        ASSERT_EQ(setUp({file}), 0);
        EXPECT_EQ(fluidFiles.HNAME[1], "left alone") << property;
        ASSERT_EQ(force("nbs", "NBS", {"NBS"}), 0);
        const bool equation = std::string_view(property) == "EOS" || property[0] == 'e';
        ASSERT_EQ(force(property, "HMX", {equation ? "FEQ" : "NUL"}), 0);
        modelTags.LFORCESETUP = false;
        ASSERT_EQ(setUp({file}), 0) << property << ": " << message();
        EXPECT_EQ(fluidFiles.HNAME[1], "testfluid") << property;
        modelTags.LFORCESETUP = true;
        ASSERT_EQ(setUp({file}), 0);
    }
}

// The family of an equation may be asked for by its first two letters.
TEST_F(Setup, AnEquationIsNamedByItsFamily) {
    struct Row {
        const char *asked, *tag;
    };
    for (const Row& row :
         {Row{"FE1", "FEQ"}, Row{"QUX", "QUI"}, Row{"BWX", "BWR"}, Row{"ECX", "ECS"}, Row{"XYZ", "XYZ"}}) {
        renew();
        ASSERT_EQ(force("EOS", row.asked, {row.asked}), 0);
        EXPECT_EQ(modelTags.HEOS, row.tag);
        EXPECT_EQ(modelTags.HMXEOS[1], row.asked) << "as it was asked for";
    }
}

TEST_F(Setup, AFailedSetUpIsNotTakenForAGoodOne) {
    const std::string file = write("ONE.FLD", plainFile());
    ASSERT_EQ(setUp({file}), 0);
    const std::string bad =
        write("BAD.FLD", headerText({}) + "\n" + helmholtzSection("#", "FEQ", "abc") + plainHeatCapacity + endOfFile);
    EXPECT_EQ(setUp({bad}), 104) << message();
    EXPECT_EQ(setUp({bad}), 104) << message();
    EXPECT_EQ(setUp({file}), 0) << message();
}

TEST_F(Setup, NothingIsCalculatedWithHalfOfAFluid) {
    const std::string file = write("ONE.FLD", plainFile());
    EXPECT_EQ(setUp({file, "MISSING.FLD"}), 101);
    EXPECT_EQ(modelTags.NC, 0);
    double T = 0.0, rhol = 0.0, rhov = 0.0;
    Composition z{}, x{}, y{};
    z[1] = z[2] = 0.5;
    SATP(100.0, z, 1, T, rhol, rhov, x, y, ierr, herr);
    EXPECT_GT(ierr, 0);
    ASSERT_EQ(setUp({file}), 0);
    EXPECT_EQ(modelTags.NC, 1);
}

TEST_F(Setup, AReferenceStateThatNeedsSetrefBecomesTheDefaultWithAWarning) {
    const std::string file = write("ONE.FLD", plainFile());
    for (const char* tag : {"OTH", "OT0"}) {
        renew();
        EXPECT_EQ(setUp({file}, tag), -105);
        EXPECT_EQ(message(),
                  "[SETUP warning -105] must use routine SETREF for (OTH) reference state choice; will use default "
                  "(DEF) choice");
        EXPECT_EQ(hrf, "DEF");
        EXPECT_EQ(fluidFiles.HNAME[1], "testfluid");
    }
}

TEST_F(Setup, TheNumberOfComponentsMustBeThatOfSetmod) {
    const std::string file = write("ONE.FLD", plainFile());
    ASSERT_EQ(force("EOS", "HMX", {"FEQ", "FEQ"}), 0);
    EXPECT_EQ(setUp({file}), 114);
    EXPECT_EQ(message(), "[SETUP error 114] number of components does not match value sent to SETMOD");
    EXPECT_EQ(setUp({file}), 0) << "the forced models are forgotten with the error";
}

TEST_F(Setup, NumbersOfComponentsOutOfBoundsAreRefused) {
    FileNames files{};
    hrf = "DEF";
    for (const int nc : {0, -2, 21, 1000}) {
        SETUP(nc, files, "HMX.BNC", hrf, ierr, herr);
        EXPECT_EQ(ierr, 113) << nc;
        EXPECT_EQ(message(), "[SETUP error 113] number of components out of bounds");
    }
}

TEST_F(Setup, ACarriageReturnAfterTheNameDoesNotHideTheFile) {
    write("ONE.FLD", plainFile());
    EXPECT_EQ(setUp({folder.path("ONE.FLD") + "\r"}), 0) << message();
    renew();
    SETPATH(folder.path());
    EXPECT_EQ(setUp({"ONE\r"}), 0) << "with the extension still to be added: " << message();
}

TEST_F(Setup, TheExtensionIsAddedToANameWithoutOne) {
    write("ONE.FLD", plainFile());
    SETPATH(folder.path());
    EXPECT_EQ(setUp({"ONE"}), 0) << message();
    EXPECT_EQ(fluidFiles.HFILE[1], "ONE.fld");
    // a name with something behind a blank, or without room behind it, stays as it is
    for (const std::string& name : {std::string("ONE X"), std::string(253, 'x')}) {
        EXPECT_EQ(setUp({name}), 101) << message();
        EXPECT_EQ(fluidFiles.HFILE[1], std::string_view(name));
    }
}

TEST_F(Setup, SlotZeroIsNotReadForOneFluidWithoutAReference) {
    ASSERT_EQ(setUp({write("ONE.FLD", plainFile())}), 0);
    EXPECT_EQ(fluidFiles.HFILE[0], "NUL");
    EXPECT_EQ(fluidFiles.HNAME[0], "not_defined");
    EXPECT_EQ(fluidFiles.HCAS[0], "not_defined");
}

TEST_F(Setup, SlotZeroHoldsTheReferenceFluidOfTransportOfOneFluid) {
    SETPATH(test::dataFolder);
    ASSERT_EQ(setUp({"R218.FLD"}), 0) << message();
    EXPECT_EQ(trimRight(fluidFiles.HFILE[0].view()), "PROPANE.FLD");
    EXPECT_EQ(fluidFiles.HCAS[0], "74-98-6");
    EXPECT_EQ(fluidConstants.TCRIT[0], 369.89);
    EXPECT_EQ(modelTags.HMXEOS[0], "FEQ");
}

TEST_F(Setup, AMixtureReadsTheFixedReferenceFluidsFromTheFolderOfItsFirstComponent) {
    for (const char* name : {"nitrogen", "propane", "c12", "r134a"}) {
        Header header;
        header.name = name;
        write(std::string(name) + ".fld", plainFile(header));
    }
    const std::string one = write("ONE.FLD", plainFile()), two = write("TWO.FLD", plainFile());
    setUp({one, two});
    EXPECT_EQ(fluidFiles.HNAME[0], "nitrogen");
    EXPECT_EQ(fluidFiles.HNAME[-21], "propane");
    EXPECT_EQ(fluidFiles.HNAME[-22], "c12");
    EXPECT_EQ(fluidFiles.HNAME[-23], "r134a");
    EXPECT_EQ(fluidFiles.HNAME[-24], "not_defined");
    EXPECT_EQ(fluidFiles.HFILE[-24], "NUL");
    EXPECT_EQ(modelTags.HEOS, "HMX");
    EXPECT_EQ(modelTags.HETATOP, "ECS");
    EXPECT_EQ(modelTags.HSTNTOP, "STH");
    EXPECT_EQ(modelTags.HDIELTOP, "DEM");
}

TEST_F(Setup, AnUnknownModelOfAMixtureBecomesTheHelmholtzMixtureModel) {
    SETPATH(test::dataFolder);
    // neither fluid has such an equation of its own: the default of its file comes back with the model
    ASSERT_EQ(force("EOS", "XYZ", {"QUI", "QUI"}), 0);
    ASSERT_EQ(force("ETA", "XYZ", {"VS6", "VS6"}), 0);
    ASSERT_EQ(force("TCX", "XYZ", {"TC6", "TC6"}), 0);
    EXPECT_EQ(setUp({"R32.FLD", "R125.FLD"}, "DEF"), -105);
    EXPECT_EQ(message(), "[SETUP warning -105] unknown mixture model specified, the HMX model will be used.");
    EXPECT_EQ(modelTags.HEOS, "HMX");
    EXPECT_EQ(modelTags.HMXEOS[1], "FEQ");
    EXPECT_EQ(modelTags.HMXEOS[2], "FEQ");
    EXPECT_EQ(modelTags.HETATOP, "ECS");
    EXPECT_EQ(modelTags.HTCXTOP, "ECS");
    EXPECT_NE(modelTags.HETA[1], "VS6");
    EXPECT_NE(modelTags.HTCX[2], "TC6");
}

TEST_F(Setup, AMixtureWithoutItsReferenceFluidsIsRefused) {
    const std::string one = write("ONE.FLD", plainFile()), two = write("TWO.FLD", plainFile());
    EXPECT_EQ(setUp({one, two}), 101);
    EXPECT_EQ(message().substr(0, 59), "[SETUP error 101] error in opening file for component #  0;");
}

TEST_F(Setup, APseudoPureFluidIsKnownByItsName) {
    write("AirPPF.fld", plainFile());
    write("Air.fld", plainFile());
    SETPATH(folder.path());
    ASSERT_EQ(setUp({"AirPPF.fld"}), 0) << message();
    EXPECT_EQ(modelTags.IANC[1], 1);
    ASSERT_EQ(setUp({"Air.fld"}), 0) << message();
    EXPECT_EQ(modelTags.IANC[1], 0);
}

TEST_F(Setup, NamesInOneString) {
    for (const char* name : {"nitrogen", "propane", "c12", "r134a", "one", "two", "three"})
        write(std::string(name) + ".fld", plainFile());
    SETPATH(folder.path());
    hrf = "NA";
    SETUP0(3, "one.fld|two.fld|three.fld", "HMX.BNC", hrf, ierr, herr);
    EXPECT_EQ(modelTags.NC, 3) << "the last name needs no bar behind it";
    EXPECT_EQ(fluidFiles.HFILE[2], "two.fld");
    EXPECT_EQ(fluidFiles.HFILE[3], "three.fld");

    SETUP0(2, "one.fld|two.fld|three.fld", "HMX.BNC", hrf, ierr, herr);
    EXPECT_EQ(modelTags.NC, 2);
    EXPECT_EQ(fluidFiles.HFILE[2], "two.fld");

    SETUP0(1, "one.fld|rest", "HMX.BNC", hrf, ierr, herr);
    EXPECT_EQ(ierr, 0) << message();
    EXPECT_EQ(fluidFiles.HFILE[1], "one.fld");
    SETUP0(1, "one.fld", "HMX.BNC", hrf, ierr, herr);
    EXPECT_EQ(ierr, 0) << message();
    std::string tooMany;
    for (int i = 0; i < 25; ++i) tooMany += "one.fld|";
    SETUP0(25, std::string_view(tooMany), "HMX.BNC", hrf, ierr, herr);
    EXPECT_EQ(ierr, 113);
    EXPECT_EQ(message(), "[SETUP error 113] number of components out of bounds");
}

TEST_F(Setup, TooFewNamesInOneStringAreRefusedBeforeTheSetUp) {
    for (const char* names : {"one.fld|two.fld|", "one.fld|two.fld", "one.fld", ""}) {
        modelTags.NC = 9;
        hrf = "NA";
        SETUP0(3, names, "HMX.BNC", hrf, ierr, herr);
        EXPECT_EQ(ierr, 1) << names;
        EXPECT_EQ(message(), "[SETUP0 error 1] not enough fluid names on input line");
        EXPECT_EQ(modelTags.NC, 9);
    }
}

TEST_F(Setup, PureFluidIsSelectedAndTakenBack) {
    PUREFLD(3);
    EXPECT_EQ(modelTags.IPUREFLD, 3);
    PUREFLD(21);
    EXPECT_EQ(modelTags.IPUREFLD, 0);
    PUREFLD(20);
    EXPECT_EQ(modelTags.IPUREFLD, 20);
    PUREFLD(-1);
    EXPECT_EQ(modelTags.IPUREFLD, 0);
    PUREFLD(4);
    RESETA();
    EXPECT_EQ(modelTags.IPUREFLD, 0);
}

TEST_F(Setup, TheNumberOfComponentsCanBeSetAlone) {
    SETNC(5);
    EXPECT_EQ(modelTags.NC, 5);
}

// ---------------------------------------------------------------------------------------------------- mixture files

class MixtureFile : public EngineTest {
  protected:
    void readMixture(const std::string& text) {
        for (const char* name : {"nitrogen", "propane", "c12", "r134a", "ONE", "TWO"})
            write(std::string(name) + ".fld", plainFile());
        write("BLEND.MIX", text);
        hrf = "NA";
        const std::string parameters = folder.path("HMX.BNC");
        SETMIX(std::string_view(folder.path("BLEND.MIX")), std::string_view(parameters), hrf, nc, files, x, ierr, herr);
    }
    int nc = 0;
    FileNames files{};
    Composition x{};
};

TEST_F(MixtureFile, NamesTakeTheFolderOfTheParameterFileAndFractionsTheirPlaces) {
    readMixture("a blend\n 60.0 350.0 5000.0 7.0\n 2\nONE.fld\nTWO.fld\n 0.25\n 0.75\n 0\n");
    EXPECT_EQ(nc, 2);
    EXPECT_EQ(modelTags.NC, 2);
    EXPECT_EQ(files[1], std::string_view(folder.path("ONE.fld")));
    EXPECT_EQ(files[2], std::string_view(folder.path("TWO.fld")));
    EXPECT_EQ(x[1], 0.25);
    EXPECT_EQ(x[2], 0.75);
    EXPECT_EQ(x[3], 0.0);
}

TEST_F(MixtureFile, FractionsAreBroughtToASumOfOne) {
    readMixture("a blend\n 60.0 350.0 5000.0 7.0\n 2\nONE.fld\nTWO.fld\n 1.0\n 3.0\n 0\n");
    EXPECT_EQ(x[1], 0.25);
    EXPECT_EQ(x[2], 0.75);
}

TEST_F(MixtureFile, ASumWithinSinglePrecisionOfOneIsLeftAlone) {
    readMixture("a blend\n 60.0 350.0 5000.0 7.0\n 2\nONE.fld\nTWO.fld\n 0.25\n 0.75000005\n 0\n");
    EXPECT_EQ(x[2], 0.75000005);
}

TEST_F(MixtureFile, OneComponentIsNotNormalized) {
    readMixture("a fluid\n 60.0 350.0 5000.0 7.0\n 1\nONE.fld\n 0.5\n 0\n");
    EXPECT_EQ(ierr, 0) << message();
    EXPECT_EQ(x[1], 0.5);
}

TEST_F(MixtureFile, UpdatedParametersAreToldAndIgnored) {
    readMixture("a fluid\n 60.0 350.0 5000.0 7.0\n 1\nONE.fld\n 1.0\n 1\n");
    EXPECT_EQ(ierr, -102);
    EXPECT_EQ(message(),
              "[SETMIX error -102] The mixture file contains updated binary interaction parameters which have been "
              "ignored.");
}

TEST_F(MixtureFile, WhateverCannotBeReadIsError101WithTheName) {
    constexpr const char* bad[] = {
        "",
        "a blend\n",
        "a blend\n 60.0 350.0 5000.0\n",
        "a blend\n 60.0 350.0 5000.0 7.0\n",
        "a blend\n 60.0 350.0 5000.0 7.0\n two\n",
        "a blend\n 60.0 350.0 5000.0 7.0\n 21\n",
        "a blend\n 60.0 350.0 5000.0 7.0\n -1\n",
        "a blend\n 60.0 350.0 5000.0 7.0\n 2\nONE.fld\n",
        "a blend\n 60.0 350.0 5000.0 7.0\n 2\nONE.fld\nTWO.fld\n 0.5\n",
        "a blend\n 60.0 350.0 5000.0 7.0\n 2\nONE.fld\nTWO.fld\n 0.5\n half\n 0\n",
        "a blend\n 60.0 350.0 5000.0 7.0\n 2\nONE.fld\nTWO.fld\n 0.5\n 0.5\n",
    };
    for (const char* text : bad) {
        readMixture(text);
        EXPECT_EQ(ierr, 101) << text;
        EXPECT_EQ(message(), "[SETMIX error 101] error in opening mixture file:  " + folder.path("BLEND.MIX")) << text;
    }
    SETMIX("NOWHERE.MIX", "HMX.BNC", hrf, nc, files, x, ierr, herr);
    EXPECT_EQ(ierr, 101);
    EXPECT_EQ(message(), "[SETMIX error 101] error in opening mixture file:  NOWHERE.MIX");
}

}  // namespace
}  // namespace frigana::test
