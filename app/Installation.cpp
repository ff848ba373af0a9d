#include "Installation.h"

#include <filesystem>

#include "Module.h"

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
    return installationOf(modules::programFile());
}

}  // namespace frigana::app
