// A folder that lives as long as its test, and whole files as strings.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace frigana::test {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        static int count = 0;
        folder_ = std::filesystem::temp_directory_path() /
                  ("frigana-" + std::to_string(getpid()) + "-" + std::to_string(++count));
        std::filesystem::create_directories(folder_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path(std::string_view name = "") const {
        return name.empty() ? folder_.string() : (folder_ / name).string();
    }

  private:
    std::filesystem::path folder_;
};

inline void writeFile(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string readFile(const std::string& path) {
    std::ostringstream all;
    all << std::ifstream(path, std::ios::binary).rdbuf();
    return all.str();
}

}  // namespace frigana::test
