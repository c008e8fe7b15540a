#include "companyfile/values.h"

#include "companyfile/decimal.h"
#include "companyfile/text.h"

#include <algorithm>
#include <array>

namespace companyfile {

namespace {

using util::SchemaField;

std::size_t digitsAt(std::string_view text) {
    const auto end = text.find_first_not_of("0123456789");
    return end == std::string_view::npos ? text.size() : end;
}

/// Optional sign, up to `whole` digits, then nothing or a point with `least` to `most` digits.
bool isNumber(std::string_view text, std::size_t whole, std::size_t least, std::size_t most) {
    if (text.starts_with('-') || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const std::size_t before = digitsAt(text);
    if (before == 0 || before > whole) {
        return false;
    }
    text.remove_prefix(before);
    if (text.empty()) {
        return true;
    }
    const std::size_t behind = digitsAt(text.substr(1));
    return text.front() == '.' && behind + 1 == text.size() && behind >= least && behind <= most;
}

bool isAmount(std::string_view text) {
    return isNumber(text, 13, 2, 2);
}
bool isPrice(std::string_view text) {
    return isNumber(text, 10, 1, 5);
}
bool isInteger(std::string_view text) {
    return isNumber(text, 9, 0, 0) && text.find('.') == std::string_view::npos;
}
bool isBoolean(std::string_view text) {
    return text == "true" || text == "false" || text == "1" || text == "0";
}
bool isDateTime(std::string_view text) {
    return isStorableDate(text.substr(0, 10)) && (text.size() == 10 || text[10] == 'T');
}
bool isGuid(std::string_view text) {
    return text == "0" || (text.size() == 38 && text.front() == '{' && text.back() == '}');
}
bool isInterval(std::string_view text) {
    return text.starts_with("PT") || text.starts_with("-PT");
}

std::string asAmount(std::string_view text) {
    return amountText(amountFrom(text));
}
std::string asPrice(std::string_view text) {
    return Decimal::fromText(text).text(2);
}
std::string asQuantity(std::string_view text) {
    return Decimal::fromText(text).text();
}
std::string asBoolean(std::string_view text) {
    return text == "true" || text == "1" ? "true" : "false";
}

/// A value type of the wire: its test, the refusal, the form that is kept (null: as sent).
struct ValueType {
    std::string_view name;
    bool (*valid)(std::string_view);
    int code;
    std::string_view what;
    std::string (*kept)(std::string_view);
};
constexpr ValueType kValueTypes[] = {
    {"AMTTYPE", isAmount, 3040, "amount", asAmount},
    {"PRICETYPE", isPrice, 3045, "price", asPrice},
    {"PERCENTTYPE", isPrice, 3050, "percent", asQuantity},
    {"QUANTYPE", isPrice, 3060, "quantity", asQuantity},
    {"BOOLTYPE", isBoolean, 3010, "boolean value", asBoolean},
    {"DATETYPE", isStorableDate, 3020, "date value", nullptr},
    {"DATETIMETYPE", isDateTime, 3020, "date value", nullptr},
    {"GUIDTYPE", isGuid, 3065, "GUID", nullptr},
    {"INTTYPE", isInteger, 3085, "number", nullptr},
    {"TIMEINTERVALTYPE", isInterval, 3035, "time interval", nullptr},
};

std::string valueInField(std::string_view value, std::string_view field) {
    return quoted(value) + " in the field " + quoted(field);
}

void checkText(const SchemaField& field, Element& element) {
    if (field.type == "ENUM") {
        if (std::find(field.words.begin(), field.words.end(), element.text) == field.words.end()) {
            throw StatusError(
                3110,
                "The enumerated value " + valueInField(element.text, field.name) +
                    " is unknown or invalid for the qbXML version in use."
            );
        }
        return;
    }
    if (field.type == "STRTYPE") {
        element.text = westernOnly(element.text);
    }
    if (field.maxLength > 0 &&
        characterCount(element.text) > static_cast<std::size_t>(field.maxLength)) {
        throw StatusError(
            3070, "The string " + valueInField(element.text, field.name) + " is too long."
        );
    }
}

void checkValue(const SchemaField& field, Element& element) {
    for (const ValueType& type : kValueTypes) {
        if (type.name != field.type) {
            continue;
        }
        const std::string text(trimmed(element.text));
        if (!type.valid(text)) {
            const bool withoutStop = type.code == 3010 || type.code == 3020;
            throw StatusError(
                type.code,
                "There was an error when converting the " + std::string(type.what) + " " +
                    valueInField(text, field.name) + (withoutStop ? "" : ".")
            );
        }
        element.text = type.kept == nullptr ? text : type.kept(text);
        return;
    }
    checkText(field, element);
}

bool isEmpty(const Element& element) {
    return element.children.empty() && trimmed(element.text).empty();
}

class ValueCheck {
public:
    ValueCheck(const Request& request, bool keepEmpty) : request_(request), keepEmpty_(keepEmpty) {}

    void walk(Element& element, const std::vector<SchemaField>& fields, const std::string& path) {
        std::vector<Element> kept;
        kept.reserve(element.children.size());
        for (Element& child : element.children) {
            const SchemaField* field = util::schemaField(fields, child.name);
            if (isForeign(path + child.name) || field == nullptr) {
                if (!isEmpty(child) && warning_.code == 0) {
                    warning_ = {
                        530,
                        "The field " + quoted(child.name) +
                            " is not supported by this implementation."};
                }
                continue;
            }
            if (field->type == "AGGREGATE") {
                walk(child, field->fields, path + child.name + ".");
            } else if (!isEmpty(child)) {
                checkValue(*field, child);
            } else {
                child.text.clear();
            }
            if (keepEmpty_ || !isEmpty(child)) {
                kept.push_back(std::move(child));
            }
        }
        element.children = std::move(kept);
    }

    [[nodiscard]] const Status& warning() const { return warning_; }

private:
    bool isForeign(const std::string& path) const {
        const auto& foreign = request_.schema->foreign;
        return std::find(foreign.begin(), foreign.end(), path) != foreign.end();
    }

    const Request& request_;
    bool keepEmpty_;
    Status warning_;
};

}  // namespace

bool isIdForm(std::string_view id) {
    const auto hyphen = id.find('-');
    return id.size() <= 36 && hyphen != std::string_view::npos && hyphen > 0 &&
           hyphen + 1 < id.size() &&
           id.substr(0, hyphen).find_first_not_of("0123456789ABCDEFabcdef") ==
               std::string_view::npos &&
           digitsAt(id.substr(hyphen + 1)) == id.size() - hyphen - 1;
}

bool isStorableDate(std::string_view date) {
    if (date.size() != 10 || date[4] != '-' || date[7] != '-' || digitsAt(date) != 4 ||
        digitsAt(date.substr(5)) != 2 || digitsAt(date.substr(8)) != 2) {
        return false;
    }
    const int year = std::stoi(std::string(date.substr(0, 4)));
    const int month = std::stoi(std::string(date.substr(5, 2)));
    const int day = std::stoi(std::string(date.substr(8, 2)));
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12 || date < "1970-01-02" || date > "2037-12-31") {
        return false;
    }
    const bool leapDay = month == 2 && year % 4 == 0;  // no century without a leap day in the range
    return day >= 1 && day <= kDays.at(static_cast<std::size_t>(month) - 1) + (leapDay ? 1 : 0);
}

Status checkValues(Request& request, bool keepEmpty) {
    ValueCheck check(request, keepEmpty);
    check.walk(request.fields, request.schema->fields, "");
    return check.warning();
}

}  // namespace companyfile
