#include "Pool.h"

#include <poll.h>
#include <sys/wait.h>

#include <csignal>
#include <cstring>

namespace frigana::workers {

namespace {

// Requests that are sent ahead fit the buffer of the socket, so that sending them never waits for a worker that itself
// waits for its answer to be read.
constexpr std::size_t bytesAhead = std::size_t{48} * 1024;

// A waiting caller looks this often whether it was given up.
constexpr auto betweenLooks = std::chrono::milliseconds(20);

std::string seconds(std::chrono::milliseconds time) {
    std::string text = std::to_string(static_cast<double>(time.count()) / 1000.0);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text + " s";
}

std::string howItEnded(const Ending& ending) {
    if (!ending.known) return "in an unknown way";
    if (WIFSIGNALED(ending.status)) {
        const int number = WTERMSIG(ending.status);
        return "by signal " + std::to_string(number) + " (" + strsignal(number) + ")";
    }
    return "with exit status " + std::to_string(WEXITSTATUS(ending.status));
}

// Of a line such as "/path/program(+0x12ab) [0x55d0c0ffee12]" what stays the same from run to run.
std::string placeOf(std::string_view line) {
    const std::size_t bracket = line.find('(');
    if (const std::size_t address = line.rfind(" [0x"); address != line.npos) line = line.substr(0, address);
    if (bracket == line.npos) return std::string(line);
    const std::size_t folder = line.rfind('/', bracket);
    return std::string(folder == line.npos ? line : line.substr(folder + 1));
}

// The calls on the stack, where the last words of a worker hold them; else the words.
std::string placesIn(std::string_view said) {
    std::string places;
    while (!said.empty()) {
        const std::string_view line = said.substr(0, said.find('\n'));
        said.remove_prefix(std::min(said.size(), line.size() + 1));
        if (line.empty()) continue;
        places += placeOf(line);
        places += '\n';
    }
    return places;
}

}  // namespace

Pool::Pool(Calculation calculate, int workers, const Limits& limits)
    : limits_(limits), keeper_(calculate, workers, limits), workers_(static_cast<std::size_t>(workers)) {
    for (int slot = 0; slot < workers; ++slot) {
        Ending ending;
        std::string complaint;
        // A slot that stays empty tries again when its turn comes.
        renew(slot, ending, complaint);
        free_.push_back(slot);
    }
}

std::vector<pid_t> Pool::processes() const {
    const std::lock_guard lock(keeperAccess_);
    std::vector<pid_t> all;
    for (const Worker& worker : workers_) all.push_back(worker.process);
    return all;
}

bool Pool::healthy() const {
    const std::lock_guard lock(keeperAccess_);
    return keeper_.alive();
}

void Pool::stop() {
    stopping_.raise();
    {
        const std::lock_guard lock(turns_);
        for (const auto* line : {&people_, &studies_})
            for (Waiting* waiting : *line) waiting->turn.notify_all();
    }
    const std::lock_guard lock(keeperAccess_);
    keeper_.stop();
}

// ------------------------------------------------------------------------------------------------- whose turn it is

int Pool::takeWorker(const Cancel* cancel, Urgency urgency) {
    std::unique_lock lock(turns_);
    const auto givenUp = [&] { return stopping_.raised() || (cancel != nullptr && cancel->raised()); };
    if (givenUp()) return -1;
    if (!free_.empty()) {
        // The worker that was used last still holds its fluid.
        const int slot = free_.back();
        free_.pop_back();
        return slot;
    }
    Waiting waiting;
    std::list<Waiting*>& line = urgency == Urgency::person ? people_ : studies_;
    // cppcheck-suppress mismatchingContainerIterator ; it is the same one, whichever of the two
    const auto place = line.insert(line.end(), &waiting);
    while (waiting.slot < 0) {
        waiting.turn.wait_for(lock, betweenLooks);
        if (waiting.slot < 0 && givenUp()) {
            line.erase(place);
            return -1;
        }
    }
    return waiting.slot;
}

void Pool::giveBack(int slot) {
    const std::lock_guard lock(turns_);
    std::list<Waiting*>& line = people_.empty() ? studies_ : people_;
    if (line.empty()) {
        free_.push_back(slot);
        return;
    }
    Waiting* next = line.front();
    line.pop_front();
    next->slot = slot;
    next->turn.notify_one();
}

// ------------------------------------------------------------------------------------------------------ the workers

bool Pool::renew(int slot, Ending& ending, std::string& complaint) {
    const std::lock_guard lock(keeperAccess_);
    Worker& worker = workers_[static_cast<std::size_t>(slot)];
    worker.process = keeper_.replace(slot, worker.socket, ending, complaint);
    return worker.process != 0;
}

// One caller's time with one worker.
class Pool::Turn {
  public:
    Turn(Pool& pool, const Cancel* cancel, Urgency urgency)
        : pool_(pool), cancel_(cancel), slot_(pool.takeWorker(cancel, urgency)) {}
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    // The answer to the next request of the list.
    Answer answer(const std::vector<std::string>& requests);

