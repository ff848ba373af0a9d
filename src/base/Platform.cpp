#include "Platform.h"

#include <cerrno>
#include <cstring>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef __linux__
#include <sys/syscall.h>
#endif

#include "FixedText.h"

namespace frigana {

int lastSeparator(std::string_view path) {
    for (auto i = path.size(); i > 0; --i)
        if (path[i - 1] == '\\' || path[i - 1] == '/') return static_cast<int>(i);
    return 0;
}

#ifdef _WIN32
namespace {
constexpr char separator = '\\';
}
#else
namespace {
constexpr char separator = '/';
}
#endif

bool nativePath(std::string_view path, char* native) {
    path = trimRight(path);
    if (path.empty() || path.size() > static_cast<std::size_t>(longestPath)) return false;
    for (std::size_t i = 0; i < path.size(); ++i) native[i] = path[i] == '\\' || path[i] == '/' ? separator : path[i];
    native[path.size()] = '\0';
    return true;
}

void writeStandardError(std::string_view text) {
    constexpr int standardError = 2;
    writeFile(standardError, text.data(), static_cast<long>(text.size()));
}

#ifdef _WIN32

int openFileToRead(const char* native) {
    return _open(native, _O_RDONLY | _O_BINARY);
}
int openFileToWrite(const char* native) {
    return _open(native, _O_RDWR | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
}
long readFile(int handle, char* bytes, long count) {
    return _read(handle, bytes, static_cast<unsigned>(count));
}
bool writeFile(int handle, const char* bytes, long count) {
    return _write(handle, bytes, static_cast<unsigned>(count)) == count;
}
bool rewindFile(int handle) {
    return _lseek(handle, 0, SEEK_SET) == 0;
}
void closeFile(int handle) {
    _close(handle);
}
bool removeFile(std::string_view path) {
    char native[longestPath + 1];
    return nativePath(path, native) && _unlink(native) == 0;
}
bool fileExists(std::string_view path) {
    char native[longestPath + 1];
    return nativePath(path, native) && _access(native, 0) == 0;
}

#else

namespace {

// A folder is not a file, although it can be opened.
int openUnlessFolder(const char* native, int flags) {
    const int handle = open(native, flags | O_CLOEXEC, 0666);
    if (handle < 0) return -1;
    struct stat status;
    if (fstat(handle, &status) == 0 && S_ISDIR(status.st_mode)) {
        close(handle);
        errno = EISDIR;
        return -1;
    }
    return handle;
}

#ifdef __linux__
// Replaces name by the entry of folder that differs from it in case only. The directory is read by the system call
// itself, because opendir takes memory from the heap.
bool findEntry(const char* folder, char* name) {
    const int handle = open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return false;
    alignas(8) char entries[8192];
    bool found = false;
    long count;
    while (!found && (count = syscall(SYS_getdents64, handle, entries, sizeof entries)) > 0) {
        // Each entry: inode 8 bytes, offset 8, length of the entry 2, type 1, name with its null character.
        for (long at = 0; at < count && !found;) {
            unsigned short length;
            std::memcpy(&length, entries + at + 16, sizeof length);
            const char* entry = entries + at + 19;
            if (strcasecmp(entry, name) == 0) {
                std::memcpy(name, entry, std::strlen(name));
                found = true;
            }
            at += length;
        }
    }
    close(handle);
    return found;
}
#else
bool findEntry(const char*, char*) {
    return false;
}
#endif

// Walks the path folder by folder and corrects the case of what does not exist under the letters given.
bool correctCase(char* native) {
    char* name = native[0] == separator ? native + 1 : native;
    while (*name != '\0') {
        char* end = std::strchr(name, separator);
        if (end != nullptr) *end = '\0';
        bool exists = *name == '\0' || access(native, F_OK) == 0;
        if (!exists) {
            if (name == native) {
                exists = findEntry(".", name);
            } else if (name == native + 1) {
                exists = findEntry("/", name);
            } else {
                name[-1] = '\0';
                exists = findEntry(native, name);
                name[-1] = separator;
            }
        }
        if (end != nullptr) *end = separator;
        if (!exists) return false;
        if (end == nullptr) return true;
        name = end + 1;
    }
    return true;
}

}  // namespace

int openFileToRead(const char* native) {
    const int handle = openUnlessFolder(native, O_RDONLY);
    if (handle >= 0 || errno != ENOENT) return handle;
    char corrected[longestPath + 1];
    std::strcpy(corrected, native);
    return correctCase(corrected) ? openUnlessFolder(corrected, O_RDONLY) : -1;
}

int openFileToWrite(const char* native) {
    return openUnlessFolder(native, O_RDWR | O_CREAT | O_TRUNC);
}

long readFile(int handle, char* bytes, long count) {
    long done;
    do done = read(handle, bytes, static_cast<std::size_t>(count));
    while (done < 0 && errno == EINTR);
    return done;
}

bool writeFile(int handle, const char* bytes, long count) {
    while (count > 0) {
        const long done = write(handle, bytes, static_cast<std::size_t>(count));
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return false;
        bytes += done;
        count -= done;
    }
    return true;
}

bool rewindFile(int handle) {
    return lseek(handle, 0, SEEK_SET) == 0;
}
void closeFile(int handle) {
    close(handle);
}

bool removeFile(std::string_view path) {
    char native[longestPath + 1];
    return nativePath(path, native) && unlink(native) == 0;
}

bool fileExists(std::string_view path) {
    char native[longestPath + 1];
    return nativePath(path, native) && access(native, F_OK) == 0;
}

#endif

}  // namespace frigana
