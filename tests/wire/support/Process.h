// Programs that a test runs.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace wire {

struct Result {
    int status; // exit status, or 128 and the signal that ended it
    std::string out;
    std::string err;
};

// Runs a program to its end. The first argument is the program, looked for in PATH.
Result run(const std::vector<std::string>& arguments, const std::string& input = "");

// A program that runs beside the test and is killed, if it still runs, when this goes.
class Process {
public:
    explicit Process(const std::vector<std::string>& arguments);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // The next line of its standard output, without its end; "" when there is none.
    std::string readLine();
    // From now on nobody reads its standard output.
    void closeOutput();
    void signal(int number) const;
    pid_t pid() const { return _pid; }
    // Waits for its end; what was left of its output.
    Result wait();

private:
    pid_t _pid = -1;
    int _out = -1;
    int _err = -1;
    std::string _unread; // of standard output
};

} // namespace wire
