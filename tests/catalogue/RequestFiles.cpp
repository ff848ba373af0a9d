#include "RequestFiles.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana::test {

std::vector<RequestText> exampleRequests() {
    std::vector<RequestText> all;
    for (const auto& entry : std::filesystem::directory_iterator(examplesFolder))
        if (entry.path().extension() == ".fi1")
            all.push_back({entry.path().stem().string(), readFile(entry.path().string())});
    std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    return all;
}

std::vector<RequestText> referenceRequests() {
    std::vector<RequestText> all;
    for (const char* file : {"cycles_single", "cycles_system"}) {
        const auto root = nlohmann::json::parse(readFile(std::string(testsFolder) + "/reference/" + file + ".json"));
        for (const auto& one : root["cases"]) {
            std::string text;
            for (const auto& line : one["request"]) text += line.get<std::string>() + '\n';
            all.push_back({std::string(file) + ' ' + one["title"].get<std::string>(), text});
        }
    }
    return all;
}

}  // namespace frigana::test
