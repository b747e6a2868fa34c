#include "tests/wire/support/Process.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace wire {
namespace {

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("pipe");
        }
        reading = ends[0];
        writing = ends[1];
    }
    int reading;
    int writing;
};

pid_t start(const std::vector<std::string>& arguments, int in, int out, int err) {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(in, STDIN_FILENO);
        dup2(out, STDOUT_FILENO);
        dup2(err, STDERR_FILENO);
        execvp(pointers[0], pointers.data());
        _exit(127);
    }
    if (pid < 0) {
        throw std::runtime_error("fork");
    }
    return pid;
}

std::string readAll(int descriptor) {
    std::string text;
    std::array<char, 65536> buffer{};
    for (ssize_t count = 0; (count = read(descriptor, buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    close(descriptor);
    return text;
}

// In a thread of its own. A program that ends without reading all is no error, nor our end.
void writeAll(int descriptor, const std::string& text) {
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(descriptor, text.data() + written, text.size() - written);
        if (count <= 0) {
            break;
        }
        written += static_cast<std::size_t>(count);
    }
    close(descriptor);
}

int exitStatus(pid_t pid) {
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

// Both at once, so that neither pipe fills up.
Result collect(pid_t pid, int out, int err, std::string before) {
    Result result{0, std::move(before), ""};
    std::thread other([&] { result.err = readAll(err); });
    result.out += readAll(out);
    other.join();
    result.status = exitStatus(pid);
    return result;
}

} // namespace

Result run(const std::vector<std::string>& arguments, const std::string& input) {
    const Pipe in;
    const Pipe out;
    const Pipe err;
    const pid_t pid = start(arguments, in.reading, out.writing, err.writing);
    close(in.reading);
    close(out.writing);
    close(err.writing);
    std::thread feeder([&] { writeAll(in.writing, input); });
    Result result = collect(pid, out.reading, err.reading, "");
    feeder.join();
    return result;
}

Process::Process(const std::vector<std::string>& arguments) {
    const Pipe out;
    const Pipe err;
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    _pid = start(arguments, nothing, out.writing, err.writing);
    close(nothing);
    close(out.writing);
    close(err.writing);
    _out = out.reading;
    _err = err.reading;
}

Process::~Process() {
    if (_pid > 0) {
        kill(_pid, SIGKILL);
        wait();
    }
}

std::string Process::readLine() {
    std::array<char, 4096> buffer{};
    while (_unread.find('\n') == std::string::npos) {
        const ssize_t count = read(_out, buffer.data(), buffer.size());
        if (count <= 0) {
            return "";
        }
        _unread.append(buffer.data(), static_cast<std::size_t>(count));
    }
    const std::size_t end = _unread.find('\n');
    std::string line = _unread.substr(0, end);
    _unread.erase(0, end + 1);
    return line;
}

void Process::closeOutput() {
    close(_out);
    _out = -1;
}

void Process::signal(int number) const {
    kill(_pid, number);
}

Result Process::wait() {
    Result result = collect(_pid, _out, _err, std::move(_unread));
    _pid = -1;
    return result;
}

} // namespace wire
