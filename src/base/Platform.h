// What differs between operating systems: paths, file handles, directories.
#pragma once

#include <string_view>

namespace frigana {

inline constexpr int longestPath = 1024;

// Position (from 1) of the last folder separator, a backslash or a slash; 0 if there is none.
//   Given     path      a path of either convention
int lastSeparator(std::string_view path);

// The path as this system wants it: trailing blanks cut, separators translated, ended by a null character.
//   Given     path      a path of either convention
//   Returned  native    field of longestPath + 1 characters
//             (value)   false if the path is empty or too long
bool nativePath(std::string_view path, char* native);

// Handles of files: a small number, -1 where the file cannot be opened.
//   Notes     A file to be read that is not found under the letters given is looked for without regard to case,
//             folder by folder, since the names of fluid files are written in either case.
int openFileToRead(const char* native);
int openFileToWrite(const char* native);             // created if it is missing, else emptied; it may be read as well
long readFile(int handle, char* bytes, long count);  // bytes read, 0 at the end, -1 on failure
bool writeFile(int handle, const char* bytes, long count);
bool rewindFile(int handle);
void closeFile(int handle);

void writeStandardError(std::string_view text);

bool removeFile(std::string_view path);
bool fileExists(std::string_view path);

}  // namespace frigana
