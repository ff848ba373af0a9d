#include "Installation.h"

#include <filesystem>

namespace frigana::app {

namespace fs = std::filesystem;

std::string defaultInstallation() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (error) return {};
    const fs::path installed = program.parent_path().parent_path() / "share" / "frigana";
    if (fs::is_directory(installed / "fluids", error)) return installed.string();
    for (fs::path folder = program.parent_path(); folder != folder.root_path(); folder = folder.parent_path())
        if (fs::is_directory(folder / "data" / "fluids", error)) return (folder / "data").string();
    return {};
}

}  // namespace frigana::app
