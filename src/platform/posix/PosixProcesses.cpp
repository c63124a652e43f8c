#include "platform/posix/PosixProcesses.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>

namespace orv::platform {

namespace {

std::vector<char *> argumentPointers(const std::string &program,
                                     const std::vector<std::string> &arguments)
{
    // execvp takes pointers to mutable text and leaves it as it is.
    std::vector<char *> pointers{const_cast<char *>(program.c_str())};
    for (const std::string &argument : arguments) {
        pointers.push_back(const_cast<char *>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// Between fork and exec only calls that are safe in a signal handler: other threads' locks may be
/// held for ever in here.
[[noreturn]] void becomeProgram(char *const *arguments, const std::array<int, 2> &pipe)
{
    ::setsid();
    ::signal(SIGPIPE, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::dup2(pipe[1], STDOUT_FILENO);
    ::dup2(pipe[1], STDERR_FILENO);
    // The program holds the end to read from itself: so a line of output does not end it.
    ::fcntl(pipe[0], F_SETFD, 0);
    ::execvp(arguments[0], arguments);
    ::_exit(127);
}

} // namespace

void PosixProcesses::start(const std::string &program, const std::vector<std::string> &arguments)
{
    const std::vector<char *> pointers = argumentPointers(program, arguments);
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        return;
    }
    // The program becomes a child of nobody here, so that nobody here has to wait for its end.
    const pid_t middle = ::fork();
    if (middle == 0) {
        if (::fork() == 0) {
            becomeProgram(pointers.data(), pipe);
        }
        ::_exit(0);
    }
    ::close(pipe[1]);
    ::close(pipe[0]);
    while (middle > 0 && ::waitpid(middle, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace orv::platform
