#pragma once

#include <cstdint>
#include <string>

namespace windows {

/// The items and customers that the store made since the last list export: a daily export sends
/// them before the sales that refer to them.
class NewRecords {
public:
    /// Looks for records above the two marks (`gnLastInventoryUID`, `gnLastNameUID`); a mark of 0
    /// looks for none. Opens the rows of tables 1 and 2.
    void find();
    /// Sends the rows found, newest first, sets the marks to their highest numbers and writes both
    /// marks to `QBLINK.NUV`. A number that does not fit the mark leaves it alone (one log line).
    /// @return false when a session was needed and none could be opened: nothing was done.
    bool post();

private:
    static constexpr int kKinds = 2;
    bool found_[kKinds] = {};
};

}  // namespace windows
