/* A host program in C: loads the library by name and runs one request.
 *
 *   Linux    cc host.c -ldl -o host && ./host ./libfrigana.so data small_chiller.fi1
 *   Windows  cl host.c              && host frigana.dll data small_chiller.fi1
 *
 * The answer is the file of the same name with the extension .fo1. Its first line is 2 for a cycle, 1 for properties,
 * and 0 for a request that was refused; then a code and a text follow.
 */
#include <stdio.h>
#include <string.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

/* Path of the request, path of any file in the installation folder, and the lengths of the two. */
typedef void (*Entry)(const char* request, const char* installation, int requestLength, int installationLength);

static Entry load(const char* library) {
    Entry entry = NULL;
#ifdef _WIN32
    HMODULE module = LoadLibraryA(library);
    FARPROC address = module != NULL ? GetProcAddress(module, "Frigana") : NULL;
#else
    void* module = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* address = module != NULL ? dlsym(module, "Frigana") : NULL;
#endif
    /* ISO C has no conversion from a data pointer to a function; every system with dynamic libraries has. */
    memcpy(&entry, &address, sizeof entry);
    return entry;
}

int main(int argc, char** argv) {
    Entry frigana;
    FILE* answer;
    char installation[300], result[300], line[300];
    size_t length;
    if (argc != 4) {
        fprintf(stderr, "usage: %s LIBRARY DATA REQUEST.fi1\n", argv[0]);
        return 1;
    }
    frigana = load(argv[1]);
    if (frigana == NULL) {
        fprintf(stderr, "%s: cannot be loaded\n", argv[1]);
        return 1;
    }
    length = strlen(argv[3]);
    if (length < 5 || length >= sizeof result || strlen(argv[2]) + 2 >= sizeof installation) {
        fprintf(stderr, "%s: no request file with the extension .fi1\n", argv[3]);
        return 1;
    }
    /* Only the folder counts, so the path ends in a separator. */
    strcpy(installation, argv[2]);
    strcat(installation, "/");
    frigana(argv[3], installation, (int)length, (int)strlen(installation));

    strcpy(result, argv[3]);
    strcpy(result + length - 4, ".fo1");
    answer = fopen(result, "r");
    if (answer == NULL) {
        fprintf(stderr, "%s: there is no answer; the request cannot be read\n", result);
        return 3;
    }
    while (fgets(line, sizeof line, answer) != NULL) fputs(line, stdout);
    fclose(answer);
    return 0;
}
