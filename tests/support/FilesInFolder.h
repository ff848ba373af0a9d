// The names of the files in a folder.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace frigana::test {

// Without the lock, which stays where a folder cannot be locked itself.
inline std::set<std::string> filesInFolder(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    names.erase(".frigana-lock");
    return names;
}

}  // namespace frigana::test
