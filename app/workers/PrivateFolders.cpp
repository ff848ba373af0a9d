#include "PrivateFolders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace frigana::workers {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view rootBeginning = "frigana-pool-";

bool writableFolder(const char* path) {
    std::error_code error;
    return fs::is_directory(path, error) && access(path, W_OK | X_OK) == 0;
}

Descriptor openFolder(const std::string& path) {
    return Descriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW));
}

// The path still leads to the folder that is open.
bool samePlace(const std::string& path, const Descriptor& folder) {
    struct stat named, opened;
    return lstat(path.c_str(), &named) == 0 && fstat(folder.get(), &opened) == 0 && named.st_ino == opened.st_ino &&
           named.st_dev == opened.st_dev;
}

void sweepAbandoned(const std::string& place) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(place, error)) {
        const std::string path = entry.path().string();
        if (!entry.path().filename().string().starts_with(rootBeginning)) continue;
        struct stat status;
        if (lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != geteuid()) continue;
        const Descriptor folder = openFolder(path);
        if (folder.valid() && flock(folder.get(), LOCK_EX | LOCK_NB) == 0) removeFolder(path);
    }
}

}  // namespace

std::string placeOfFolders() {
    const char* wanted = std::getenv("TMPDIR");
    for (const char* place : {wanted, "/dev/shm", "/tmp"})
        if (place != nullptr && *place == '/' && writableFolder(place)) return place;
    return "/tmp";
}

RootFolder makeRootFolder(const std::string& place) {
    sweepAbandoned(place);
    for (;;) {
        RootFolder root;
        root.path = place + "/" + std::string(rootBeginning) + "XXXXXX";
        if (mkdtemp(root.path.data()) == nullptr)
            throw std::system_error(errno, std::generic_category(), "no private folder could be made in " + place);
        root.lock = openFolder(root.path);
        // Another process that sweeps may take the folder between the two calls; then there is a next one.
        if (root.lock.valid() && flock(root.lock.get(), LOCK_EX | LOCK_NB) == 0 && samePlace(root.path, root.lock))
            return root;
    }
}

void removeFolder(const std::string& path) {
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

void emptyFolder(const std::string& path) {
    DIR* folder = opendir(path.c_str());
    if (folder == nullptr) return;
    while (const dirent* entry = readdir(folder)) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") continue;
        if (unlinkat(dirfd(folder), entry->d_name, 0) == 0) continue;
        removeFolder(path + "/" + std::string(name));
    }
    closedir(folder);
}

}  // namespace frigana::workers
