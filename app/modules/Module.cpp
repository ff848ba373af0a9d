#include "Module.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace frigana::modules {

namespace fs = std::filesystem;

#ifdef _WIN32

fs::path programFile() {
    constexpr DWORD longest = 32768;
    std::wstring path(longest, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), longest);
    return length < longest ? fs::path(path.substr(0, length)) : fs::path();
}

bool isInstalled(const std::string&) {
    return false;
}

void* load(const std::string& file, const char*, std::string& complaint) {
    complaint = "the module " + file + " is not there on Windows";
    return nullptr;
}

#else

fs::path programFile() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

namespace {

// The path of an installed module; empty where there is none.
fs::path pathOf(const std::string& file) {
    std::error_code error;
    const fs::path lib = programFile().parent_path().parent_path() / "lib";
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

#endif

}  // namespace frigana::modules
