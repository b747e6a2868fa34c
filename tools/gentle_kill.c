/* For measuring coverage: a process that is killed is asked to end first, and given five seconds for
   it, so that it writes what it counted. Loaded before a test's own libraries (LD_PRELOAD). */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <signal.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

static int has_ended(pid_t process) {
    siginfo_t info;
    memset(&info, 0, sizeof info);
    return waitid(P_PID, (id_t)process, &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == process;
}

int kill(pid_t process, int number) {
    int (*really_kill)(pid_t, int) = (int (*)(pid_t, int))dlsym(RTLD_NEXT, "kill");
    if (number == SIGKILL && process > 0 && really_kill(process, SIGTERM) == 0) {
        for (int tenths = 0; tenths < 50; ++tenths) {
            if (has_ended(process)) {
                return 0;
            }
            usleep(100000);
        }
    }
    return really_kill(process, number);
}
