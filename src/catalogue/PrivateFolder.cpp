#include "PrivateFolder.h"

#include <atomic>
#include <cstdlib>
#include <random>

namespace frigana::catalogue {

namespace fs = std::filesystem;

namespace {

fs::path memoryFolder() {
    return "/dev/shm";
}
fs::path toldFolder() {
    const char* told = std::getenv("TMPDIR");
    return told != nullptr && *told != '\0' ? fs::path(told) : memoryFolder();
}
fs::path systemFolder() {
    std::error_code error;
    const fs::path system = fs::temp_directory_path(error);
    return error ? memoryFolder() : system;
}

}  // namespace

PrivateFolder::PrivateFolder() {
    static std::atomic<unsigned> counter{0};
    static const unsigned process = std::random_device{}();
    std::error_code error;
    for (const auto parent : {toldFolder, memoryFolder, systemFolder})
        for (int attempt = 0; attempt < 100; ++attempt) {
            const fs::path candidate =
                parent() / ("frigana-" + std::to_string(process) + '-' + std::to_string(++counter));
            if (fs::create_directory(candidate, error)) {
                fs::permissions(candidate, fs::perms::owner_all, error);
                path_ = candidate;
                return;
            }
            if (error) break;
        }
}

PrivateFolder::~PrivateFolder() {
    if (path_.empty()) return;
    std::error_code error;
    // Most runs leave these two alone; to look for others takes three times as many calls of the system.
    for (const char* name : {"request.fo1", "request.fi1"}) fs::remove(path_ / name, error);
    if (!fs::remove(path_, error)) fs::remove_all(path_, error);
}

}  // namespace frigana::catalogue
