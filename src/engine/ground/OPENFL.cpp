#include "OPENFL.h"

#include "FluidFiles.h"
#include "Message.h"
#include "TextFile.h"

namespace frigana {

namespace {

// Room for the installation folder, a folder of the list and a name, all at full length.
using LongPath = FixedText<800>;

constexpr bool isSeparator(char c) {
    return c == '/' || c == '\\';
}

// Case has to be turned the same way wherever the program runs, so the alphabets stand here.
constexpr std::string_view upperAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view lowerAlphabet = "abcdefghijklmnopqrstuvwxyz";

void turnCase(LongPath& path, int first, int last, std::string_view from, std::string_view to) {
    for (int k = first; k <= last; ++k) {
        const auto letter = from.find(path[k]);
        if (letter != std::string_view::npos) path[k] = to[letter];
    }
}

void turnExtensions(LongPath& path, bool toUpper) {
    constexpr std::string_view upper[] = {".FLD", ".BNC", ".MIX"};
    constexpr std::string_view lower[] = {".fld", ".bnc", ".mix"};
    for (int k = 0; k < 3; ++k) {
        const int at = path.find(toUpper ? lower[k] : upper[k]);
        if (at > 0) path.assign(at, at + 3, toUpper ? upper[k] : lower[k]);
    }
}

template <class... Piece>
LongPath join(const Piece&... pieces) {
    LongPath path;
    message(path, pieces...);
    return path;
}

// A folder of the search list with the separator of the pass in the place of each slash.
LongPath folderOf(int pattern, int kind, char separator) {
    constexpr std::string_view fluidFolders[] = {"",           "fluids/",  "/thermex/fluids/",
                                                 "../fluids/", ":fluids:", "c:/Program Files/Thermex/fluids/"};
    constexpr std::string_view mixtureFolders[] = {
        "", "mixtures/", "/thermex/mixtures/", "../mixtures/", ":mixtures:", "c:/Program Files/Thermex/mixtures/"};
    LongPath folder(kind == 2 ? mixtureFolders[pattern - 1] : fluidFolders[pattern - 1]);
    for (int k = 1, last = folder.length(); k <= last; ++k)
        if (folder[k] == '/') folder[k] = separator;
    return folder;
}

// The name in one of its five letter cases; the part that changes starts at position nameStart.
LongPath inForm(int form, LongPath path, int nameStart) {
    const int last = path.length();
    switch (form) {
        case 2:
            turnCase(path, nameStart, last, lowerAlphabet, upperAlphabet);
            break;
        case 3:
            turnExtensions(path, false);
            break;
        case 4:
            turnCase(path, nameStart, last, upperAlphabet, lowerAlphabet);
            break;
        case 5:
            turnExtensions(path, true);
            break;
        default:
            break;
    }
    return path;
}

// Every slot and the mixing parameters; what is opened beyond that is not part of a set-up.
constexpr int mostOpenedFiles = 2 * ncmax + 8;
struct OpenedFile {
    char path[longestPath + 1];
    FileStamp stamp;
};
struct OpenedFiles {
    int count = 0;
    OpenedFile file[mostOpenedFiles];
};
constinit OpenedFiles opened{};

void remember(int iunit) {
    if (opened.count == mostOpenedFiles) return;
    OpenedFile& file = opened.file[opened.count];
    if (nativePath(unitPath(iunit), file.path) && fileStampAt(file.path, file.stamp)) ++opened.count;
}

// Opens what a search has come to, and remembers it.
bool opens(int iunit, const LongPath& path) {
    if (!openForReading(iunit, path.trimmed())) return false;
    remember(iunit);
    return true;
}

}  // namespace

void forgetOpenedFiles() {
    opened.count = 0;
}

bool openedFilesChanged() {
    for (int k = 0; k < opened.count; ++k) {
        OpenedFile& file = opened.file[k];
        FileStamp now;
        if (!fileStampAt(file.path, now) || !now.same(file.stamp)) return true;
    }
    return false;
}

void SETPATH(std::string_view hpath) {
    fluidFiles.HPATH.assign(hpath.substr(0, hpath.find('\0')));
}

void OPENFL(int& iunit, Text255& hfl, int i, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (const int at = hfl.find("\r"); at > 0) {
        for (int k = at; k < Text255::size; ++k) hfl[k] = hfl[k + 1];
        hfl[Text255::size] = ' ';
    }
    iunit = firstFreeUnit(iunit);

    const int n = fluidFiles.HPATH.length();
    const std::string_view path = fluidFiles.HPATH.slice(1, n);
    const std::string_view name = hfl.trimmed();
    const bool pathIsClosed = n > 0 && isSeparator(path.back());
    const std::string_view subfolder = i == 2 ? "mixtures" : "fluids";

    // the installation folder as given, then its folder of fluids or mixtures
    for (const char separator : {'\\', '/'}) {
        const std::string_view sep(&separator, 1);
        const std::string_view between = n > 0 && !pathIsClosed ? sep : std::string_view{};
        if (opens(iunit, join(path, between, name))) return;
        if (n > 0 && opens(iunit, join(path, between, subfolder, sep, name))) return;
    }

    for (int pass = 1; pass <= 4; ++pass) {
        const char separator = pass <= 2 ? '\\' : '/';
        const bool behindPath = pass % 2 == 0 && n > 0;
        for (int pattern = 1; pattern <= 6; ++pattern) {
            const LongPath folder = folderOf(pattern, i, separator);
            const LongPath full = join(folder.trimmed(), name);
            int nameStart = folder.length() + 1;
            if (pattern == 1) {
                const auto last = name.rfind(separator);
                if (last != std::string_view::npos) nameStart = static_cast<int>(last) + 2;
            }
            for (int form = 1; form <= 5; ++form) {
                LongPath candidate = inForm(form, full, nameStart);
                if (behindPath) {
                    const bool closed = pathIsClosed || isSeparator(candidate[1]);
                    const std::string_view between = closed ? std::string_view{} : std::string_view(&separator, 1);
                    candidate = join(path, between, candidate.trimmed());
                }
                if (opens(iunit, candidate)) return;
            }
        }
    }
    ierr = 101;
}

void RFFILE(const Text255& hfilei, Text255& hfilej) {
    if (hfilei.startsWith("BDATA") || hfilei.startsWith("bdata")) return;
    const std::string_view name = hfilei.view().substr(0, hfilei.view().find('\0'));
    const auto last = name.find_last_of("\\:/");
    if (last != std::string_view::npos) message(hfilej, name.substr(0, last + 1), hfilej);
}

}  // namespace frigana
