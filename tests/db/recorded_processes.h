#pragma once

#include "platform/system/native_processes.h"

#include <functional>
#include <string>
#include <vector>

/// This machine's processes, but for those of the suite that are not here: their command lines are
/// noted, and `onRun` does what they would do.
class RecordedProcesses : public platform::NativeProcesses {
public:
    std::vector<std::string> lines;
    std::function<void()> onRun = [] {};

    void run(const std::string& commandLine) override {
        lines.push_back(commandLine);
        onRun();
    }
    void runHidden(const std::string& commandLine) override { lines.push_back(commandLine); }
};
