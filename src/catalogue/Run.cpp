// Running a request: in a private folder for named ones, beside its file for positional ones.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "11_MainFrigana.h"
#include "Platform.h"
#include "PrivateFolder.h"
#include "RunResult.h"
#include "StoredBlends.h"

namespace frigana::catalogue {

namespace {

namespace fs = std::filesystem;

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
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

bool writeText(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    return static_cast<bool>(file);
}

// A request for the private folder; where it cannot be written, the result says so.
bool writeRequest(const std::string& path, const FilledRequest& filled, RunResult& result) {
    if (writeText(path, positionalText(filled))) return true;
    failWith(result, "the private folder cannot be written");
    return false;
}

void runFile(const std::string& path, const std::string& address, RunResult& result,
             const std::string& outputFolder = {}) {
    gatherEntries(result.entries);
    runRequest(path, address, outputFolder);
    stopGathering(result.entries);
    result.report = runReport;
    result.resultExists = fileExists(runReport.resultPath.view());
}

void keepTexts(const std::string& path, RunResult& result) {
    result.positional = contentOf(path);
    result.resultText = contentOf(std::string(trimRight(result.report.resultPath.view())));
}

constexpr int propertyType = 1, storeBlendOperation = 7;

// A blend of a cycle, stored in an installation of this run alone: its fluids are those of the real one.
bool storeListedBlend(const FilledRequest& filled, const Fluid& fluid, const PrivateFolder& folder,
                      const std::string& address, RunResult& result) {
    FilledRequest store;
    store.request = findRequest(propertyType, storeBlendOperation);
    store.blocks.push_back({{}, fluid, {}});
    const std::string path = folder / "blend.fi1";
    if (!writeRequest(path, store, result)) return false;
    RunResult stored;
    runFile(path, address, stored);
    if (stored.isDone()) return true;
    result.report = stored.report;
    result.report.type = filled.request->type;
    result.report.sub = filled.request->sub;
    return false;
}

// A file or folder of the real installation under a path of this one: a link, or where the system gives none to
// everybody, as on Windows, a copy.
void lend(const fs::path& real, const fs::path& path, std::error_code& error) {
    fs::create_symlink(real, path, error);
    if (error) fs::copy(real, path, fs::copy_options::recursive, error);
}

bool makeInstallation(const FilledRequest& filled, const std::string& dataFolder, const PrivateFolder& folder,
                      RunResult& result) {
    const fs::path installation = folder / "data", real = fs::absolute(dataFolder);
    std::error_code error;
    fs::create_directories(installation / "mixtures", error);
    lend(real / "fluids", installation / "fluids", error);
    if (error) {
        failWith(result, "the private folder cannot be written");
        return false;
    }
    const std::string address = (installation / "frigana").string();
    for (const Block& block : filled.blocks) {
        if (block.fluid.kind == 2)
            lend(real / "mixtures" / block.fluid.file, installation / "mixtures" / block.fluid.file, error);
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
        if (!writeRequest(path, filled.firstRun(), result)) return result;
        runFile(path, address, result);
        if (!result.isDone()) return result;
    }
    if (!writeRequest(path, filled, result)) return result;
    runFile(path, address, result);
    if (options.keepTexts) keepTexts(path, result);
    if (keepsBlend && result.isDone()) keepBlend(filled, options, result);
    result.indexKeys();
    return result;
}

RunResult runPositional(const std::string& path, const RunOptions& options) {
    RunResult result;
    runFile(path, options.dataFolder + "/frigana", result, options.outputFolder);
    // What was asked for, for those who look at the result; a request that was not answered may not be readable.
    if (result.report.end != RunEnd::runtimeError && result.resultExists) readPositional(path, result.input);
    if (options.keepTexts) keepTexts(path, result);
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
