#include "RunLock.h"

#include <atomic>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#elif !defined(__EMSCRIPTEN__)
#include <pthread.h>
#include <cerrno>
#endif

namespace frigana {

namespace {
// Stays true behind a run that did not come to its end.
std::atomic<bool> running{false};
}  // namespace

#ifdef _WIN32

namespace {
// Its owner may take it again, and an owner that ends gives it back.
HANDLE turn() {
    static const HANDLE mutex = CreateMutexA(nullptr, FALSE, nullptr);
    return mutex;
}
}  // namespace

bool beginRun() {
    WaitForSingleObject(turn(), INFINITE);
    return running.exchange(true);
}
void endRun() {
    running = false;
    ReleaseMutex(turn());
}

#elif defined(__EMSCRIPTEN__)

// One thread.
bool beginRun() {
    return running.exchange(true);
}
void endRun() {
    running = false;
}

#else

namespace {

pthread_mutex_t turn;
pthread_once_t prepared = PTHREAD_ONCE_INIT;

// Tells its owner from the others, and outlives an owner that ends.
void makeTurn() {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_ERRORCHECK);
    pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    pthread_mutex_init(&turn, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

void prepare() {
    makeTurn();
    // In the child of a fork the thread that had the turn does not exist.
    pthread_atfork(nullptr, nullptr, makeTurn);
}

}  // namespace

bool beginRun() {
    pthread_once(&prepared, prepare);
    // EDEADLK: this thread has the turn already, and left its run by a jump.
    if (pthread_mutex_lock(&turn) == EOWNERDEAD) pthread_mutex_consistent(&turn);
    return running.exchange(true);
}

void endRun() {
    running = false;
    pthread_mutex_unlock(&turn);
}

#endif

}  // namespace frigana
