// SPDX-License-Identifier: MIT
#include "benchmarks/subjects/program.h"

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

namespace zelbench {

namespace {

double secondsIn(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// In the new process. Does not return.
[[noreturn]] void become(const std::vector<std::string>& words, const std::string& home)
{
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"})
        setenv(variable, home.c_str(), 1);
    const int nowhere = open("/dev/null", O_WRONLY);
    if (nowhere >= 0)
        dup2(nowhere, STDOUT_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str())); // execv() does not change them
    arguments.push_back(nullptr);
    execv(arguments.front(), arguments.data());
    _exit(127);
}

} // namespace

ProgramRun runProgram(const std::vector<std::string>& words, const std::string& home)
{
    ProgramRun run;
    malloc_trim(0); // the memory of the new process until it becomes the program counts as well
    const auto start = std::chrono::steady_clock::now();
    const pid_t process = fork();
    if (process == 0)
        become(words, home);
    int status = 0;
    rusage used{};
    if (process < 0 || wait4(process, &status, 0, &used) != process)
        return run;
    run.isOk = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    run.wallSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    run.processorSeconds = secondsIn(used.ru_utime) + secondsIn(used.ru_stime);
    run.mostBytes = static_cast<double>(used.ru_maxrss) * 1024; // the system counts in kilobytes
    return run;
}

} // namespace zelbench
