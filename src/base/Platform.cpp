#include "Platform.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#else
#include <fcntl.h>
#include <strings.h>
#include <sys/file.h>
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

bool isPlainFileName(std::string_view name) {
    for (const char c : name)
        if (c == '\\' || c == '/' || c == ':' || static_cast<unsigned char>(c) < ' ') return false;
    return true;
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
    if (path.find('\0') != std::string_view::npos) return false;
    for (std::size_t i = 0; i < path.size(); ++i) native[i] = path[i] == '\\' || path[i] == '/' ? separator : path[i];
    native[path.size()] = '\0';
    return true;
}

namespace {

constexpr int mostBeside = 10;

// Name of a file beside another one.
bool besideName(const char* native, char digit, char* beside) {
    const std::size_t length = std::strlen(native);
    if (length + 2 > static_cast<std::size_t>(longestPath)) return false;
    std::memcpy(beside, native, length);
    beside[length] = '~';
    beside[length + 1] = digit;
    beside[length + 2] = '\0';
    return true;
}

// The file that is locked where a folder itself cannot be; it stays, as another process may be waiting for it.
constexpr std::string_view lockFile = ".frigana-lock";

// Puts a name behind a folder, which ends with a separator; false where there is no room.
bool inFolder(char* native, std::string_view name) {
    const std::size_t length = std::strlen(native);
    if (length + name.size() > static_cast<std::size_t>(longestPath)) return false;
    std::memcpy(native + length, name.data(), name.size());
    native[length + name.size()] = '\0';
    return true;
}

// File systems give times in steps of up to two seconds.
constexpr long long settlingTime = 3;  // [s]

bool longAgo(long long seconds) {
    return static_cast<long long>(std::time(nullptr)) - seconds > settlingTime;
}
}  // namespace

void writeStandardError(std::string_view text) {
    constexpr int standardError = 2;
    writeFile(standardError, text.data(), static_cast<long>(text.size()));
}

#ifdef _WIN32

void holdStandardHandles() {}
void writeUtf8() {
    SetConsoleOutputCP(CP_UTF8);
}

namespace {

bool isRegular(int handle) {
    return GetFileType(reinterpret_cast<HANDLE>(_get_osfhandle(handle))) == FILE_TYPE_DISK;
}

int openRegular(const char* native, DWORD access, DWORD creation) {
    const HANDLE file = CreateFileA(native, access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, creation,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return -1;
    const int handle = _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_BINARY);
    if (handle < 0) CloseHandle(file);
    if (handle < 0 || isRegular(handle)) return handle;
    _close(handle);
    return -1;
}

int openNew(const char* native) {
    // With the right to remove it while it is open; while it is, nobody else can.
    return openRegular(native, GENERIC_READ | GENERIC_WRITE | DELETE, CREATE_NEW);
}
int openEmptied(const char* native) {
    return openRegular(native, GENERIC_READ | GENERIC_WRITE, TRUNCATE_EXISTING);
}

}  // namespace

