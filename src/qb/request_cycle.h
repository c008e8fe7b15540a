#pragma once

#include "platform/ports/quickbooks_session.h"
#include "qb/return_list.h"
#include "util/basic_error.h"
#include "util/date_time.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>

/// The mechanism of the request classes: tables of fields, and the cycle that carries a table out.
namespace qb {

/// When a field is sent.
enum class When : std::uint8_t {
    always,
    filled,      ///< the text is not empty
    trimmed,     ///< the text has more than blanks
    aboveBlank,  ///< the trimmed text is greater than a blank, byte by byte
    nonZero,     ///< the number is not 0
};

/// How a value is written where its type leaves a choice: money as amount (plain) or price, a text
/// as it stands or as the date that it is.
enum class Form : std::uint8_t { plain, price, date };

/// Where a field's value comes from: a member, a computed text, or a fixed text.
template <class Record>
using FieldSource = std::variant<
    std::string Record::*,
    util::Money Record::*,
    LegacyBool Record::*,
    float Record::*,
    util::DateTime Record::*,
    std::string (*)(const Record&),
    const char*>;

/// A row of a request's table: element path ("BillAddress/City"), value, condition, form.
template <class Record>
struct Field {
    const char* path;
    FieldSource<Record> source;
    When when;
    Form form;
};

/// A row that sends a member.
template <class Record, class Value>
constexpr Field<Record>
send(const char* path, Value Record::*member, When when = When::always, Form form = Form::plain) {
    return {path, member, when, form};
}
/// A row that sends a computed text.
template <class Record>
constexpr Field<Record>
send(const char* path, std::string (*text)(const Record&), When when = When::always) {
    return {path, text, when, Form::plain};
}
/// A row that always sends the same text.
template <class Record>
constexpr Field<Record> fixed(const char* path, const char* text) {
    return {path, text, When::always, Form::plain};
}

/// A request (or line element) with the table of its fields. The wire's order is the session's
/// business.
template <class Record, std::size_t Count>
struct Request {
    const char* name;
    std::array<Field<Record>, Count> fields;
};

template <class Record, class... More>
constexpr auto request(const char* name, Field<Record> first, More... more) {
    return Request<Record, 1 + sizeof...(More)>{name, {first, more...}};
}

/// The text that goes out for a value; nothing when the condition leaves it out. Texts lose blanks
/// at their end. @throws BasicError 13 for a text that should be a date and is none.
std::optional<std::string> wireText(const std::string& text, When when, Form form);
std::optional<std::string> wireText(util::Money money, When when, Form form);
std::optional<std::string> wireText(LegacyBool flag, When when, Form form);
std::optional<std::string> wireText(float number, When when, Form form);
std::optional<std::string> wireText(util::DateTime date, When when, Form form);

template <class Record>
std::optional<std::string> wireText(const Record& record, const Field<Record>& field) {
    return std::visit(
        [&](const auto& source) {
            using Source = std::decay_t<decltype(source)>;
            if constexpr (std::is_member_pointer_v<Source>) {
                return wireText(record.*source, field.when, field.form);
            } else if constexpr (std::is_same_v<Source, const char*>) {
                return wireText(std::string(source), field.when, field.form);
            } else {
                return wireText(source(record), field.when, field.form);
            }
        },
        field.source
    );
}

/// Runs one step of a filling; a failure ends the filling.
struct Unguarded {
    template <class Step>
    void operator()(Step&& step) const {
        step();
    }
};

/// Sets the elements of `table` in `element`; every field is one step of `guard`.
template <class Record, std::size_t Count, class Guard = Unguarded>
void fill(
    platform::QBElement& element,
    const Record& record,
    const Request<Record, Count>& table,
    const Guard& guard = {}
) {
    for (const auto& field : table.fields) {
        guard([&] {
            if (const auto text = wireText(record, field)) {
                element.at(field.path).setText(*text);
            }
        });
    }
}

/// Appends a line element for each line from index 1 that `goesOut`.
template <class Line, std::size_t Count, class Lines, class Predicate, class Guard = Unguarded>
void appendLines(
    platform::QBElement& body,
    const Request<Line, Count>& table,
    const Lines& lines,
    const Predicate& goesOut,
    const Guard& guard = {}
) {
    for (std::size_t index = 1; index < lines.size(); ++index) {
        if (goesOut(lines[index])) {
            fill(body.append(table.name), lines[index], table, guard);
        }
    }
}

/// Every line goes out.
template <class Line>
bool everyLine(const Line& line) {
    static_cast<void>(line);
    return true;
}

/// Calls `body`; an error of the language or of the platform goes to `handler(number,
/// description)`.
template <class Body, class Handler>
void onLanguageError(const Body& body, const Handler& handler) {
    try {
        body();
    } catch (const util::BasicError& error) {
        handler(std::int32_t{error.number()}, std::string(error.what()));
    } catch (const platform::PlatformError& error) {
        handler(error.number(), error.description());
    }
}

/// Literals in front of a method's failure texts; an empty one leaves the text as it is.
struct Literals {
    const char* afterRead;
    const char* inHandler;

