#include "qb/request_cycle.h"

#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "util/conversions.h"

namespace qb {

namespace {

bool goesOut(const std::string& text, When when) {
    switch (when) {
    case When::filled:
        return !text.empty();
    case When::trimmed:
        return !util::trim(text).empty();
    case When::aboveBlank:
        return util::aboveBlank(util::trim(text));
    default:
        return true;
    }
}

}  // namespace

std::optional<std::string> wireText(const std::string& text, When when, Form form) {
    if (!goesOut(text, when)) {
        return std::nullopt;
    }
    return form == Form::date ? wireDate(dateOf(text)) : util::rtrim(text);
}

std::optional<std::string> wireText(util::Money money, When when, Form form) {
    if (when == When::nonZero && money.isZero()) {
        return std::nullopt;
    }
    return form == Form::price ? wirePrice(money) : wireAmount(money);
}

std::optional<std::string> wireText(LegacyBool flag, When when, Form form) {
    static_cast<void>(when);
    static_cast<void>(form);
    return wireBoolean(flag != kNo);
}

std::optional<std::string> wireText(float number, When when, Form form) {
    static_cast<void>(form);
    if (when == When::nonZero && number == 0.0F) {
        return std::nullopt;
    }
    return wireNumber(number);
}

std::optional<std::string> wireText(util::DateTime date, When when, Form form) {
    static_cast<void>(when);
    static_cast<void>(form);
    return wireDate(date);
}

void prefixStatus(const char* literal, const std::string& key) {
    const bool hasLiteral = literal[0] != '\0';
    if (hasLiteral && !util::trim(gsQBStatusMessage).empty()) {
        gsQBStatusMessage = literal + key + " " + gsQBStatusMessage;
    }
}

void tellError(
    const char* literal, const std::string& key, std::int32_t number, const std::string& description
) {
    gnQBErrorNumber = number;
    const bool hasLiteral = literal[0] != '\0';
    if (hasLiteral) {
        gsQBStatusMessage = literal + key + " " + description;
    }
}

bool sendRequest(const char* name, const Filler& filler) {
    if (requestMsgSet == nullptr) {
        throw util::BasicError::of(91);
    }
    filler(requestMsgSet->append(name));
    return gfbRequests_do() != kNo && gfbResponse_get() != kNo;
}

LegacyBool
runCycle(const char* name, const Literals& literals, const std::string& key, const Filler& filler) {
    return handled(literals.inHandler, key, [&] {
        if (gfbRequestMsgSet_reset() == kNo) {
            return false;
        }
        const bool done = sendRequest(name, filler);
        prefixStatus(literals.afterRead, key);
        return done;
    });
}

void fillFilter(platform::QBElement& query, const Search& search, const std::string& value) {
    platform::QBElement& filter = query.at(search.filter);
    filter.at("MatchCriterion").setText(search.criterion);
    filter.at(search.value).setText(util::rtrim(value));
}

bool runSearch(
    const Search& search,
    const std::string& value,
    const char* literal,
    const std::string& key,
    ReturnList& found
) {
    if (gfbRequestMsgSet_reset() == kNo) {
        return false;
    }
    fillFilter(requestMsgSet->append(search.request), search, value);
    if (gfbRequests_do() == kNo) {
        // Kept: the send has told its error already, so neither its text nor its number is here.
        tellError(literal, key, 0, "");
        return false;
    }
    if (gfbResponse_get() == kNo || response->Type != search.type) {
        return false;
    }
    found.keep(response);
    gnQBReturnedCount = found.count();
    return gnQBReturnedCount > 0;
}

void takeText(const std::string& text, std::string& member) {
    member = text;
}

void takeText(const std::string& text, util::Money& member) {
    member = util::Money::fromDecimal(text);
}

void takeText(const std::string& text, std::int32_t& member) {
    member = util::toLong(util::val(text));
}

}  // namespace qb
