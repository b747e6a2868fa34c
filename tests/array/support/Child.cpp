#include "tests/array/support/Child.h"

#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace array {

namespace {

constexpr int exitDone = 0;
constexpr int exitFailed = 3;

[[noreturn]] void work(const std::function<void(const Child::Voice&)>& task, int descriptor) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    try {
        task(Child::Voice(descriptor));
    } catch (...) {
        _exit(exitFailed);
    }
    _exit(exitDone);
}

} // namespace

void Child::Voice::acknowledge() const {
    if (write(_descriptor, "+", 1) != 1) {
        _exit(exitFailed);
    }
}

Child::Child(const std::function<void(const Voice&)>& task) {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    _process = fork();
    if (_process == 0) {
        close(ends[0]);
        work(task, ends[1]);
    }
    close(ends[1]);
    _pipe = ends[0];
    if (_process < 0) {
        throw std::runtime_error("no process");
    }
}

Child::~Child() {
    killNow();
    close(_pipe);
}

bool Child::waitForAcknowledgement() {
    char byte = 0;
    if (read(_pipe, &byte, 1) != 1) {
        return false;
    }
    ++_heard;
    return true;
}

void Child::stopNow() const {
    kill(_process, SIGSTOP);
    waitpid(_process, nullptr, WUNTRACED);
}

bool Child::killNow() {
    if (_process < 0) {
        return false;
    }
    kill(_process, SIGKILL);
    return WIFSIGNALED(waitForEnd());
}

bool Child::finish() {
    const int status = waitForEnd();
    if (WIFEXITED(status) && WEXITSTATUS(status) != exitDone) {
        throw std::runtime_error("the child failed");
    }
    return WIFEXITED(status);
}

int Child::acknowledged() {
    while (waitForAcknowledgement()) {
    }
    return _heard;
}

int Child::waitForEnd() {
    int status = 0;
    waitpid(_process, &status, 0);
    _process = -1;
    return status;
}

} // namespace array
