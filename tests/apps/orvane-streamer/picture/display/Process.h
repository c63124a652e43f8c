#pragma once

#include <spawn.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

namespace orv::apps::test {

/// A program that runs as long as the object lives.
class Process {
public:
    /// `standardOutput`  a descriptor that becomes the program's; -1 for the test's own.
    explicit Process(std::vector<std::string> words, int standardOutput = -1)
    {
        std::vector<char *> arguments;
        for (std::string &word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t files;
        ::posix_spawn_file_actions_init(&files);
        if (standardOutput >= 0) {
            ::posix_spawn_file_actions_adddup2(&files, standardOutput, 1);
        }
        const int failed =
            ::posix_spawnp(&id_, arguments[0], &files, nullptr, arguments.data(), environ);
        ::posix_spawn_file_actions_destroy(&files);
        if (failed != 0) {
            throw std::runtime_error("cannot start " + words[0]);
        }
    }
    ~Process() { end(); }
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    void end()
    {
        if (id_ > 0) {
            ::kill(id_, SIGTERM);
            ::waitpid(id_, nullptr, 0);
            id_ = 0;
        }
    }

private:
    pid_t id_ = 0;
};

} // namespace orv::apps::test
