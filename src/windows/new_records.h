#pragma once

#include <cstdint>
#include <string>

namespace windows {

/// The items and customers that the store made since the last list export: a daily export sends
/// them before the sales that refer to them.
class NewRecords {
public:
    /// Looks for records above the two marks (`gnLastNameUID`, `gnLastInventoryUID`); a mark of 0
    /// looks for none. Opens the rows of tables 2 and 1.
    void find();
    /// Sends the rows found, newest first, sets the marks to their highest numbers and writes both
    /// marks to `QBLINK.NUV`. A number that does not fit the mark leaves it alone (one log line).
    /// Stop ends it after the record at hand; the mark of that table stays then, since the newest
    /// go first. @return false when it was stopped (the label says so), or when a session was
    /// needed and none could be opened: no sale may be sent then.
    bool post();

private:
    static constexpr int kKinds = 2;
    bool found_[kKinds] = {};
};

}  // namespace windows
