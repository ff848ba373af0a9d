#include "Keeper.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <initializer_list>
#include <system_error>
#include <thread>
#include <vector>

namespace frigana::workers {

namespace {

constexpr std::size_t longestSaying = 4096;
constexpr auto patienceWithKeeper = std::chrono::milliseconds(700);

// ---------------------------------------------------------------------------------------------- messages
struct Order {
    int slot;
};

struct Reply {
    pid_t process;  // 0: none
    int error;      // why, as errno
    int known, status;
    std::uint32_t saidLength;
    char said[longestSaying];
};

// One message, with a descriptor beside it where there is one to hand over.
bool sendReply(int socket, const Reply& reply, int handedOver) {
    iovec part{const_cast<Reply*>(&reply), sizeof reply};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> beside = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    if (handedOver >= 0) {
        message.msg_control = beside.data();
        message.msg_controllen = beside.size();
        cmsghdr* head = CMSG_FIRSTHDR(&message);
        head->cmsg_level = SOL_SOCKET;
        head->cmsg_type = SCM_RIGHTS;
        head->cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(head), &handedOver, sizeof(int));
    }
    ssize_t sent;
    do sent = sendmsg(socket, &message, MSG_NOSIGNAL);
    while (sent < 0 && errno == EINTR);
    return sent == sizeof reply;
}

bool receiveReply(int socket, Reply& reply, Descriptor& handedOver) {
    iovec part{&reply, sizeof reply};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> beside = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = beside.data();
    message.msg_controllen = beside.size();
    ssize_t received;
    do received = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    while (received < 0 && errno == EINTR);
    if (received != sizeof reply) return false;
    const cmsghdr* head = CMSG_FIRSTHDR(&message);
    if (head != nullptr && head->cmsg_type == SCM_RIGHTS) {
        int number;
        std::memcpy(&number, CMSG_DATA(head), sizeof number);
        handedOver.reset(number);
    }
    return true;
}

// ---------------------------------------------------------------------------------------------- the keeper itself
struct Slot {
    pid_t process = 0;
    Ending ending;  // of the worker that was there last
};

struct Household {
    Calculation calculate;
    Limits limits;
    std::string root;
    std::vector<Slot> slots;

    std::string folder(std::size_t slot) const { return root + "/" + std::to_string(slot + 1); }
    std::string said(std::size_t slot) const { return folder(slot) + ".said"; }
};

std::string endOfFile(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status;
    if (!file.valid() || fstat(file.get(), &status) != 0) return {};
    std::string text(longestSaying, '\0');
    const off_t from = std::max<off_t>(0, status.st_size - static_cast<off_t>(text.size()));
    const ssize_t count = pread(file.get(), text.data(), text.size(), from);
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return text;
}

void bury(Household& household, std::size_t slot, int status) {
    household.slots[slot].ending = {true, status, endOfFile(household.said(slot))};
    household.slots[slot].process = 0;
    removeFolder(household.folder(slot));
    unlink(household.said(slot).c_str());
}

// Workers that ended by themselves.
void buryTheDead(Household& household) {
    for (std::size_t slot = 0; slot < household.slots.size(); ++slot) {
        int status;
        const pid_t process = household.slots[slot].process;
        if (process > 0 && waitpid(process, &status, WNOHANG) == process) bury(household, slot, status);
    }
}

void killAndBury(Household& household, std::size_t slot) {
    const pid_t process = household.slots[slot].process;
    if (process <= 0) return;
    kill(process, SIGKILL);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    bury(household, slot, status);
}

[[noreturn]] void becomeWorker(const Household& household, std::size_t slot, int socket, pid_t keeper) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != keeper) _exit(0);
    prctl(PR_SET_NAME, "frigana-worker");
    for (int number : {SIGTERM, SIGHUP}) signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    // The socket alone stays, as the first number behind the standard ones.
    dup2(socket, STDERR_FILENO + 1);
    close_range(STDERR_FILENO + 2, UINT_MAX, 0);
    serveRequests(STDERR_FILENO + 1, household.calculate, household.limits, household.folder(slot),
                  household.said(slot));
}

// Forks a worker; the pool's end of its socket is returned, or an invalid one with errno set.
Descriptor forkWorker(Household& household, std::size_t slot) {
    const std::string folder = household.folder(slot);
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return {};
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return {};
    Descriptor ours(ends[0]), workers(ends[1]);
    const pid_t keeper = getpid();
    const pid_t process = fork();
    if (process < 0) return {};
    if (process == 0) becomeWorker(household, slot, workers.get(), keeper);
    household.slots[slot].process = process;
    return ours;
}

bool obey(Household& household, int control, const Order& order) {
    const auto slot = static_cast<std::size_t>(order.slot);
    if (order.slot < 0 || slot >= household.slots.size()) return false;
    killAndBury(household, slot);

    Reply reply = {};
    Ending& ending = household.slots[slot].ending;
    reply.known = ending.known;
    reply.status = ending.status;
    reply.saidLength = static_cast<std::uint32_t>(ending.said.size());
    std::memcpy(reply.said, ending.said.data(), ending.said.size());
    ending = {};

    const Descriptor socket = forkWorker(household, slot);
    if (socket.valid()) reply.process = household.slots[slot].process;
    if (!socket.valid()) reply.error = errno;
    return sendReply(control, reply, socket.get());
}

