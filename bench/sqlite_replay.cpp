#include "sqlite_replay.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <sqlite3.h>

namespace {

/// A value that was bound to a place of the statement.
struct Bound {
    int place;
    std::variant<std::monostate, std::int64_t, double, std::string> value;
};

/// A step, and what was read behind it: the values by their types, or else a single number.
struct Step {
    bool readsTypes = false;
};

struct Reset {};
struct Clear {};

struct Call {
    sqlite3_stmt* statement;
    std::variant<Bound, Step, Reset, Clear> what;
};

struct Record {
    bool isOn = false;
    std::vector<Call> calls;
    std::int64_t rows = 0;

    template <class What>
    void keep(sqlite3_stmt* statement, What what) {
        if (isOn) {
            calls.push_back({statement, std::move(what)});
        }
    }
    void readsTypes(const sqlite3_stmt* statement) {
        if (isOn && !calls.empty() && calls.back().statement == statement) {
            if (auto* step = std::get_if<Step>(&calls.back().what)) {
                step->readsTypes = true;
            }
        }
    }
};
Record record;

void readByType(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
        break;
    case SQLITE_INTEGER:
        sqlite3_column_int64(statement, column);
        break;
    case SQLITE_FLOAT:
        sqlite3_column_double(statement, column);
        break;
    default:
        sqlite3_column_text(statement, column);
        sqlite3_column_bytes(statement, column);
    }
}

/// Makes a call again.
struct Again {
    sqlite3_stmt* statement;
    std::int64_t& rows;

    void operator()(const Bound& bound) const {
        if (const auto* whole = std::get_if<std::int64_t>(&bound.value)) {
            sqlite3_bind_int64(statement, bound.place, *whole);
        } else if (const auto* number = std::get_if<double>(&bound.value)) {
            sqlite3_bind_double(statement, bound.place, *number);
        } else if (const auto* text = std::get_if<std::string>(&bound.value)) {
            sqlite3_bind_text64(
                statement, bound.place, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8
            );
        } else {
            sqlite3_bind_null(statement, bound.place);
        }
    }
    void operator()(const Step& step) const {
        if (sqlite3_step(statement) != SQLITE_ROW) {
            return;
        }
        ++rows;
        if (!step.readsTypes) {
            sqlite3_column_int64(statement, 0);
            return;
        }
        const int count = sqlite3_column_count(statement);
        for (int column = 0; column < count; ++column) {
            readByType(statement, column);
        }
    }
    void operator()(const Reset& /*reset*/) const { sqlite3_reset(statement); }
    void operator()(const Clear& /*clear*/) const { sqlite3_clear_bindings(statement); }
};

}  // namespace

namespace bench {

void SqliteReplay::record(bool isOn) {
    if (isOn) {
        ::record = Record();
    }
    ::record.isOn = isOn;
}

std::chrono::nanoseconds SqliteReplay::run() {
    using Clock = std::chrono::steady_clock;
    std::int64_t rows = 0;
    const Clock::time_point start = Clock::now();
    for (const Call& call : ::record.calls) {
        std::visit(Again{call.statement, rows}, call.what);
    }
    const std::chrono::nanoseconds time = Clock::now() - start;
    if (rows != ::record.rows) {
        throw std::runtime_error("the calls on SQLite give other rows when they are made again");
    }
    return time;
}

}  // namespace bench

// The linker's names: __wrap_X is called in the place of X, which is __real_X. Listed in
// CMakeLists.txt.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {
decltype(sqlite3_step) __real_sqlite3_step;
int __wrap_sqlite3_step(sqlite3_stmt* statement) {
    record.keep(statement, Step());
    const int code = __real_sqlite3_step(statement);
    record.rows += record.isOn && code == SQLITE_ROW ? 1 : 0;
    return code;
}

decltype(sqlite3_column_type) __real_sqlite3_column_type;
int __wrap_sqlite3_column_type(sqlite3_stmt* statement, int column) {
    record.readsTypes(statement);
    return __real_sqlite3_column_type(statement, column);
}

decltype(sqlite3_reset) __real_sqlite3_reset;
int __wrap_sqlite3_reset(sqlite3_stmt* statement) {
    record.keep(statement, Reset());
    return __real_sqlite3_reset(statement);
}

decltype(sqlite3_clear_bindings) __real_sqlite3_clear_bindings;
int __wrap_sqlite3_clear_bindings(sqlite3_stmt* statement) {
    record.keep(statement, Clear());
    return __real_sqlite3_clear_bindings(statement);
}

decltype(sqlite3_bind_null) __real_sqlite3_bind_null;
int __wrap_sqlite3_bind_null(sqlite3_stmt* statement, int place) {
    record.keep(statement, Bound{place, {}});
    return __real_sqlite3_bind_null(statement, place);
}

decltype(sqlite3_bind_int64) __real_sqlite3_bind_int64;
int __wrap_sqlite3_bind_int64(sqlite3_stmt* statement, int place, sqlite3_int64 value) {
    record.keep(statement, Bound{place, std::int64_t{value}});
    return __real_sqlite3_bind_int64(statement, place, value);
}

decltype(sqlite3_bind_double) __real_sqlite3_bind_double;
int __wrap_sqlite3_bind_double(sqlite3_stmt* statement, int place, double value) {
    record.keep(statement, Bound{place, value});
    return __real_sqlite3_bind_double(statement, place, value);
}

decltype(sqlite3_bind_text64) __real_sqlite3_bind_text64;
int __wrap_sqlite3_bind_text64(
    sqlite3_stmt* statement,
    int place,
    const char* text,
    sqlite3_uint64 size,
    void (*destroy)(void*),
    unsigned char encoding
) {
    if (record.isOn) {
        record.keep(statement, Bound{place, std::string(text, size)});
    }
    return __real_sqlite3_bind_text64(statement, place, text, size, destroy, encoding);
}
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
