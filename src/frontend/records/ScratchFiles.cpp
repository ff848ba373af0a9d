#include "ScratchFiles.h"

#include "12_MyVariables.h"
#include "14_ErrorControl.h"
#include "Platform.h"

namespace frigana {

namespace {

constexpr int none = -1;
constexpr int mostNames = 4;

int lock = none;
Text255 lockedFolder;
Text255 names[mostNames];  // paths given out under the lock
int count = 0;

void lockOnce(std::string_view folder) {
    if (lock != none && lockedFolder == folder) return;
    releaseScratchFolder();
    lock = lockFolder(folder);
    if (lock == none)
        fileError(folder.empty() ? "." : folder, "the folder of the result cannot be locked for scratch files");
    lockedFolder = folder;
}

void remember(const Text255& path) {
    for (int i = 0; i < count; ++i)
        if (names[i] == path) return;
    if (count < mostNames) names[count++] = path;
}

}  // namespace

Text255 scratchPath(std::string_view name) {
    Text255 path = TEMPORALFILEOUT;
    path.assign(temporalLength + 1, Text255::size, name);
    if (temporalLength + static_cast<int>(name.size()) > Text255::size)
        fileError(path.view(), "the path of a scratch file has more than 255 characters");
    lockOnce(TEMPORALFILEOUT.slice(1, temporalLength));
    remember(path);
    return path;
}

void releaseScratchFolder() {
    if (lock != none) unlockFolder(lock);
    lock = none;
    count = 0;
}

void removeScratchFiles() {
    for (int i = 0; i < count; ++i) removeFile(names[i].view());
}

}  // namespace frigana
