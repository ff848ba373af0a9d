// The folders of a person's own data and of a run, as the environment names them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "PrivateFolder.h"
#include "StoredBlends.h"
#include "TemporaryFolder.h"

namespace frigana::catalogue {
namespace {

// A variable of the environment for the length of a scope; null leaves it unset.
class Variable {
  public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* before = std::getenv(name)) before_ = before;
        set(value);
    }
    ~Variable() { set(before_ ? before_->c_str() : nullptr); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    void set(const char* value) {
        if (value == nullptr)
            unsetenv(name_);
        else
            setenv(name_, value, 1);
    }
    const char* name_;
    std::optional<std::string> before_;
};

// A relative path counts as none, as the rules for these folders of the desktop say.
TEST(PersonalFolder, IsTheOneThatTheEnvironmentNames) {
    struct {
        const char *data, *home, *folder;
    } const rows[] = {
        {"/data", "/home/me", "/data/frigana"},
        {nullptr, "/home/me", "/home/me/.local/share/frigana"},
        {"", "/home/me", "/home/me/.local/share/frigana"},
        {"data", "/home/me", "/home/me/.local/share/frigana"},
        {nullptr, "me", ""},
        {nullptr, "", ""},
        {nullptr, nullptr, ""},
        {"data", nullptr, ""},
    };
    for (const auto& row : rows) {
        const Variable data("XDG_DATA_HOME", row.data), home("HOME", row.home);
        EXPECT_EQ(personalFolder(), row.folder);
    }
}

// A run has its folder where the environment says, or in memory where that is no folder to write to.
TEST(PrivateFolder, IsMadeWhereItCanBe) {
    const test::TemporaryFolder given;
    const std::string folder = given.path(), none = given.path("none");
    struct {
        const char *told, *parent;
    } const rows[] = {
        {folder.c_str(), folder.c_str()}, {none.c_str(), "/dev/shm"}, {"", "/dev/shm"}, {nullptr, "/dev/shm"}};
    for (const auto& row : rows) {
        std::filesystem::path made;
        {
            const Variable told("TMPDIR", row.told);
            const PrivateFolder one, other;
            ASSERT_TRUE(one.exists());
            made = std::filesystem::path(one / "request.fi1").parent_path();
            EXPECT_EQ(made.parent_path(), row.parent);
            EXPECT_NE(one / "request.fi1", other / "request.fi1");
            test::writeFile(one / "left", "what a run has left");
        }
        EXPECT_FALSE(std::filesystem::exists(made)) << made;
    }
}

}  // namespace
}  // namespace frigana::catalogue
