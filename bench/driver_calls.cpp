#include "time_shares.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlite3.h>

// The calls on a driver that a walk makes: those on the SQLite library, and those on the driver
// manager of a server with all behind it (driver, wire and server). The linker's names: __wrap_X is
// called in the place of X, which is __real_X. Listed in CMakeLists.txt.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming,readability-function-size)
#define BENCH_DRIVER_CALL(inside, result, name, parameters, arguments)                             \
    extern "C" result __real_##name parameters;                                                    \
    extern "C" result __wrap_##name parameters {                                                   \
        const inside here;                                                                         \
        return __real_##name arguments;                                                            \
    }

namespace {

/// The adapter in a call on a library whose calls are short, and this by nothing but two stores.
class InLibrary {
public:
    InLibrary() { bench::place.store(bench::Place::driver, std::memory_order_relaxed); }
    ~InLibrary() { bench::place.store(bench::Place::adapter, std::memory_order_relaxed); }
    InLibrary(const InLibrary&) = delete;
    InLibrary& operator=(const InLibrary&) = delete;
    InLibrary(InLibrary&&) = delete;
    InLibrary& operator=(InLibrary&&) = delete;
};

using InServer = bench::Inside<bench::Place::driver>;

}  // namespace

#define BENCH_SQLITE_CALL(result, name)                                                            \
    BENCH_DRIVER_CALL(InLibrary, result, sqlite3_##name, (sqlite3_stmt * statement), (statement))
BENCH_SQLITE_CALL(int, step)
BENCH_SQLITE_CALL(int, reset)
BENCH_SQLITE_CALL(int, clear_bindings)
BENCH_SQLITE_CALL(int, column_count)

#define BENCH_SQLITE_READ(result, name)                                                            \
    BENCH_DRIVER_CALL(                                                                             \
        InLibrary,                                                                                 \
        result,                                                                                    \
        sqlite3_column_##name,                                                                     \
        (sqlite3_stmt * statement, int column),                                                    \
        (statement, column)                                                                        \
    )
BENCH_SQLITE_READ(int, type)
BENCH_SQLITE_READ(sqlite3_int64, int64)
BENCH_SQLITE_READ(double, double)
BENCH_SQLITE_READ(const unsigned char*, text)
BENCH_SQLITE_READ(int, bytes)

BENCH_DRIVER_CALL(
    InLibrary, int, sqlite3_bind_null, (sqlite3_stmt * statement, int place), (statement, place)
)
BENCH_DRIVER_CALL(
    InLibrary,
    int,
    sqlite3_bind_int64,
    (sqlite3_stmt * statement, int place, sqlite3_int64 value),
    (statement, place, value)
)
BENCH_DRIVER_CALL(
    InLibrary,
    int,
    sqlite3_bind_double,
    (sqlite3_stmt * statement, int place, double value),
    (statement, place, value)
)
BENCH_DRIVER_CALL(
    InLibrary,
    int,
    sqlite3_bind_text64,
    (sqlite3_stmt * statement,
     int place,
     const char* text,
     sqlite3_uint64 size,
     void (*destroy)(void*),
     unsigned char encoding),
    (statement, place, text, size, destroy, encoding)
)

BENCH_DRIVER_CALL(
    InServer,
    SQLRETURN,
    SQLExecDirectW,
    (SQLHSTMT statement, SQLWCHAR* text, SQLINTEGER size),
    (statement, text, size)
)
BENCH_DRIVER_CALL(InServer, SQLRETURN, SQLFetch, (SQLHSTMT statement), (statement))
BENCH_DRIVER_CALL(InServer, SQLRETURN, SQLMoreResults, (SQLHSTMT statement), (statement))
BENCH_DRIVER_CALL(
    InServer,
    SQLRETURN,
    SQLGetData,
    (SQLHSTMT statement,
     SQLUSMALLINT column,
     SQLSMALLINT type,
     SQLPOINTER value,
     SQLLEN size,
     SQLLEN* indicator),
    (statement, column, type, value, size, indicator)
)
BENCH_DRIVER_CALL(
    InServer,
    SQLRETURN,
    SQLNumResultCols,
    (SQLHSTMT statement, SQLSMALLINT* count),
    (statement, count)
)
BENCH_DRIVER_CALL(
    InServer,
    SQLRETURN,
    SQLDescribeColW,
    (SQLHSTMT statement,
     SQLUSMALLINT column,
     SQLWCHAR* name,
     SQLSMALLINT size,
     SQLSMALLINT* length,
     SQLSMALLINT* type,
     SQLULEN* width,
     SQLSMALLINT* digits,
     SQLSMALLINT* nullable),
    (statement, column, name, size, length, type, width, digits, nullable)
)
BENCH_DRIVER_CALL(
    InServer,
    SQLRETURN,
    SQLAllocHandle,
    (SQLSMALLINT type, SQLHANDLE input, SQLHANDLE* output),
    (type, input, output)
)
BENCH_DRIVER_CALL(
    InServer, SQLRETURN, SQLFreeHandle, (SQLSMALLINT type, SQLHANDLE handle), (type, handle)
)
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming,readability-function-size)