// Listens to orders and to the ends of workers until the program closes its end or is gone.
void keepHouse(Household& household, int control) {
    sigset_t children;
    sigemptyset(&children);
    sigaddset(&children, SIGCHLD);
    sigprocmask(SIG_BLOCK, &children, nullptr);
    const Descriptor signals(signalfd(-1, &children, SFD_CLOEXEC | SFD_NONBLOCK));
    for (;;) {
        std::array<pollfd, 2> waiting{{{control, POLLIN, 0}, {signals.get(), POLLIN, 0}}};
        if (poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR) return;
        signalfd_siginfo information;
        while (read(signals.get(), &information, sizeof information) == sizeof information) {
        }
        buryTheDead(household);
        if (waiting[0].revents == 0) continue;
        Order order;
        const ssize_t count = recv(control, &order, sizeof order, MSG_DONTWAIT);
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (count != sizeof order || !obey(household, control, order)) return;
    }
}

// A stop signal that the terminal or the system sends to all processes at once is the program's to answer.
[[noreturn]] void becomeKeeper(Household household, int control) {
    prctl(PR_SET_NAME, "frigana-keeper");
    for (int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGQUIT}) signal(number, SIG_IGN);
    signal(SIGCHLD, SIG_DFL);
    umask(077);
    // Two numbers stay open behind the standard ones: the control, and the root's lock beside it.
    keepHouse(household, control);
    for (std::size_t slot = 0; slot < household.slots.size(); ++slot) killAndBury(household, slot);
    removeFolder(household.root);
    _exit(0);
}

// Moves two descriptors to the first numbers behind the standard ones and closes all others: no listening socket, no
// other pool's control and no file of the program is held open by the keeper.
void keepOnly(int& first, int& second) {
    const int one = fcntl(first, F_DUPFD_CLOEXEC, STDERR_FILENO + 3);
    const int two = fcntl(second, F_DUPFD_CLOEXEC, STDERR_FILENO + 3);
    first = dup2(one, STDERR_FILENO + 1);
    second = dup2(two, STDERR_FILENO + 2);
    close_range(STDERR_FILENO + 3, UINT_MAX, 0);
}

bool endsWithin(pid_t process, std::chrono::milliseconds patience) {
    for (const Deadline end = Clock::now() + patience;;) {
        const pid_t ended = waitpid(process, nullptr, WNOHANG);
        if (ended == process || (ended < 0 && errno != EINTR)) return true;
        if (Clock::now() >= end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

}  // namespace

Keeper::Keeper(Calculation calculate, int workers, const Limits& limits) : root_(makeRootFolder(placeOfFolders())) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::system_error(errno, std::generic_category(), "no connection to the keeper of the workers");
    control_.reset(ends[0]);
    Descriptor keepers(ends[1]);
    process_ = fork();
    if (process_ < 0) {
        const int error = errno;
        removeFolder(root_.path);
        throw std::system_error(error, std::generic_category(), "the keeper of the workers could not be started");
    }
    if (process_ == 0) {
        int control = keepers.release(), lock = root_.lock.release();
        keepOnly(control, lock);
        becomeKeeper({calculate, limits, root_.path, std::vector<Slot>(static_cast<std::size_t>(workers))}, control);
    }
    // The keeper holds the lock from here on.
    root_.lock.reset();
}

Keeper::~Keeper() {
    stop();
}

pid_t Keeper::replace(int slot, Descriptor& socket, Ending& ending, std::string& complaint) {
    socket.reset();
    ending = {};
    const Order order{slot};
    Reply reply;
    if (!control_.valid() || send(control_.get(), &order, sizeof order, MSG_NOSIGNAL) != sizeof order ||
        !receiveReply(control_.get(), reply, socket)) {
        complaint = "the keeper of the workers has ended";
        return 0;
    }
    ending = {reply.known != 0, reply.status, std::string(reply.said, reply.saidLength)};
    if (reply.process == 0 || !socket.valid()) {
        complaint = std::string("no worker could be started: ") + std::strerror(reply.error);
        return 0;
    }
    return reply.process;
}

// Its end of the control is open as long as it lives.
bool Keeper::alive() const {
    pollfd waiting{control_.get(), POLLIN, 0};
    return control_.valid() && poll(&waiting, 1, 0) == 0;
}

void Keeper::stop() {
    if (process_ == 0) return;
    control_.reset();
    if (!endsWithin(process_, patienceWithKeeper)) {
        kill(process_, SIGKILL);
        endsWithin(process_, patienceWithKeeper);
    }
    // What a killed keeper could not clear up; its workers died with it.
    removeFolder(root_.path);
    process_ = 0;
}

}  // namespace frigana::workers