  private:
    const Worker& worker() const { return pool_.workers_[static_cast<std::size_t>(slot_)]; }
    bool givenUp() const { return pool_.stopping_.raised() || (cancel_ != nullptr && cancel_->raised()); }
    bool idleAndAlive() const;
    void sendAhead(const std::vector<std::string>& requests);
    Answer receive();
    Answer nothing() const;
    Answer broken(End end);

    Pool& pool_;
    const Cancel* cancel_;
    int slot_;                // none where it was given up before its turn came
    std::size_t number_ = 0;  // of the next request
    std::size_t sent_ = 0;    // requests before this one are at the worker
};

Pool::Turn::~Turn() {
    if (slot_ < 0) return;
    // What was sent ahead would be answered to the next caller.
    if (sent_ > number_) broken(End::cancelled);
    pool_.giveBack(slot_);
}

Answer Pool::Turn::nothing() const {
    if (pool_.stopping_.raised()) return {End::stopped, "The workers have been stopped.", {}};
    return {End::cancelled, "The calculation was given up.", {}};
}

// An idle worker says nothing; what can be read is its end.
bool Pool::Turn::idleAndAlive() const {
    if (!worker().socket.valid()) return false;
    pollfd waiting{worker().socket.get(), POLLIN, 0};
    return poll(&waiting, 1, 0) == 0;
}

void Pool::Turn::sendAhead(const std::vector<std::string>& requests) {
    std::string bytes;
    sent_ = number_;
    do appendFrame(bytes, static_cast<std::uint32_t>(FrameKind::request), requests[sent_++]);
    while (sent_ < requests.size() && bytes.size() + requests[sent_].size() < bytesAhead &&
           requests[sent_].size() <= pool_.limits_.request);
    // A worker that cannot be sent to has ended; receiving tells how.
    sendBytes(worker().socket.get(), bytes, Clock::now() + pool_.limits_.time, {&pool_.stopping_, cancel_});
}

Answer Pool::Turn::answer(const std::vector<std::string>& requests) {
    const Limits& limits = pool_.limits_;
    const bool atWorker = number_ < sent_;
    if (slot_ < 0 || (!atWorker && givenUp())) {
        ++number_;
        return nothing();
    }
    if (!atWorker && requests[number_].size() > limits.request) {
        ++number_;
        return {
            End::tooLarge, "The request is longer than the " + std::to_string(limits.request) + " bytes allowed.", {}};
    }
    if (!atWorker) {
        Ending ending;
        std::string complaint;
        // A worker that ended with nothing to do is replaced in silence.
        if (!idleAndAlive() && !pool_.renew(slot_, ending, complaint)) {
            ++number_;
            return pool_.stopping_.raised() ? nothing() : Answer{End::noWorker, complaint, {}};
        }
        sendAhead(requests);
    }
    Answer answer = receive();
    ++number_;
    return answer;
}

Answer Pool::Turn::receive() {
    Answer answer;
    std::uint32_t kind = 0;
    switch (receiveFrame(worker().socket.get(), kind, answer.text, pool_.limits_.answer,
                         Clock::now() + pool_.limits_.time, {&pool_.stopping_, cancel_})) {
        case Transfer::closed:
            return broken(End::died);
        case Transfer::late:
            return broken(End::tooSlow);
        case Transfer::tooLarge:
            return broken(End::tooLarge);
        case Transfer::interrupted:
            return broken(End::cancelled);
        case Transfer::done:
            break;
    }
    if (kind == static_cast<std::uint32_t>(FrameKind::outOfMemory)) return broken(End::outOfMemory);
    answer.end = kind == static_cast<std::uint32_t>(FrameKind::answer) ? End::done : End::threw;
    return answer;
}

// The worker is of no more use: a new one takes its place, and the answer says what happened. What had been sent to it
// ahead is sent again.
Answer Pool::Turn::broken(End end) {
    const Limits& limits = pool_.limits_;
    Ending ending;
    std::string complaint;
    sent_ = number_;
    if (pool_.stopping_.raised()) return nothing();
    pool_.renew(slot_, ending, complaint);
    switch (end) {
        case End::died:
            return {end, "The calculation ended " + howItEnded(ending) + ".", placesIn(ending.said)};
        case End::tooSlow:
            return {end, "The calculation took more than " + seconds(limits.time) + " and was ended.", {}};
        case End::outOfMemory:
            return {end,
                    "The calculation wanted more than the " + std::to_string(limits.memory >> 20) +
                        " MiB of memory that it may have.",
                    {}};
        case End::tooLarge:
            return {end, "The answer is longer than the " + std::to_string(limits.answer) + " bytes allowed.", {}};
        default:
            return nothing();
    }
}

void Pool::runInOrder(const std::vector<std::string>& requests, const std::function<bool(std::size_t, Answer&&)>& heard,
                      const Cancel* cancel, Urgency urgency) {
    Turn turn(*this, cancel, urgency);
    for (std::size_t number = 0; number < requests.size(); ++number)
        if (!heard(number, turn.answer(requests))) return;
}

Answer Pool::run(std::string_view request, const Cancel* cancel, Urgency urgency) {
    Answer answer;
    const auto keep = [&](std::size_t, Answer&& heard) {
        answer = std::move(heard);
        return true;
    };
    runInOrder({std::string(request)}, keep, cancel, urgency);
    return answer;
}

}  // namespace frigana::workers
