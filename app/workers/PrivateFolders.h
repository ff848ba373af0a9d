// The folders in which workers calculate: one root for each pool, one folder below it for each worker.
#pragma once

#include <string>

#include "Frame.h"

namespace frigana::workers {

// Where private folders stand: TMPDIR if it is given, else the system's folder in memory, else that for temporary
// files.
std::string placeOfFolders();

// A new root, held by a lock as long as a process has it open. Roots that nobody holds any more, left by processes that
// were killed together with all that belonged to them, are removed on this occasion. Throws std::system_error.
struct RootFolder {
    std::string path;
    Descriptor lock;
};
RootFolder makeRootFolder(const std::string& place);

// Removes a folder with all that stands in it; missing ones and what cannot be removed are passed over.
void removeFolder(const std::string& path);

// Removes all that stands in a folder.
void emptyFolder(const std::string& path);

}  // namespace frigana::workers
