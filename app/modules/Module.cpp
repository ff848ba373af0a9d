#include "Module.h"

#include <dlfcn.h>

#include <filesystem>

namespace frigana::modules {

namespace {

namespace fs = std::filesystem;

// The path of an installed module; empty where there is none.
fs::path pathOf(const std::string& file) {
    std::error_code error;
    const fs::path lib = fs::read_symlink("/proc/self/exe", error).parent_path().parent_path() / "lib";
    for (const fs::path& path : {lib / file, lib / "frigana" / file})
        if (fs::exists(path, error)) return path;
    return {};
}

}  // namespace

bool isInstalled(const std::string& file) {
    return !pathOf(file).empty();
}

void* load(const std::string& file, const char* function, std::string& complaint) {
    const fs::path path = pathOf(file);
    if (path.empty()) {
        complaint = "the module " + file + " is not installed beside the program";
        return nullptr;
    }
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* found = module == nullptr ? nullptr : dlsym(module, function);
    if (found == nullptr) complaint = "the module " + file + " cannot be loaded: " + dlerror();
    return found;
}

}  // namespace frigana::modules
