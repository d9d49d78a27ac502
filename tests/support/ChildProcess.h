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
    // Waits until it has ended by itself; whether it did so without an error.
    bool succeeds();
    // Stops it where it is, alive but answering nobody, until it is let go on.
    void freeze();
    void goOn();

private:
    pid_t m_process = 0;
};
