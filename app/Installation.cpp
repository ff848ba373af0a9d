#include "Installation.h"

#include <filesystem>

namespace frigana::app {

namespace fs = std::filesystem;

std::string installationOf(const fs::path& file) {
    std::error_code error;
    for (fs::path folder = file.parent_path(); folder != folder.parent_path(); folder = folder.parent_path()) {
        for (const fs::path& data : {folder.parent_path() / "share" / "frigana", folder / "data"})
            if (fs::is_directory(data / "fluids", error)) return data.string();
    }
    return {};
}

std::string defaultInstallation() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? std::string() : installationOf(program);
}

}  // namespace frigana::app
