/* A host on Windows with handlers of its own: many calls of the library, good and refused, and traps of its own between
 * them.
 *
 *   mixed_calls LIBRARY DATA LIST CALLS
 *
 * LIST is a text file with the path of a request on each line; CALLS calls take them in turn. The host's vectored
 * handler must see its own divisions by zero and nothing else, and its floating-point unit works in double precision
 * before and after each call, as Windows sets it up. Exit status 0 where all was as it must be.
 */
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

typedef void (*Entry)(const char* request, const char* installation, int requestLength, int installationLength);

enum { mostRequests = 4096, longestPath = 300 };

static char requests[mostRequests][longestPath];
static void* road[5];
static volatile int inTrap, seen, strangers, signals;
static volatile int numerator = 7, denominator, quotient;

static LONG CALLBACK onException(EXCEPTION_POINTERS* exception) {
    if (exception->ExceptionRecord->ExceptionCode != EXCEPTION_INT_DIVIDE_BY_ZERO) return EXCEPTION_CONTINUE_SEARCH;
    if (!inTrap) {
        ++strangers;
        return EXCEPTION_CONTINUE_SEARCH;
    }
    ++seen;
    inTrap = 0;
    __builtin_longjmp(road, 1);
}

static void onSignal(int number) {
    (void)number;
    ++signals;
}

static __attribute__((noinline)) void divide(void) {
    quotient = numerator / denominator;
}

/* The host's own failure, contained by its own handler. */
static __attribute__((noinline)) void ownTrap(void) {
    if (__builtin_setjmp(road) != 0) return;
    inTrap = 1;
    divide(); /* a call, so that the compiler expects a way back to the road */
}

/* Double precision, round to nearest, no traps. */
static const unsigned short doublePrecision = 0x27f;

static unsigned short controlWord(void) {
    unsigned short word;
    __asm__ volatile("fnstcw %0" : "=m"(word));
    return word;
}

static int readList(const char* path) {
    FILE* list = fopen(path, "r");
    int count = 0;
    if (list == NULL) return 0;
    while (count < mostRequests && fgets(requests[count], longestPath, list) != NULL) {
        requests[count][strcspn(requests[count], "\r\n")] = '\0';
        if (requests[count][0] != '\0') ++count;
    }
    fclose(list);
    return count;
}

int main(int argc, char** argv) {
    HMODULE library;
    FARPROC address;
    Entry frigana;
    char installation[longestPath];
    int count, calls, call, answered = 0, refused = 0, without = 0;
    if (argc != 5) return 1;
    library = LoadLibraryA(argv[1]);
    address = library != NULL ? GetProcAddress(library, "Frigana") : NULL;
    if (address == NULL) {
        fprintf(stderr, "%s: cannot be loaded\n", argv[1]);
        return 1;
    }
    memcpy(&frigana, &address, sizeof frigana);
    count = readList(argv[3]);
    calls = atoi(argv[4]);
    if (count == 0 || calls == 0) return 1;
    sprintf(installation, "%.290s/", argv[2]);

    AddVectoredExceptionHandler(1, onException);
    signal(SIGFPE, onSignal);
    __asm__ volatile("fldcw %0" : : "m"(doublePrecision));
    for (call = 0; call < calls; ++call) {
        const char* request = requests[call % count];
        char result[longestPath];
        FILE* answer;
        int first;
        frigana(request, installation, (int)strlen(request), (int)strlen(installation));
        if (controlWord() != doublePrecision) {
            fprintf(stderr, "call %d: the host's floating-point unit was set otherwise\n", call);
            return 1;
        }
        if (call % 3 == 0) {
            const int before = seen;
            ownTrap();
            if (seen != before + 1) {
                fprintf(stderr, "call %d: the host did not see its own trap\n", call);
                return 1;
            }
        }
        strcpy(result, request);
        strcpy(result + strlen(result) - 4, ".fo1");
        answer = fopen(result, "rb");
        if (answer == NULL) {
            ++without;
            continue;
        }
        do first = fgetc(answer);
        while (first == ' ');
        fclose(answer);
        if (first == '0') {
            ++refused;
        } else if (first == '1' || first == '2' || first == '3') {
            ++answered;
        } else {
            fprintf(stderr, "%s: no answer\n", result);
            return 1;
        }
    }
    if (signal(SIGFPE, SIG_DFL) != onSignal) {
        fprintf(stderr, "the host's signal handler was replaced\n");
        return 1;
    }
    printf("%d calls: %d answered, %d refused, %d without a result; %d own traps, %d foreign ones, %d signals\n", calls,
           answered, refused, without, (int)seen, (int)strangers, (int)signals);
    return strangers != 0 || signals != 0;
}
