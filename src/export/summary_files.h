#pragma once

#include "util/money.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The two text files of the report tools: one record a line, fields separated by "|" and taken as
/// they stand. A line may end with CR and LF, LF or CR; the last one may lack its end.
namespace exporting {

/// What the code of a sales record stands for.
enum class SummaryCode : std::uint8_t {
    other,
    salesCategory,  ///< "0100" to "0600"
    tender,         ///< a code whose value is above 10 and below 30
    costOfGoods,    ///< "0099": ends the lines of the receipt
    secondCost,     ///< "5000": counts right behind "0099" only
};

/// One record of the sales file that is posted.
struct SummaryRow {
    std::string code;  ///< name of the item of the line
    std::string description;
    util::Money amount;
};

/// What a sales file holds of a day.
struct SummaryDay {
    std::vector<SummaryRow> rows;  ///< in the file's order
    bool hasSales = false;         ///< a sales category has an amount other than "0.00"
    std::string taxItem;           ///< sales tax item of the day; empty: none was named
};

/// One record of the purchase-order file.
struct SummaryOrder {
    std::string vendor;     ///< vendor code
    std::string reference;  ///< number of the order
    std::string date;       ///< in display form
    std::string amount;     ///< decimal text; empty when the line has fewer than four fields
    double value = 0;       ///< the number at the start of `amount`
};

/// What a code of the sales file stands for. @throws BasicError 6 for a code beyond a double.
SummaryCode summaryCode(const std::string& code);

/// Is this the description of a sales category that bears a tax item: seven characters, "Sale"
/// first, the tax item last?
bool namesTaxItem(std::string_view description);

/// Lines of a text without their ends; an end at the end of the text begins no further line.
std::vector<std::string> linesOf(std::string_view text);

/// Reads a sales file. @throws BasicError 13 or 6 for a record whose amount is none; the
/// description names the line.
SummaryDay readSummary(std::string_view text);

/// Reads a line of the purchase-order file. @return false for a line with fewer than two fields.
/// @throws BasicError 6 for an amount beyond a double.
bool readOrder(std::string_view line, SummaryOrder& order);

}  // namespace exporting
