#pragma once

#include <string>

/// The purchase order under construction, from the receipts in the `POHistory` buffer.
namespace exporting {

class PurchaseOrderPost {
public:
    /// Begins an order without lines.
    PurchaseOrderPost();
    /// True when the receipt in the buffer belongs to the order.
    [[nodiscard]] bool isOf(const std::string& number) const { return number_ == number; }
    /// Begins the order of the receipt in the buffer: reads its head and its vendor (sent to the
    /// company file when the store knows it), and shows it.
    void begin();
    /// Adds the receipt in the buffer as a line and brings the item up to date.
    static void addLine();
    /// Sends the order when it has lines; what the company file says is logged.
    static void post();

private:
    std::string number_;
};

/// True for a receipt that travels: status "R" or "U".
bool isPostableReceipt();

}  // namespace exporting
