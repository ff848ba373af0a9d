#include "FaultyRun.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace frigana::test {

pid_t start(const std::vector<std::string>& arguments, const std::string& fault, const std::string& trace) {
    std::vector<char*> line{const_cast<char*>(FRIGANA_PROGRAM)};
    for (const std::string& argument : arguments) line.push_back(const_cast<char*>(argument.c_str()));
    line.push_back(nullptr);
    const pid_t child = fork();
    if (child != 0) return child;
    const int nowhere = open("/dev/null", O_RDWR);
    for (int handle : {0, 1, 2}) dup2(nowhere, handle);
    if (!fault.empty()) {
        setenv("LD_PRELOAD", FRIGANA_SHIM, 1);
        setenv("FRIGANA_FAULT", fault.c_str(), 1);
        setenv("FRIGANA_FAULT_TRACE", trace.c_str(), 1);
    }
    execv(FRIGANA_PROGRAM, line.data());
    _exit(127);
}

int finish(pid_t process) {
    int status = -1;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

}  // namespace frigana::test
