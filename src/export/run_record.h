#pragma once

#include <string>

namespace exporting {

/// How far runs have come, beyond what the settings say. A run that is cut off leaves its position
/// unstored, and the run that follows walks the same records again; the search for a sale sees some
/// of what was posted, not all of it. So a run notes each record in a file of the data folder
/// before its documents go out, and a later run asks the company file for every document of the
/// records up to there before it sends the document again.
///
/// Records bear keys of one width, which grow along the walk. The file has a line for each note;
/// it goes when the position is stored.
class RunRecord {
public:
    /// @param fileName  of the data folder, "QBLINK.RNS" say.
    explicit RunRecord(std::string fileName) : fileName_(std::move(fileName)) {}

    /// Before the first record: takes the farther of `storedMark`, the key that the settings hold
    /// (empty: none), and what a run that was cut off has noted. A note that cannot be read counts
    /// as none and is logged.
    void begin(const std::string& storedMark);

    /// Before the documents of a record go out. A note that cannot be written is logged once.
    void reach(const std::string& key);

    /// May documents of the record be in the company file already?
    [[nodiscard]] bool mayBePosted(const std::string& key) const { return key <= reached_; }

    /// After the position `storedMark` was written. The notes go unless they tell of records behind
    /// it.
    void end(const std::string& storedMark);

    /// Forgets what begin() took; the file stays.
    void reset() { *this = RunRecord(fileName_); }

private:
    std::string fileName_;
    std::string reached_;
    bool failed_ = false;
};

/// The record of the sales walks; its keys are invoice numbers of seven digits.
RunRecord& salesRecord();
/// begin() of the sales' record with the mark that the settings hold.
void beginSalesRecord();
/// The record of the purchase-order walk; its keys are receipt numbers of ten digits.
RunRecord& ordersRecord();

/// Writes the log line of a document that was found in the company file and is not sent again.
void logPostedAlready(const std::string& kind, const std::string& refNumber);
/// Is a document in the company file, so that it must not be sent again? Says so in the log.
/// @throws PlatformError, BasicError when the company file does not answer.
bool isPostedAlready(const std::string& kind, const std::string& refNumber);

/// Puts the state of this module back to its start values.
void resetRunRecords();

}  // namespace exporting
