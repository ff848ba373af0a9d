// A folder that lives as long as its test, whole files as strings, and files that an installation shares with another.
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

// The text of a file; lines end as in C, whatever the system writes.
inline std::string readFile(const std::string& path) {
    std::ostringstream all;
    all << std::ifstream(path).rdbuf();
    return all.str();
}

// A file or folder under another name: a link, or a copy on Windows, where links are for administrators.
inline void share(const std::filesystem::path& original, const std::filesystem::path& name) {
#ifdef _WIN32
    std::filesystem::copy(original, name, std::filesystem::copy_options::recursive);
#else
    if (std::filesystem::is_directory(original))
        std::filesystem::create_directory_symlink(original, name);
    else
        std::filesystem::create_symlink(original, name);
#endif
}

}  // namespace frigana::test
