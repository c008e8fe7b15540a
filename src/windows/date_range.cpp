#include "windows/date_range.h"

#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/summary_setup.h"
#include "db/nuvDBSM_SalesHead.h"
#include "util/conversions.h"

namespace windows {

namespace {

constexpr char kPicker[] = "DTPicker1";

}  // namespace

void DateRange::show() {
    const bool isKnown = util::aboveBlank(gsFromDate);
    shown_ = {isKnown ? gsFromDate : core::yesterdayText(), core::yesterdayText()};
    for (std::size_t index = 0; index < shown_.size(); ++index) {
        window_.setText(kPicker, shown_.at(index), static_cast<int>(index));
    }
}

void DateRange::normalise() {
    for (std::size_t index = 0; index < shown_.size(); ++index) {
        const int field = static_cast<int>(index);
        if (const auto date = core::dateOf(window_.text(kPicker, field))) {
            shown_.at(index) = core::dateText(*date);
        }
        if (window_.text(kPicker, field) != shown_.at(index)) {
            window_.setText(kPicker, shown_.at(index), field);
        }
    }
}

void DateRange::accept() {
    normalise();
    gsFromDate = shown_.front();
    gsToDate = shown_.back();
}

std::optional<std::int32_t> lastPostedSale() {
    if (util::compareBinary(gsLastInvoice, "  ") > 0 &&
        gfbSalesHead_ReadByInvoice(gsLastInvoice) != kNo) {
        return gSalesHead.SALEID;
    }
    return std::nullopt;
}

}  // namespace windows
