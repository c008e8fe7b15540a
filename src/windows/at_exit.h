#pragma once

#include <utility>

namespace windows {

/// Runs a function at the end of its block, however that is left.
template <class Function>
class AtExit {
public:
    explicit AtExit(Function function) : function_(std::move(function)) {}
    ~AtExit() { function_(); }
    AtExit(const AtExit&) = delete;
    AtExit& operator=(const AtExit&) = delete;
    AtExit(AtExit&&) = delete;
    AtExit& operator=(AtExit&&) = delete;

private:
    Function function_;
};

}  // namespace windows
