// A file in memory that a fuzzer rewrites for every input, under a name in a folder of its own beside the data files of
// the installation.
#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

namespace frigana::fuzz {

class MemoryFile {
  public:
    MemoryFile() {
        // The fuzzer may have closed standard error: its number must not become that of the file.
        while (fcntl(2, F_GETFD) < 0)
            if (open("/dev/null", O_WRONLY) < 0) std::abort();
        handle_ = memfd_create("input", 0);
        if (handle_ < 0) std::abort();
    }
    std::string path() const { return "/proc/self/fd/" + std::to_string(handle_); }
    void fill(const std::uint8_t* data, std::size_t size) const {
        if (ftruncate(handle_, 0) != 0 || pwrite(handle_, data, size, 0) != static_cast<ssize_t>(size)) std::abort();
    }

  private:
    int handle_;
};

// An installation whose file `name` is in memory; all others are those of the data folder.
class Installation {
  public:
    Installation(const MemoryFile& file, std::string_view subfolder, std::string_view name) {
        namespace fs = std::filesystem;
        folder_ = fs::temp_directory_path() / ("frigana-fuzz-" + std::to_string(getpid()));
        for (const char* each : {"fluids", "mixtures"}) {
            fs::create_directories(folder_ / each);
            for (const auto& entry : fs::directory_iterator(fs::path(FRIGANA_DATA) / each))
                if (entry.path().filename() != name)
                    fs::create_symlink(entry.path(), folder_ / each / entry.path().filename());
        }
        fs::create_symlink(file.path(), folder_ / subfolder / name);
    }
    ~Installation() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    std::string folder() const { return folder_.string(); }

  private:
    std::filesystem::path folder_;
};

}  // namespace frigana::fuzz