    Literals(const char* both) : afterRead(both), inHandler(both) {}  // NOLINT: mostly one literal
    Literals(const char* read, const char* handler) : afterRead(read), inHandler(handler) {}
};

/// Puts the literal and the key in front of a status text that is not blank.
void prefixStatus(const char* literal, const std::string& key);
/// Makes an error the status: literal, key, a blank, description; and its number.
void tellError(
    const char* literal, const std::string& key, std::int32_t number, const std::string& description
);

/// Runs `body`, which gives a bool; an error is told by tellError and gives kNo.
template <class Body>
LegacyBool handled(const char* literal, const std::string& key, const Body& body) {
    LegacyBool result = kNo;
    onLanguageError(
        [&] { result = legacyBool(body()); },
        [&](std::int32_t number, const std::string& description) {
            tellError(literal, key, number, description);
        }
    );
    return result;
}

using Filler = std::function<void(platform::QBElement&)>;

/// Fills the body of a new request, sends the set and reads the first answer. The set is not reset.
/// @return true when it was sent and its status is 0.
bool sendRequest(const char* name, const Filler& filler);

/// The cycle of an add, a change or a deletion: reset, append, fill, send, read, failure text.
LegacyBool
runCycle(const char* name, const Literals& literals, const std::string& key, const Filler& filler);
template <class Record, std::size_t Count, class... More>
LegacyBool runCycle(
    const Request<Record, Count>& table,
    const Record& record,
    const Literals& literals,
    const std::string& key,
    const More&... more
) {
    return runCycle(table.name, literals, key, [&](platform::QBElement& body) {
        fill(body, record, table);
        (fill(body, record, more), ...);
    });
}

/// A query by a filter on one text.
struct Search {
    const char* request;
    const char* filter;     ///< "NameFilter", "RefNumberFilter"
    const char* criterion;  ///< "StartsWith", "Contains"
    const char* value;      ///< "Name", "RefNumber"
    platform::ResponseType type;
};

constexpr Search nameSearch(const char* request, platform::ResponseType type) {
    return {request, "NameFilter", "StartsWith", "Name", type};
}
constexpr Search refNumberSearch(const char* request, platform::ResponseType type) {
    return {request, "RefNumberFilter", "Contains", "RefNumber", type};
}

/// Sets the filter of a query.
void fillFilter(platform::QBElement& query, const Search& search, const std::string& value);

/// The cycle of a search. A failed send leaves literal, `key` and a blank as status text.
/// @return true when elements were found; they are in `found`, their count in `gnQBReturnedCount`.
/// @throws BasicError, PlatformError to the caller's handler.
bool runSearch(
    const Search& search,
    const std::string& value,
    const char* literal,
    const std::string& key,
    ReturnList& found
);

/// A row of a table that reads an answer: element path and the member that takes its text.
template <class Record>
struct Take {
    const char* path;
    std::variant<std::string Record::*, util::Money Record::*, std::int32_t Record::*> member;
};

void takeText(const std::string& text, std::string& member);
void takeText(const std::string& text, util::Money& member);
void takeText(const std::string& text, std::int32_t& member);

/// What an element that the answer lacks does to its member.
enum class Absent : std::uint8_t { keeps, empties };

/// Reads the elements of `table` into the members.
template <class Record, std::size_t Count>
void read(
    const platform::QBElement& element,
    Record& record,
    const Take<Record> (&table)[Count],  // NOLINT(modernize-avoid-c-arrays)
    Absent absent = Absent::keeps
) {
    for (const auto& row : table) {
        if (absent == Absent::empties || element.has(row.path)) {
            std::visit(
                [&](auto member) { takeText(element.find(row.path).text(), record.*member); },
                row.member
            );
        }
    }
}

}  // namespace qb
