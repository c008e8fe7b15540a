#pragma once

#include "platform/ports/desktop.h"

#include <map>
#include <string>
#include <vector>

class QWidget;

namespace platform {

/// A message as it was given, and how often in a row.
struct AnsweredMessage {
    std::string text;
    int times = 1;
};

/// Where a box comes up.
struct BoxPlace {
    QWidget* parent = nullptr;
    bool inRun = false;    ///< what the operator started is under way
    bool canStop = false;  ///< and Stop ends it
};

/// The message boxes of the program. Within one run a box that comes again can be answered for the
/// rest of the run: telling boxes that differ in names and numbers only count as the same,
/// questions are known by their whole text.
class MessageBoxes {
public:
    struct Reply {
        BoxAnswer answer = BoxAnswer::ok;
        bool shown = true;     ///< false: answered as told before
        bool stopped = false;  ///< the operator pressed Stop in the box
    };

    /// A run begins: nothing of the last one holds.
    void begin();
    /// Shows the box and waits.
    Reply
    ask(const std::string& text,
        const std::string& title,
        BoxButtons buttons,
        BoxIcon icon,
        const BoxPlace& place);
    /// The run has ended: shows the list of what was answered without a box, if there is any.
    void end(QWidget* parent);
    [[nodiscard]] const std::vector<AnsweredMessage>& answered() const { return answered_; }

private:
    struct Known {
        int times = 0;
        bool fixed = false;
        BoxAnswer answer = BoxAnswer::ok;
    };

    void keep(const std::string& text);

    std::map<std::string, Known> known_;
    std::vector<AnsweredMessage> answered_;
    int count_ = 0;
};

}  // namespace platform