int openFileToRead(const char* native) {
    return openRegular(native, GENERIC_READ, OPEN_EXISTING);
}
int openFileToWrite(const char* native, Creation creation) {
    if (creation == Creation::replaced) _unlink(native);
    const int handle = openNew(native);
    return handle >= 0 || creation == Creation::fresh ? handle : openEmptied(native);
}
int openFileBeside(const char* native, char& digit) {
    char beside[longestPath + 1];
    for (digit = '0'; digit < '0' + mostBeside; ++digit) {
        if (!besideName(native, digit, beside)) return -1;
        _unlink(beside);  // fails while another process has it open
        const int handle = openNew(beside);
        if (handle >= 0) return handle;
    }
    return -1;
}
long readFile(int handle, char* bytes, long count) {
    return _read(handle, bytes, static_cast<unsigned>(count));
}
bool writeFile(int handle, const char* bytes, long count) {
    return _write(handle, bytes, static_cast<unsigned>(count)) == count;
}
bool emptyFile(int handle) {
    return _chsize(handle, 0) == 0;
}
bool rewindFile(int handle) {
    return placeFile(handle, 0);
}
bool placeFile(int handle, long long byte) {
    return _lseeki64(handle, byte, SEEK_SET) == byte;
}
bool fileStamp(int handle, FileStamp& stamp) {
    struct _stat64 status;
    if (_fstat64(handle, &status) != 0) return false;
    stamp = {status.st_size, status.st_mtime, longAgo(status.st_mtime)};
    return true;
}
bool closeFile(int handle) {
    return _close(handle) == 0;
}
bool fileStampAt(char* native, FileStamp& stamp) {
    struct _stat64 status;
    if (_stat64(native, &status) != 0) return false;
    stamp = {status.st_size, status.st_mtime, longAgo(status.st_mtime)};
    return true;
}
bool removeFile(std::string_view path) {
    char native[longestPath + 1];
    return nativePath(path, native) && _unlink(native) == 0;
}
bool fileExists(std::string_view path) {
    char native[longestPath + 1];
    return nativePath(path, native) && _access(native, 0) == 0;
}
bool renameFile(const char* nativeFrom, const char* nativeTo) {
    return MoveFileExA(nativeFrom, nativeTo, MOVEFILE_REPLACE_EXISTING) != 0;
}
bool clearFile(std::string_view path) {
    char native[longestPath + 1];
    if (!nativePath(path, native)) return false;
    if (_unlink(native) == 0 || errno == ENOENT) return true;
    const int handle = openEmptied(native);
    return handle >= 0 && closeFile(handle);
}
bool removeOpenFile(int handle, const char*) {
    FILE_DISPOSITION_INFO removed{};
    removed.DeleteFile = TRUE;
    return SetFileInformationByHandle(reinterpret_cast<HANDLE>(_get_osfhandle(handle)), FileDispositionInfo, &removed,
                                      sizeof removed) != 0;
}
bool findInAnyCase(std::string_view folder, std::string_view name, char* found) {
    std::memcpy(found, name.data(), name.size());
    char native[longestPath + 1];
    if (folder.size() + name.size() > static_cast<std::size_t>(longestPath)) return false;
    if (!nativePath(folder.empty() ? "." : folder, native)) return false;
    const DWORD kind = GetFileAttributesA(native);
    if (kind == INVALID_FILE_ATTRIBUTES || (kind & FILE_ATTRIBUTE_DIRECTORY) == 0) return false;
    std::memcpy(native + folder.size(), name.data(), name.size());
    native[folder.size() + name.size()] = '\0';
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA(native, &entry);
    if (search == INVALID_HANDLE_VALUE) return true;
    FindClose(search);
    // Another length is that of a short name of the system's own, or of a pattern.
    if (std::strlen(entry.cFileName) == name.size()) std::memcpy(found, entry.cFileName, name.size());
    return true;
}

int lockFolder(std::string_view folder) {
    char native[longestPath + 1];
    if (!nativePath(folder.empty() ? "./" : folder, native) || !inFolder(native, lockFile)) return -1;
    const HANDLE file =
        CreateFileA(native, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN, nullptr);
    if (file == INVALID_HANDLE_VALUE) return -1;
    OVERLAPPED whole{};
    if (LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &whole) == 0) {
        CloseHandle(file);
        return -1;
    }
    return _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_RDWR);
}
void unlockFolder(int handle) {
    _close(handle);
}

PersonalData personalData() {
    const char* const data = std::getenv("APPDATA");
    return {data == nullptr ? "" : data, ""};
}

#else

namespace {

// Opened without waiting for the other end of a pipe or the carrier of a line, and kept only if it is a regular file.
int openRegular(const char* native, int flags) {
    const int handle = open(native, flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666);
    if (handle < 0) return -1;
    struct stat status;
    if (fstat(handle, &status) == 0 && S_ISREG(status.st_mode)) return handle;
    close(handle);
    errno = EISDIR;
    return -1;
}

// An existing file, emptied; one that has a second name elsewhere is left alone.
int openEmptied(const char* native) {
    const int handle = openRegular(native, O_RDWR | O_NOFOLLOW);
    if (handle < 0) return -1;
    struct stat status;
    if (fstat(handle, &status) == 0 && status.st_nlink == 1 && emptyFile(handle)) return handle;
    close(handle);
    return -1;
}

bool lockHandle(int handle, int how) {
    int result;
    do result = flock(handle, how);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

// What a folder tells of a name; unknown where it cannot be read.
enum class Entry { present, absent, unknown };

#ifdef __linux__
// Replaces name by the entry of folder that differs from it in case only. The directory is read by the system call
// itself, because opendir takes memory from the heap.
Entry findEntry(const char* folder, char* name) {
    const int handle = open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return Entry::unknown;
    alignas(8) static char entries[8192];
    bool found = false;
    long count = 0;
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
    if (found) return Entry::present;
    return count < 0 ? Entry::unknown : Entry::absent;
}
#else
Entry findEntry(const char*, char*) {
    return Entry::absent;
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
                exists = findEntry(".", name) == Entry::present;
            } else if (name == native + 1) {
                exists = findEntry("/", name) == Entry::present;
            } else {
                name[-1] = '\0';
                exists = findEntry(native, name) == Entry::present;
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
    const int handle = openRegular(native, O_RDONLY);
    if (handle >= 0 || errno != ENOENT) return handle;
    char corrected[longestPath + 1];
    std::memcpy(corrected, native, std::strlen(native) + 1);
    return correctCase(corrected) ? openRegular(corrected, O_RDONLY) : -1;
}

int openFileToWrite(const char* native, Creation creation) {
    if (creation == Creation::replaced) unlink(native);
    const int handle = openRegular(native, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW);
    if (handle >= 0 || creation == Creation::fresh) return handle;
    return openEmptied(native);
}

int openFileBeside(const char* native, char& digit) {
    constexpr int attempts = 3;
    char beside[longestPath + 1];
    for (digit = '0'; digit < '0' + mostBeside; ++digit) {
        if (!besideName(native, digit, beside)) return -1;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            const int handle = openRegular(beside, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW);
            if (handle >= 0) {
                // Whoever writes such a file holds its lock. One that took this file for that of a dead process, before
                // the lock stood, has removed its name.
                struct stat status;
                if (!lockHandle(handle, LOCK_EX | LOCK_NB) || fstat(handle, &status) != 0 || status.st_nlink == 1)
                    return handle;
                close(handle);
                continue;
            }
            if (errno != EEXIST) return -1;
            const int other = openRegular(beside, O_RDONLY | O_NOFOLLOW);
            const bool dead = other < 0 || lockHandle(other, LOCK_EX | LOCK_NB);
            if (dead) unlink(beside);
            if (other >= 0) close(other);
            if (!dead) break;
        }
    }
    return -1;
}

void holdStandardHandles() {
    constexpr int lastOfThem = 2;
    int handle;
    do handle = open("/dev/null", O_RDONLY);
    while (handle >= 0 && handle < lastOfThem);
    if (handle > lastOfThem) close(handle);
}

void writeUtf8() {}

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
    return placeFile(handle, 0);
}
bool placeFile(int handle, long long byte) {
    return lseek(handle, static_cast<off_t>(byte), SEEK_SET) == static_cast<off_t>(byte);
}
namespace {
FileStamp stampFrom(const struct stat& status) {
#ifdef __linux__
    constexpr long long perSecond = 1000000000;
    const long long changed = status.st_mtim.tv_sec * perSecond + status.st_mtim.tv_nsec;
#else
    const long long changed = status.st_mtime;
#endif
    return {static_cast<long long>(status.st_size), changed, longAgo(status.st_mtime)};
}
}  // namespace

