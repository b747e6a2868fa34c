// The program itself, as people and programs start it.

#include <csignal>
#include <filesystem>
#include <functional>
#include <pty.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using testing::HasSubstr;
using testing::Not;

class Program : public testing::Test {
protected:
    Program() {
        std::string name = testing::TempDir() + "program.XXXXXX";
        directory = mkdtemp(name.data());
        setenv("DRAV_STATE_DIR", (directory / "state").c_str(), 1);
        setenv("ARRAYCTL", ARRAYCTL, 1);
        setenv("DEMO", DEMO_ARRAY, 1);
    }

    ~Program() override {
        unsetenv("DRAV_STATE_DIR");
        std::filesystem::remove_all(directory);
    }

    struct Result {
        int status;
        std::string out; // with standard error, unless the command sends that elsewhere
    };

    // What a line of shell does, in which $ARRAYCTL is the program and $DEMO the demo array.
    static Result shell(const std::string& line) {
        FILE* pipe = popen(("{ " + line + "; } 2>&1").c_str(), "r");
        std::string out;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
            out.push_back(static_cast<char>(c));
        }
        return {WEXITSTATUS(pclose(pipe)), out};
    }

    std::filesystem::path directory;
};

TEST_F(Program, ExitsWithZeroWhenDone) {
    EXPECT_EQ(shell("$ARRAYCTL import $DEMO").status, 0);
    const Result list = shell("$ARRAYCTL --json volume list");
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(nlohmann::json::parse(list.out).size(), 3U);
}

TEST_F(Program, ExitsWithOneAndOneLineOnStandardErrorWhenRefused) {
    shell("$ARRAYCTL import $DEMO");
    const Result refused = shell("$ARRAYCTL volume delete none >/dev/null");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out, "arrayctl: There is no volume \"none\".\n");
    EXPECT_EQ(shell("$ARRAYCTL volume delete none 2>/dev/null").out, "");
}

TEST_F(Program, ExitsWithTwoForWrongUsage) {
    const Result wrong = shell("$ARRAYCTL volume delete >/dev/null");
    EXPECT_EQ(wrong.status, 2);
    EXPECT_EQ(wrong.out, "arrayctl: VOLUME is required\nTry \"arrayctl --help\".\n");
}

TEST_F(Program, ExitsWithOneWhenItsOutputCannotBeWritten) {
    shell("$ARRAYCTL import $DEMO");
    const Result result = shell("$ARRAYCTL export >/dev/full");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "arrayctl: The output cannot be written.\n");
}

TEST_F(Program, ShowsNoProgressWithoutATerminal) {
    EXPECT_THAT(shell("$ARRAYCTL import $DEMO").out, Not(HasSubstr("\r")));
}

TEST_F(Program, FollowsEventsAsTheyHappen) {
    shell("$ARRAYCTL import $DEMO");
    const Result followed =
        shell("log=$DRAV_STATE_DIR/../followed; $ARRAYCTL events --follow >$log & follower=$!; "
              "sleep 0.5; echo weak | $ARRAYCTL secret set target iqn.2026-01.com.example:t1; "
              "for i in $(seq 100); do grep -q weak-secret $log && break; sleep 0.1; done; "
              "kill $follower; cat $log");
    EXPECT_THAT(followed.out, HasSubstr("weak-secret"));
}

TEST_F(Program, LeavesNothingOfAKilledImportForLong) {
    const Result result = shell(
        "cd $DRAV_STATE_DIR/..; mkfifo text; $ARRAYCTL import - <text & import=$!; exec 3>text; "
        "printf '{\"host\":\"h\",\"system\":\"s\",' >&3; "
        "for i in $(seq 100); do ls .state.import-*/array.db >/dev/null 2>&1 && break; sleep 0.1; "
        "done; "
        "kill -9 $import; wait $import; exec 3>&-; ls -d .state.import-*; $ARRAYCTL import $DEMO; "
        "ls -A");
    EXPECT_THAT(result.out, HasSubstr(", left by an import that was ended\nImported "));
    EXPECT_THAT(result.out, testing::EndsWith(" logical units.\nstate\ntext\n")) << result.out;
}

// Whether a process that dies by SIGABRT leaves a core file.
bool leavesCore(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_CORE, &unlimited);
        work();
        _exit(127);
    }
    int status = 0;
    usleep(300000);
    kill(child, SIGABRT);
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    return WCOREDUMP(status);
}

TEST_F(Program, LeavesNoCoreFile) {
    shell("$ARRAYCTL import $DEMO");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(directory);
    const bool others = leavesCore([] { execlp("sleep", "sleep", "100", nullptr); });
    const bool arrayctl =
        leavesCore([] { execl(ARRAYCTL, "arrayctl", "events", "--follow", nullptr); });
    std::filesystem::current_path(before);
    if (!others) {
        GTEST_SKIP() << "no process leaves a core file here";
    }
    EXPECT_FALSE(arrayctl);
}

// Types at the program's terminal and returns all that the terminal showed.
struct Typed {
    int status;
    std::string shown;
};

std::string readUntil(int terminal, const std::string& end) {
    std::string shown;
    char c = 0;
    while (!shown.ends_with(end) && read(terminal, &c, 1) == 1) {
        shown.push_back(c);
    }
    return shown;
}

Typed typeAtPrompts(const std::vector<const char*>& arguments,
                    const std::vector<std::string>& answers) {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        std::vector<char*> argv;
        for (const char* argument : arguments) {
            argv.push_back(const_cast<char*>(argument));
        }
        argv.push_back(nullptr);
        execv(ARRAYCTL, argv.data());
        _exit(127);
    }
    Typed result{-1, ""};
    for (const std::string& answer : answers) {
        result.shown += readUntil(terminal, ": ");
        EXPECT_EQ(write(terminal, (answer + "\n").data(), answer.size() + 1),
                  static_cast<ssize_t>(answer.size() + 1));
    }
    result.shown += readUntil(terminal, std::string(1, '\0'));
    int status = 0;
    waitpid(child, &status, 0);
    close(terminal);
    result.status = WEXITSTATUS(status);
    return result;
}

const std::vector<const char*> setSecret = {"arrayctl", "secret", "set", "target",
                                            "iqn.2026-01.com.example:t1"};

TEST_F(Program, AsksForASecretTwiceAndNeverShowsIt) {
    shell("$ARRAYCTL import $DEMO");
    const Typed typed = typeAtPrompts(setSecret, {"typed-secret-1", "typed-secret-1"});
    EXPECT_EQ(typed.status, 0);
    EXPECT_EQ(typed.shown, "Secret of target iqn.2026-01.com.example:t1: \r\n"
                           "The same again: \r\n");
    EXPECT_THAT(shell("$ARRAYCTL export --with-secrets").out, HasSubstr("\"typed-secret-1\""));
}

TEST_F(Program, SetsNothingWhenTheTwoSecretsDiffer) {
    shell("$ARRAYCTL import $DEMO");
    const Typed typed = typeAtPrompts(setSecret, {"typed-secret-1", "typed-secret-2"});
    EXPECT_EQ(typed.status, 1);
    EXPECT_THAT(typed.shown, HasSubstr("arrayctl: The two secrets differ; nothing was changed."));
    EXPECT_THAT(typed.shown, Not(HasSubstr("typed-secret")));
    EXPECT_THAT(shell("$ARRAYCTL export --with-secrets").out, Not(HasSubstr("typed-secret")));
}

} // namespace
