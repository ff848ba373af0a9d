// Running a request: in a private folder for named ones, beside its file for positional ones.
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "11_MainFrigana.h"
#include "Platform.h"
#include "RunResult.h"
#include "StoredBlends.h"

namespace frigana::catalogue {

namespace {

namespace fs = std::filesystem;

// A folder of this run alone, gone with all that is in it when the run is over.
class PrivateFolder {
  public:
    PrivateFolder() {
        static std::atomic<unsigned> counter{0};
        static const unsigned process = std::random_device{}();
        std::error_code error;
        for (const auto parent : {toldFolder, memoryFolder, systemFolder})
            for (int attempt = 0; attempt < 100; ++attempt) {
                const fs::path candidate =
                    parent() / ("frigana-" + std::to_string(process) + '-' + std::to_string(++counter));
                if (fs::create_directory(candidate, error)) {
                    fs::permissions(candidate, fs::perms::owner_all, error);
                    path_ = candidate;
                    return;
                }
                if (error) break;
            }
    }
    ~PrivateFolder() {
        if (path_.empty()) return;
        std::error_code error;
        // Most runs leave these two alone; to look for others takes three times as many calls of the system.
        for (const char* name : {"request.fo1", "request.fi1"}) fs::remove(path_ / name, error);
        if (!fs::remove(path_, error)) fs::remove_all(path_, error);
    }
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    bool exists() const { return !path_.empty(); }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

  private:
    // Where the person says, else in memory, else where the system says.
    static fs::path toldFolder() {
        const char* told = std::getenv("TMPDIR");
        return told != nullptr && *told != '\0' ? fs::path(told) : memoryFolder();
    }
    static fs::path memoryFolder() { return "/dev/shm"; }
    static fs::path systemFolder() {
        std::error_code error;
        const fs::path system = fs::temp_directory_path(error);
        return error ? memoryFolder() : system;
    }

    fs::path path_;
};

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

bool writeText(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    return static_cast<bool>(file);
}

void failWith(RunResult& result, std::string_view text) {
    result.report = {};
    result.report.end = RunEnd::runtimeError;
    result.report.HERR = text;
    if (result.input.request != nullptr) {
        result.report.type = result.input.request->type;
        result.report.sub = result.input.request->sub;
    }
}

void runFile(const std::string& path, const std::string& address, RunResult& result,
             const std::string& outputFolder = {}) {
    gatherEntries(result.entries);
    runRequest(path, address, outputFolder);
    stopGathering(result.entries);
    result.report = runReport;
    result.resultExists = fileExists(runReport.resultPath.view());
}

constexpr int propertyType = 1, storeBlendOperation = 7;

// A blend of a cycle, stored in an installation of this run alone: its fluids are those of the real one.
bool storeListedBlend(const FilledRequest& filled, const Fluid& fluid, const PrivateFolder& folder,
                      const std::string& address, RunResult& result) {
    FilledRequest store;
    store.request = findRequest(propertyType, storeBlendOperation);
    store.blocks.push_back({{}, fluid, {}});
    const std::string path = folder / "blend.fi1";
    if (!writeText(path, positionalText(store))) {
        failWith(result, "the private folder cannot be written");
        return false;
    }
    RunResult stored;
    runFile(path, address, stored);
    if (stored.isDone()) return true;
    result.report = stored.report;
    result.report.type = filled.request->type;
    result.report.sub = filled.request->sub;
    return false;
}

bool makeInstallation(const FilledRequest& filled, const std::string& dataFolder, const PrivateFolder& folder,
                      RunResult& result) {
    const fs::path installation = folder / "data", real = fs::absolute(dataFolder);
    std::error_code error;
    fs::create_directories(installation / "mixtures", error);
    fs::create_directory_symlink(real / "fluids", installation / "fluids", error);
    if (error) {
        failWith(result, "the private folder cannot be written");
        return false;
    }
    const std::string address = (installation / "frigana").string();
    for (const Block& block : filled.blocks) {
        if (block.fluid.kind == 2)
            fs::create_symlink(real / "mixtures" / block.fluid.file, installation / "mixtures" / block.fluid.file,
                               error);
        if (block.fluid.kind == 3 && filled.hasListedBlend() &&
            !storeListedBlend(filled, block.fluid, folder, address, result))
            return false;
    }
    return true;
}

// Two blends of one name would be one file.
void tellNamesApart(FilledRequest& filled) {
    if (filled.blocks.size() == 2 && filled.blocks[0].fluid.kind == 3 && filled.blocks[1].fluid.kind == 3 &&
        filled.blocks[0].fluid.blendName == filled.blocks[1].fluid.blendName)
        filled.blocks[1].fluid.blendName += "2";
}

bool storesBlend(const FilledRequest& filled) {
    return filled.request->type == propertyType && filled.request->sub == storeBlendOperation;
}

// The blend has been set up and its mixture file written, for this run alone: now the person has it.
void keepBlend(const FilledRequest& filled, const RunOptions& options, RunResult& result) {
    std::string path;
    const std::string problem = storeOwnBlend(filled, options.blendFolder, FluidNames::of(options.dataFolder), path);
    if (!problem.empty()) return failWith(result, problem);
    result.report.resultPath = std::string_view(path);
}

}  // namespace

RunResult runFilled(const FilledRequest& given, const RunOptions& options) {
    RunResult result;
    result.input = given;
    const PrivateFolder folder;
    if (!folder.exists()) {
        failWith(result, "no folder can be made for the run; name one in TMPDIR");
        return result;
    }
    FilledRequest filled = given;
    std::string address = options.dataFolder + "/frigana";
    const bool keepsBlend = storesBlend(filled) && !options.blendFolder.empty();
    if (filled.hasListedBlend() || keepsBlend) {
        tellNamesApart(filled);
        if (!makeInstallation(filled, options.dataFolder, folder, result)) return result;
        address = folder / "data/frigana";
    }
    const std::string path = folder / "request.fi1";
    if (filled.isSecondRun()) {
        if (!writeText(path, positionalText(filled.firstRun())))
            failWith(result, "the private folder cannot be written");
        runFile(path, address, result);
        if (!result.isDone()) return result;
    }
    const std::string text = positionalText(filled);
    if (!writeText(path, text)) {
        failWith(result, "the private folder cannot be written");
        return result;
    }
    runFile(path, address, result);
    if (options.keepTexts) {
        result.positional = text;
        result.resultText = contentOf(std::string(trimRight(result.report.resultPath.view())));
    }
    if (keepsBlend && result.isDone()) keepBlend(filled, options, result);
    result.indexKeys();
    return result;
}

RunResult runPositional(const std::string& path, const RunOptions& options) {
    RunResult result;
    runFile(path, options.dataFolder + "/frigana", result, options.outputFolder);
    // What was asked for, for those who look at the result; a request that was not answered may not be readable.
    if (result.report.end != RunEnd::runtimeError && result.resultExists) readPositional(path, result.input);
    if (options.keepTexts) {
        result.positional = contentOf(path);
        result.resultText = contentOf(std::string(trimRight(result.report.resultPath.view())));
    }
    result.indexKeys();
    return result;
}

std::string readPositionalText(const std::string& text, FilledRequest& filled) {
    const PrivateFolder folder;
    const std::string path = folder / "request.fi1";
    if (!folder.exists() || !writeText(path, text)) return "no folder can be made for the request; name one in TMPDIR";
    return readPositional(path, filled);
}

}  // namespace frigana::catalogue
