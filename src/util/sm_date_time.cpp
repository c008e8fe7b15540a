#include "util/sm_date_time.h"

#include <algorithm>

namespace {

constexpr char kStoredForm[] = "yyyymmdd";

std::string piece(const std::string& text, std::size_t position, std::size_t count) {
    return text.substr(std::min(position, text.size()), count);
}

}  // namespace

std::string gfsDate_display(const std::string& stored, const std::string& convention) {
    if (util::trim(stored).empty()) {
        return "  ";
    }
    const std::string year = piece(stored, 0, 4);
    const std::string month = piece(stored, 4, 2);
    const std::string day = piece(stored, 6, 2);
    return convention == "E" ? day + "/" + month + "/" + year : month + "/" + day + "/" + year;
}

std::string gfsDate_stored(util::DateTime date) {
    return util::format(date, kStoredForm);
}

std::string gfsDate_stored(const std::string& text, util::DateOrder order, int currentYear) {
    return util::format(text, kStoredForm, order, currentYear);
}
