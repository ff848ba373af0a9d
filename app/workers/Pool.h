// Calculations in processes of their own: a pool of workers that may crash, hang or eat all memory without harm to the
// program that asks them.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "Answer.h"
#include "Keeper.h"

namespace frigana::workers {

// Gives up what it was handed to, from any thread.
using Cancel = Flag;

// Who waits for a worker: people are served before studies.
enum class Urgency { person, study };

class Pool {
  public:
    // Starts the workers. Forks: the process has one thread at this time. Throws std::system_error.
    Pool(Calculation calculate, int workers, const Limits& limits = {});
    ~Pool() { stop(); }
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

    int size() const { return static_cast<int>(workers_.size()); }

    // One request in the next free worker; waits its turn. From any thread.
    Answer run(std::string_view request, const Cancel* cancel = nullptr, Urgency urgency = Urgency::person);

    // Several requests in one worker, sent ahead so that it need not wait between them; `heard` gets the answers in the
    // order of the requests, in the calling thread, and ends the rest as cancelled when it returns false. Those behind
    // a request whose worker died run in the next one.
    void runInOrder(const std::vector<std::string>& requests, const std::function<bool(std::size_t, Answer&&)>& heard,
                    const Cancel* cancel = nullptr, Urgency urgency = Urgency::study);

    // Ends running requests and all processes, within a second. From any thread; later requests end as stopped.
    void stop();

    // The keeper of the workers is there; without it no worker can be replaced.
    bool healthy() const;

    // Processes at this time, for tests and reports; 0 for a worker that could not be started.
    pid_t keeper() const { return keeper_.process(); }
    std::vector<pid_t> processes() const;

  private:
    struct Worker {
        Descriptor socket;
        pid_t process = 0;
    };
    struct Waiting {
        std::condition_variable turn;
        int slot = -1;
    };
    class Turn;
    friend class Turn;

    int takeWorker(const Cancel* cancel, Urgency urgency);
    void giveBack(int slot);
    bool renew(int slot, Ending& ending, std::string& complaint);

    Limits limits_;
    Keeper keeper_;
    mutable std::mutex keeperAccess_;  // the keeper, and the processes in workers_
    std::vector<Worker> workers_;
    std::mutex turns_;
    std::deque<int> free_;
    std::list<Waiting*> people_, studies_;
    Flag stopping_;
};

}  // namespace frigana::workers
