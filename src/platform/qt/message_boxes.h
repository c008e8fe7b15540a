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

/// The message boxes of the program. Within one run a box that comes again can be answered for the
/// rest of the run: telling boxes by their title, questions by their whole text.
class MessageBoxes {
public:
    struct Reply {
        BoxAnswer answer = BoxAnswer::ok;
        bool shown = true;     ///< false: answered as told before
        bool stopped = false;  ///< the operator pressed Stop in the box
    };

    /// A run begins: nothing of the last one holds.
    void begin();
    /// Shows the box above `parent` and waits. `canStop`: a run is under way that Stop ends.
    Reply
    ask(const std::string& text,
        const std::string& title,
        BoxButtons buttons,
        BoxIcon icon,
        QWidget* parent,
        bool canStop);
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
