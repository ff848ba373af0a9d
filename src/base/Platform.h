// What differs between operating systems: paths, file handles, directories.
#pragma once

#include <string_view>

namespace frigana {

inline constexpr int longestPath = 1024;

// What ends a line of a file that is written; both ends are read everywhere.
#ifdef _WIN32
inline constexpr std::string_view lineEnd = "\r\n";
#else
inline constexpr std::string_view lineEnd = "\n";
#endif

// Position (from 1) of the last folder separator, a backslash or a slash; 0 if there is none.
//   Given     path      a path of either convention
int lastSeparator(std::string_view path);

// Whether a name is that of a file alone: no separator, no drive, no character that cannot be seen.
bool isPlainFileName(std::string_view name);

// The path as this system wants it: trailing blanks cut, separators translated, ended by a null character.
//   Given     path      a path of either convention
//   Returned  native    field of longestPath + 1 characters
//             (value)   false if the path is empty, too long, or holds a null character
bool nativePath(std::string_view path, char* native);

// Handles of files: a small number, -1 where the file cannot be opened. Only regular files are opened; devices, pipes
// and folders are refused at once. Links are never followed for writing.
//   Notes     A file to be read that is not found under the letters given is looked for without regard to case,
//             folder by folder, since the names of fluid files are written in either case.
int openFileToRead(const char* native);
// A file to be written, empty; it may be read as well.
enum class Creation {
    replaced,  // an older file of that name is removed first: to empty it would wait for its old content on its way to
               // the disk. Where the folder takes no new file, the older one is emptied after all
    fresh      // only where there is none of that name
};
int openFileToWrite(const char* native, Creation creation);
// A file beside another one, that may take its name when it is whole.
//   Given     native  path of the other file
//   Returned  digit   the new file is called as the other one with "~" and this digit behind it
//   Notes     What a killed run left under such a name is removed, what a living one writes is not.
int openFileBeside(const char* native, char& digit);
long readFile(int handle, char* bytes, long count);  // bytes read, 0 at the end, -1 on failure
bool writeFile(int handle, const char* bytes, long count);
bool emptyFile(int handle);
bool rewindFile(int handle);
bool placeFile(int handle, long long byte);  // the next read begins at this byte, the first is 0
bool closeFile(int handle);                  // false if something that was written did not reach the file

// What tells whether a file is still the one that was read before.
struct FileStamp {
    long long bytes = -1;
    long long changed = 0;  // time of the last change, in the finest unit of the system
    bool settled = false;   // that time is so long ago that another change cannot bear the same one
    bool same(const FileStamp& other) const { return bytes == other.bytes && changed == other.changed; }
};
bool fileStamp(int handle, FileStamp& stamp);

// The same of the file that openFileToRead would open; false where there is none.
//   Given     native    a path as made by nativePath
//   Returned  native    the path with the letters of the file system where they differ in case
bool fileStampAt(char* native, FileStamp& stamp);

void writeStandardError(std::string_view text);
// Where a program was started without standard input, output or error, their numbers are taken, so that no file that is
// opened later gets what is written there. Writing to them fails as before.
void holdStandardHandles();
// Tells the console that what the program writes is UTF-8; elsewhere it is so.
void writeUtf8();

bool removeFile(std::string_view path);
// Removes a new file that openFileToWrite or openFileBeside has opened; it stays open.
//   Given     native  its path
//   Notes     On Windows its name goes when the file is closed, at the latest with the process.
bool removeOpenFile(int handle, const char* native);
bool fileExists(std::string_view path);
// The file takes the name, also of another file there, at once.
bool renameFile(const char* nativeFrom, const char* nativeTo);
// Sees to it that no old content stands under the name: removed, or emptied where the folder allows no removal.
bool clearFile(std::string_view path);
// The entry of the folder that has the name in any case; the name as given if there is none.
//   Given     folder   path with its last separator
//             name     name, or name and extension
//   Returned  found    the name as it stands in the folder, in a field of its own length
//             (value)  false where the folder cannot be read
bool findInAnyCase(std::string_view folder, std::string_view name, char* found);

// A lock on a folder, waited for. It ends with unlockFolder or with the process, however that ends.
//   Given     folder   path with its last separator; empty for the current folder
//   Returned  (value)  handle, -1 where the folder cannot be locked
int lockFolder(std::string_view folder);
void unlockFolder(int handle);

// Where the system keeps the data of the person that runs the program: a folder, and the path below it.
//   Notes     %APPDATA% on Windows, elsewhere $XDG_DATA_HOME, or ~/.local/share where that is not set or, against its
//             rules, relative. The base is empty where the system names none.
struct PersonalData {
    std::string_view base, below;
};
PersonalData personalData();

}  // namespace frigana