bool fileStamp(int handle, FileStamp& stamp) {
    struct stat status;
    if (fstat(handle, &status) != 0) return false;
    stamp = stampFrom(status);
    return true;
}
bool fileStampAt(char* native, FileStamp& stamp) {
    struct stat status;
    if (stat(native, &status) != 0 && (errno != ENOENT || !correctCase(native) || stat(native, &status) != 0))
        return false;
    stamp = stampFrom(status);
    return true;
}
bool emptyFile(int handle) {
    return ftruncate(handle, 0) == 0 && rewindFile(handle);
}
// An interrupted close has closed all the same.
bool closeFile(int handle) {
    return close(handle) == 0 || errno == EINTR;
}

bool removeOpenFile(int, const char* native) {
    return unlink(native) == 0;
}
bool removeFile(std::string_view path) {
    char native[longestPath + 1];
    return nativePath(path, native) && unlink(native) == 0;
}

bool fileExists(std::string_view path) {
    char native[longestPath + 1];
    return nativePath(path, native) && access(native, F_OK) == 0;
}

bool renameFile(const char* nativeFrom, const char* nativeTo) {
    return rename(nativeFrom, nativeTo) == 0;
}

bool clearFile(std::string_view path) {
    char native[longestPath + 1];
    if (!nativePath(path, native)) return false;
    if (unlink(native) == 0 || errno == ENOENT || errno == ENOTDIR) return true;
    const int handle = openEmptied(native);
    return handle >= 0 && closeFile(handle);
}

bool findInAnyCase(std::string_view folder, std::string_view name, char* found) {
    char native[longestPath + 1], entry[longestPath + 1];
    std::memcpy(found, name.data(), name.size());
    if (!nativePath(folder.empty() ? "." : folder, native) || !nativePath(name, entry)) return false;
    const Entry what = findEntry(native, entry);
    if (what == Entry::present) std::memcpy(found, entry, name.size());
    return what != Entry::unknown;
}

int lockFolder(std::string_view folder) {
    char native[longestPath + 1];
    if (!nativePath(folder.empty() ? "./" : folder, native)) return -1;
    const int handle = open(native, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0) {
        if (lockHandle(handle, LOCK_EX)) return handle;
        close(handle);
    }
    // Folders of another machine lock only files that are open for writing, and some folders cannot be read.
    if (!inFolder(native, lockFile)) return -1;
    const int file = openRegular(native, O_RDWR | O_CREAT | O_NOFOLLOW);
    if (file < 0) return -1;
    if (lockHandle(file, LOCK_EX)) return file;
    close(file);
    return -1;
}

void unlockFolder(int handle) {
    flock(handle, LOCK_UN);
    close(handle);
}

PersonalData personalData() {
    const char* const data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && data[0] == '/') return {data, ""};
    const char* const home = std::getenv("HOME");
    return {home == nullptr ? "" : home, ".local/share"};
}

#endif

}  // namespace frigana
