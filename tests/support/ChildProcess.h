// A program that runs beside a test and is killed with it. What it prints goes to a file.
//
// Qt's own process class starts its child in this process's memory, which the thread sanitizer takes for
// this process becoming the child.
#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

class ChildProcess {
public:
    using Environment = std::map<std::string, std::string>;

    ChildProcess() = default;
    ~ChildProcess() { kill(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Looks the program up in the search path. The environment is this process's with these variables set.
    bool start(
        std::vector<std::string> programAndArguments, const Environment&, const std::string& outputPath);
    // Ends it at once and waits until it is gone.
    void kill();
    // Stops it where it is, alive but answering nobody.
    void freeze();

private:
    pid_t m_process = 0;
};
