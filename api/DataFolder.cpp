#include "DataFolder.h"

#ifndef _WIN32
#include <dlfcn.h>
#endif

#include <cstdlib>
#include <filesystem>
#include <mutex>

#include "FixedText.h"
#include "Installation.h"

namespace frigana::programs {

namespace fs = std::filesystem;

namespace {

std::mutex access;
std::string chosen;

std::string nativeDefault() {
    if (const char* told = std::getenv("FRIGANA_DATA"); told != nullptr && *told != '\0') return told;
#ifndef _WIN32
    Dl_info library;
    std::error_code error;
    if (dladdr(reinterpret_cast<const void*>(&chooseDataFolder), &library) != 0)
        if (const fs::path file = fs::canonical(library.dli_fname, error); !error) return app::installationOf(file);
#endif
    return app::defaultInstallation();
}

}  // namespace

std::string dataFolder() {
    const std::lock_guard lock(access);
    if (chosen.empty()) chosen = nativeDefault();
    return chosen;
}

std::string chooseDataFolder(const std::string& folder) {
    std::error_code error;
    const std::string whole = fs::absolute(folder, error).string();
    if (error || !fs::is_directory(whole + "/fluids", error)) return folder + ": there is no folder fluids in it";
    if (whole.size() + std::string_view("/frigana").size() > static_cast<std::size_t>(Text255::size))
        return folder + ": the path is too long";
    const std::lock_guard lock(access);
    chosen = whole;
    return {};
}

}  // namespace frigana::programs
