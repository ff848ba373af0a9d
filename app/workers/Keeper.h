// The keeper: a small process with one thread that forks the workers, buries them, and clears up behind them. It is
// forked from the program before there are threads, so that no worker is ever forked from a process with threads.
#pragma once

#include <sys/types.h>

#include <string>

#include "Frame.h"
#include "PrivateFolders.h"
#include "WorkerProcess.h"

namespace frigana::workers {

// How a worker ended, as far as is known.
struct Ending {
    bool known = false;
    int status = 0;    // as waitpid gives it
    std::string said;  // the end of what it wrote on standard error
};

// The program's end of the keeper. Calls are not thread-safe.
class Keeper {
  public:
    // Forks the keeper. The process has one thread at this time. Throws std::system_error.
    Keeper(Calculation calculate, int workers, const Limits& limits);
    ~Keeper();
    Keeper(const Keeper&) = delete;
    Keeper& operator=(const Keeper&) = delete;

    // Kills what is in a slot, if anything is, and forks a new worker there.
    //   Given     slot      0 and up
    //   Returned  (value)   process of the new worker; 0 if there is none
    //             socket    the pool's end of its socket
    //             ending    how the worker before ended
    //             complaint why there is no worker
    pid_t replace(int slot, Descriptor& socket, Ending& ending, std::string& complaint);

    // Ends the keeper with all its workers. Nothing of them is left when this returns.
    void stop();

    bool alive() const;
    pid_t process() const { return process_; }

  private:
    RootFolder root_;
    Descriptor control_;
    pid_t process_ = 0;
};

}  // namespace frigana::workers
