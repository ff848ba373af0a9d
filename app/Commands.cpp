#include "Commands.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "FixedText.h"
#include "Folders.h"
#include "Installation.h"
#include "Refrigerants.h"

namespace frigana::app {

int complain(int status, const std::string& text) {
    std::cerr << "frigana: " << visible(text) << '\n';
    return status;
}

bool fits(const std::string& path) {
    return path.size() <= static_cast<std::size_t>(Text255::size);
}

int findDataFolder(const CLI::App& program, std::string& folder, const std::string& naming) {
    const CLI::Option* shared = program.get_option("--data");
    if (folder.empty() && shared->count() > 0) folder = shared->as<std::string>();
    if (folder.empty()) folder = defaultInstallation();
    if (folder.empty()) return complain(runtimeError, "no data folder found; name one" + naming);
    if (!fits(folder)) return complain(usageError, folder + ": the path is too long");
    return 0;
}

bool readInput(const std::string& path, std::string& text) {
    std::ostringstream content;
    if (path == "-") {
        content << std::cin.rdbuf();
        text = content.str();
        return true;
    }
    std::error_code error;
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, error)) {
        complain(runtimeError, path + ": cannot be read");
        return false;
    }
    content << file.rdbuf();
    text = content.str();
    return true;
}

bool writeOutput(const std::string& path, const std::string& text) {
    if (path.empty() || path == "-") {
        std::cout << text;
        return true;
    }
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (file) return true;
    complain(runtimeError, path + ": cannot be written");
    return false;
}

void addClimateReport(CLI::App& line, std::string& report) {
    report = catalogue::climateReports.back();
    line.add_option("--gwp", report, "report whose global warming potentials are shown")
        ->check(
            CLI::IsMember(std::vector<std::string>(catalogue::climateReports.begin(), catalogue::climateReports.end()),
                          CLI::ignore_case))
        ->capture_default_str();
}

FileKind kindOf(const std::string& path, const std::string& text) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (extension == ".fi1") return FileKind::positional;
    if (extension == ".json") return FileKind::json;
    if (extension == ".toml") return FileKind::toml;
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) return FileKind::toml;
    if (text[first] == '{') return FileKind::json;
    return text[first] == '1' || text[first] == '2' ? FileKind::positional : FileKind::toml;
}

}  // namespace frigana::app
