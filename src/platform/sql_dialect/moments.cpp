#include "platform/sql_dialect/moments.h"

#include <array>
#include <cstdio>
#include <vector>

namespace platform {

namespace {

constexpr int kSecondsOfHour = 3600;
constexpr int kSecondsOfMinute = 60;
constexpr util::CalendarDate kFirstDay{1900, 1, 1};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> pieces;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t start = text.find_first_not_of(" T", at);
        if (start == std::string_view::npos) {
            break;
        }
        at = std::min(text.find_first_of(" T", start), text.size());
        pieces.push_back(text.substr(start, at - start));
    }
    return pieces;
}

/// The numbers of "14:30:05"; empty when something else than numbers and separators is there.
std::vector<int> numbers(std::string_view text, std::string_view separators) {
    std::vector<int> found;
    bool open = false;
    for (const char c : text) {
        if (isDigit(c)) {
            if (!open) {
                found.push_back(0);
            }
            open = true;
            found.back() = found.back() > 99'999'999 ? found.back() : found.back() * 10 + (c - '0');
        } else if (open && separators.find(c) != std::string_view::npos) {
            open = false;
        } else {
            return {};
        }
    }
    return found;
}

std::optional<std::int32_t> dayFrom(std::string_view text) {
    std::vector<int> parts = numbers(text, "-/.");
    if (parts.size() == 1 && text.size() == 8) {
        parts = {parts[0] / 10000, parts[0] / 100 % 100, parts[0] % 100};
    } else if (parts.size() == 3 && parts[0] < 100) {
        parts = {parts[2], parts[0], parts[1]};
    }
    if (parts.size() != 3 || !util::isCalendarDate(parts[0], parts[1], parts[2])) {
        return std::nullopt;
    }
    return util::dayNumber({parts[0], parts[1], parts[2]});
}

std::optional<std::int32_t> secondsFrom(std::string_view text, std::string_view half) {
    const std::string_view whole = text.substr(0, text.find('.'));
    std::vector<int> parts = numbers(whole, ":");
    if (parts.size() < 2 || parts.size() > 3 || parts[0] > 23 || parts[1] > 59) {
        return std::nullopt;
    }
    parts.resize(3);
    const bool afternoon = half == "PM" || half == "pm";
    if (!half.empty() && parts[0] == 12) {
        parts[0] = 0;
    }
    const int hours = parts[0] + (afternoon && parts[0] < 12 ? 12 : 0);
    if (parts[2] > 59) {
        return std::nullopt;
    }
    return hours * kSecondsOfHour + parts[1] * kSecondsOfMinute + parts[2];
}

}  // namespace

std::optional<util::DateTime> momentFromText(std::string_view text) {
    util::DateTime moment{util::dayNumber(kFirstDay), 0};
    std::vector<std::string_view> pieces = words(text);
    std::size_t at = 0;
    if (at < pieces.size() && pieces[at].find(':') == std::string_view::npos) {
        const auto day = dayFrom(pieces[at++]);
        if (!day) {
            return std::nullopt;
        }
        moment.day = *day;
    }
    if (at < pieces.size()) {
        std::string_view time = pieces[at++];
        std::string_view half;
        const std::size_t letters = time.find_first_of("AaPp");
        if (letters != std::string_view::npos) {
            half = time.substr(letters);
            time = time.substr(0, letters);
        } else if (at < pieces.size()) {
            half = pieces[at++];
        }
        const bool isHalf =
            half.empty() || half == "AM" || half == "am" || half == "PM" || half == "pm";
        const auto seconds = secondsFrom(time, half);
        if (!seconds || !isHalf) {
            return std::nullopt;
        }
        moment.seconds = *seconds;
    }
    return at == pieces.size() ? std::optional(moment) : std::nullopt;
}

std::string momentText(util::DateTime moment, bool withTime) {
    const util::CalendarDate date = util::calendarDate(moment.day);
    std::array<char, 64> text{};
    const int seconds = moment.seconds;
    const int length =
        withTime ? std::snprintf(
                       text.data(),
                       text.size(),
                       "%04d-%02d-%02d %02d:%02d:%02d",
                       date.year,
                       date.month,
                       date.day,
                       seconds / kSecondsOfHour,
                       seconds / kSecondsOfMinute % kSecondsOfMinute,
                       seconds % kSecondsOfMinute
                   )
                 : std::snprintf(
                       text.data(), text.size(), "%04d-%02d-%02d", date.year, date.month, date.day
                   );
    return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace platform
