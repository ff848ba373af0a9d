#include "Commands.h"

#include <iostream>

#include "FixedText.h"
#include "Installation.h"

namespace frigana::app {

int complain(int status, const std::string& text) {
    std::cerr << "frigana: " << text << '\n';
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

}  // namespace frigana::app
