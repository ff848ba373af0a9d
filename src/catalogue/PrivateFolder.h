// A folder of one run alone, gone with all that is in it when the run is over.
#pragma once

#include <filesystem>
#include <string>

namespace frigana::catalogue {

class PrivateFolder {
  public:
    // Made where the person says (TMPDIR), else in memory, else where the system says.
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    bool exists() const { return !path_.empty(); }
    std::string path() const { return path_.string(); }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

}  // namespace frigana::catalogue
