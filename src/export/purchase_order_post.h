#pragma once

#include "export/run_record.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

/// The purchase order under construction, from the receipts in the `POHistory` buffer.
namespace exporting {

class PurchaseOrderPost {
public:
    /// Begins an order without lines.
    /// @param record  of the run that walks the receipts; null: orders go out without a question.
    explicit PurchaseOrderPost(RunRecord* record);
    /// True when the receipt in the buffer belongs to the order.
    [[nodiscard]] bool isOf(const std::string& number) const { return number_ == number; }
    /// Begins the order of the receipt in the buffer: reads its head and its vendor (sent to the
    /// company file when the store knows it), and shows it.
    void begin();
    /// Adds the receipt in the buffer as a line and brings the item up to date.
    static void addLine();
    /// Sends the order when it has lines, unless a run that was cut off has sent it; what the
    /// company file says is logged.
    void post();

private:
    [[nodiscard]] bool isSentBefore();

    RunRecord* record_;
    std::string number_;
    std::string firstReceipt_;  ///< key of the order in `record_`
    /// How many orders of a number and a day of receipt were found and kept back.
    std::map<std::string, std::ptrdiff_t> keptBack_;
};

/// Key of a receipt in the record of runs: its number as ten digits.
std::string receiptKey(std::int32_t number);

/// True for a receipt that travels: status "R" or "U".
bool isPostableReceipt();

}  // namespace exporting
