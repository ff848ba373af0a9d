// The program as a server, started as a user starts it.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace frigana::test {

class ServedProgram {
  public:
    // On a port that the system chooses, where the arguments name none.
    explicit ServedProgram(const std::vector<std::string>& arguments = {});
    ~ServedProgram();
    ServedProgram(const ServedProgram&) = delete;
    ServedProgram& operator=(const ServedProgram&) = delete;

    int port() const { return port_; }  // 0 if it did not start
    pid_t process() const { return process_; }
    const std::string& said() const { return said_; }
    double secondsToStart() const { return secondsToStart_; }

    // Sends a signal and waits for the end.
    //   Returned  (value) exit status; 1000 and the number of the signal that ended it; -1 when it did not end in time
    int stop(int signal, double& seconds);

  private:
    void readAddress(int output);

    pid_t process_ = 0;
    int output_ = -1;
    int port_ = 0;
    double secondsToStart_ = 0;
    std::string said_;
};

}  // namespace frigana::test
