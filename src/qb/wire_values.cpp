#include "qb/wire_values.h"

#include "db/nuvDBSM_Common.h"
#include "platform/ports/platform.h"
#include "util/basic_error.h"
#include "util/qbxml_schema.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace qb {

namespace {

std::string withoutZerosAtEnd(std::string text) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

/// Year that a date text without one means.
int currentYear() {
    const platform::ClockPort* clock = platform::current().clock;
    return clock == nullptr ? 1900 : util::calendarDate(clock->now().day).year;
}

const std::vector<std::string>& wordsOf(std::string_view request, std::string_view field) {
    const util::SchemaRequest* schema = util::schemaRequest(request);
    const util::SchemaField* found =
        schema == nullptr ? nullptr : util::schemaField(schema->fields, field);
    if (found == nullptr) {
        throw util::BasicError::of(9);
    }
    return found->words;
}

}  // namespace

util::DateOrder dateOrder() {
    return gCommon.USEurope.view() == "E" ? util::DateOrder::dayFirst : util::DateOrder::monthFirst;
}

util::DateTime dateOf(std::string_view text) {
    const auto date = util::dateFromText(text, dateOrder(), currentYear());
    if (!date) {
        throw util::BasicError::of(13);
    }
    return *date;
}

std::string wireDate(util::DateTime date) {
    const util::CalendarDate parts = util::calendarDate(date.day);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", parts.year, parts.month, parts.day);
    return text.data();
}

std::string wireAmount(util::Money amount) {
    return amount.rounded(2).text(2);
}

std::string wirePrice(util::Money price) {
    return withoutZerosAtEnd(price.text(4));
}

std::string wireNumber(double value) {
    constexpr long double kScale = 100000.0L;
    const long double rounded = std::round(static_cast<long double>(value) * kScale) / kScale;
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), "%.5Lf", rounded);
    return withoutZerosAtEnd(text.data());
}

std::string wireBoolean(bool value) {
    return value ? "true" : "false";
}

std::string wireWord(std::string_view request, std::string_view field, std::string_view number) {
    const std::int32_t index = util::toLong(number);
    const auto& words = wordsOf(request, field);
    if (index < 0 || static_cast<std::size_t>(index) >= words.size()) {
        throw util::BasicError::of(9);
    }
    return words[static_cast<std::size_t>(index)];
}

}  // namespace qb
