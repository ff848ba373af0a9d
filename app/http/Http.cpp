#include "Http.h"

#include <dlfcn.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace frigana::http {

namespace fs = std::filesystem;

std::vector<std::string_view> Request::header(std::string_view name) const {
    const auto same = [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); };
    std::vector<std::string_view> values;
    for (const auto& [key, value] : headers)
        if (std::ranges::equal(key, name, same)) values.push_back(value);
    return values;
}

MakeServer loadTransport(std::string& complaint) {
    std::error_code error;
    const fs::path lib = fs::read_symlink("/proc/self/exe", error).parent_path().parent_path() / "lib";
    for (const fs::path& path : {lib / "frigana_http.so", lib / "frigana" / "frigana_http.so"}) {
        if (!fs::exists(path, error)) continue;
        void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (module == nullptr) {
            complaint = std::string("the server's module cannot be loaded: ") + dlerror();
            return nullptr;
        }
        return reinterpret_cast<MakeServer>(dlsym(module, makeServerName));
    }
    complaint = "the server's module frigana_http.so is not installed beside the program";
    return nullptr;
}

}  // namespace frigana::http
