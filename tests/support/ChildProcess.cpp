#include "tests/support/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace {

// The form that the system's call wants; lives as long as the strings.
std::vector<char*> pointers(std::vector<std::string>& strings)
{
    std::vector<char*> all;
    for (std::string& string : strings)
        all.push_back(string.data());
    all.push_back(nullptr);
    return all;
}

std::vector<std::string> variables(ChildProcess::Environment changes)
{
    for (char** variable = environ; *variable; ++variable) {
        const std::string text = *variable;
        const std::size_t equals = text.find('=');
        if (equals != std::string::npos)
            changes.try_emplace(text.substr(0, equals), text.substr(equals + 1));
    }
    std::vector<std::string> all;
    for (const auto& [name, value] : changes)
        all.emplace_back(name).append(1, '=').append(value);
    return all;
}

} // namespace

bool ChildProcess::start(std::vector<std::string> programAndArguments, const Environment& environment,
    const std::string& outputPath)
{
    kill();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(
        &actions, STDOUT_FILENO, outputPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::vector<std::string> allVariables = variables(environment);
    const int failure = posix_spawnp(&m_process, programAndArguments.front().c_str(), &actions, nullptr,
        pointers(programAndArguments).data(), pointers(allVariables).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failure)
        m_process = 0;
    return !failure;
}

void ChildProcess::kill()
{
    const pid_t process = std::exchange(m_process, 0);
    if (process <= 0)
        return;
    ::kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

void ChildProcess::freeze()
{
    if (m_process > 0)
        ::kill(m_process, SIGSTOP);
}

void ChildProcess::goOn()
{
    if (m_process > 0)
        ::kill(m_process, SIGCONT);
}

bool ChildProcess::succeeds()
{
    int status = -1;
    const pid_t process = std::exchange(m_process, 0);
    return process > 0 && waitpid(process, &status, 0) == process && status == 0;
}
