#include "util/nuv_formats.h"

#include "util/conversions.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t kInvoiceDigits = 7;
constexpr std::size_t kItemStem = 7;

/// The last `count` characters, or all of a shorter text.
std::string right(const std::string& text, std::size_t count) {
    return text.substr(text.size() - std::min(count, text.size()));
}

}  // namespace

std::string gfsNumber_pad7(const std::string& text) {
    const double whole = std::nearbyint(util::val(text));
    return right(std::string(kInvoiceDigits, '0') + util::format(whole, "0"), kInvoiceDigits);
}

std::string gfsItem_key(const std::string& displayForm) {
    // Kept: a text of seven characters or fewer gets its last character twice.
    return displayForm.substr(0, kItemStem) + right(displayForm, 1);
}

std::string gfsItem_name(const std::string& sl) {
    if (util::trim(sl).starts_with('~')) {
        return sl;
    }
    return sl.substr(0, kItemStem) + "." + right(sl, 1);
}

double gfdRound(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const double scaled = std::fabs(value) * scale;
    const double whole = std::floor(scaled);
    const auto fraction = static_cast<float>(scaled - whole);
    const double rounded = (fraction >= 0.5F ? whole + 1 : whole) / scale;
    return value < 0 ? -rounded : rounded;
}
