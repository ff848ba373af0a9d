#include "Versions.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <vector>

namespace frigana::app {

std::string programVersion() {
    return FRIGANA_VERSION;
}

std::string dataVersion(const std::string& dataFolder) {
    namespace fs = std::filesystem;
    if (dataFolder.empty()) return {};
    std::vector<std::string> files;
    std::error_code error;
    for (const char* folder : {"fluids", "mixtures"})
        for (const auto& entry : fs::directory_iterator(fs::path(dataFolder) / folder, error))
            files.push_back(entry.path().filename().string() + ' ' + std::to_string(entry.file_size(error)));
    std::sort(files.begin(), files.end());
    // Fowler, Noll and Vo, 64 bits.
    std::uint64_t hash = 14695981039346656037ull;
    for (const std::string& file : files)
        for (const char c : file + '\n') hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ull;
    char text[64];
    std::snprintf(text, sizeof text, "%zu files, %016llx", files.size(), static_cast<unsigned long long>(hash));
    return text;
}

}  // namespace frigana::app
