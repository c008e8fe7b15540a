#include "platform/sqlite/database.h"

#include "platform/sql_dialect/server_error.h"
#include "platform/sql_dialect/server_order.h"
#include "util/text_codec.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <sqlite3.h>

namespace platform {

namespace {

constexpr int kMillisecondsOfSecond = 1000;
constexpr std::size_t kMostKept = 64;

bool isAscii(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    const char* at = text.data();
    std::size_t left = text.size();
    for (; left >= sizeof kHighBits; left -= sizeof kHighBits, at += sizeof kHighBits) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, at, sizeof bytes);
        if ((bytes & kHighBits) != 0) {
            return false;
        }
    }
    return std::none_of(at, at + left, [](char c) { return (c & 0x80) != 0; });
}

int compareTexts(void*, int leftSize, const void* left, int rightSize, const void* right) {
    const std::string_view a(static_cast<const char*>(left), static_cast<std::size_t>(leftSize));
    const std::string_view b(static_cast<const char*>(right), static_cast<std::size_t>(rightSize));
    if (isAscii(a) && isAscii(b)) {
        return compareServerOrder(a, b);
    }
    return compareServerOrder(util::fromUtf8(a), util::fromUtf8(b));
}

struct FailureRow {
    int code;  ///< primary result code
    std::int32_t number;
};

constexpr FailureRow kFailures[] = {
    {SQLITE_BUSY, errorLockTimeout},
    {SQLITE_LOCKED, errorLockTimeout},
    {SQLITE_FULL, errorCatalogFull},
    {SQLITE_READONLY, errorReadOnly},
    {SQLITE_NOTADB, errorNoCatalogFile},
    {SQLITE_CORRUPT, errorCatalogDamaged},
    {SQLITE_IOERR, errorSourceUnreadable},
    {SQLITE_CANTOPEN, errorFileOpen},
};

/// What the message's first place names: the file or the catalog, and else the cause.
std::string subjectOf(std::int32_t number, const std::string& file, const std::string& catalog) {
    if (number == errorNoCatalogFile || number == errorFileOpen) {
        return file;
    }
    return number == errorCatalogFull || number == errorReadOnly ? catalog : std::string();
}

}  // namespace

Database::Database(const std::string& file, std::string catalog, int timeoutSeconds, Mode mode)
    : file_(file),
      catalog_(std::move(catalog)) {
    const int flags = SQLITE_OPEN_READWRITE | (mode == Mode::create ? SQLITE_OPEN_CREATE : 0);
    const int code = sqlite3_open_v2(file.c_str(), &handle_, flags, nullptr);
    try {
        if (code != SQLITE_OK) {
            fail(code);
        }
        sqlite3_extended_result_codes(handle_, 1);
        sqlite3_busy_timeout(handle_, timeoutSeconds * kMillisecondsOfSecond);
        sqlite3_create_collation(handle_, "SERVER", SQLITE_UTF8, nullptr, compareTexts);
        // Up to 64 MiB: rows lie in the order in which they came, so that a walk in key order comes
        // back to each page.
        run("PRAGMA cache_size=-65536");
        run("PRAGMA schema_version");  // tells whether the file is a catalog at all
    } catch (const PlatformError&) {
        forget();
        sqlite3_close_v2(handle_);
        throw;
    }
    // Readers and writers of other programs do not wait for each other; a catalog that cannot be
    // written stays as it is.
    ignoringErrors([this] { run("PRAGMA journal_mode=WAL"); });
}

Database::~Database() {
    forget();
    sqlite3_close_v2(handle_);
}

void Database::run(const std::string& statement, const std::vector<Stored>& values) {
    Query query(*this, statement);
    query.bind(values);
    while (query.step()) {}
}

std::int64_t Database::changes() const {
    return sqlite3_changes64(handle_);
}

bool Database::inTransaction() const {
    return sqlite3_get_autocommit(handle_) == 0;
}

void Database::fail(int code) const {
    const std::string cause = util::fromUtf8(sqlite3_errmsg(handle_));
    const int extended = sqlite3_extended_errcode(handle_);
    if (extended == SQLITE_CONSTRAINT_UNIQUE || extended == SQLITE_CONSTRAINT_PRIMARYKEY) {
        throw PlatformError(errorDuplicateKey, cause);  // the caller knows the index
    }
    const int primary = code & 0xFF;
    for (const auto& row : kFailures) {
        if (row.code == primary) {
            const std::string subject = subjectOf(row.number, file_, catalog_);
            if (subject.empty()) {
                throw serverError(row.number, {cause});
            }
            throw serverError(row.number, {subject, cause});
        }
    }
    throw serverError(errorUnspecified, {cause});
}

Database::Prepared Database::take(const std::string& text, std::int64_t number) const {
    const auto kept = std::find_if(kept_.rbegin(), kept_.rend(), [&](const Prepared& each) {
        return each.number == number && (number != 0 || each.text == text);
    });
    if (kept != kept_.rend()) {
        std::swap(*kept, kept_.back());
        Prepared taken = std::move(kept_.back());
        kept_.pop_back();
        return taken;
    }
    Prepared fresh{number, text};
    const int size = static_cast<int>(text.size());
    const int code = sqlite3_prepare_v2(handle_, text.data(), size, &fresh.statement, nullptr);
    if (code != SQLITE_OK) {
        fail(code);
    }
    return fresh;
}

void Database::keep(Prepared prepared) const {
    sqlite3_reset(prepared.statement);
    sqlite3_clear_bindings(prepared.statement);
    if (kept_.size() >= kMostKept) {
        forget();
    }
    kept_.push_back(std::move(prepared));
}

void Database::forget() const {
    for (const Prepared& prepared : kept_) {
        sqlite3_finalize(prepared.statement);
    }
    kept_.clear();
}

Query::Query(const Database& database, const std::string& statement, std::int64_t number)
    : database_(database),
      prepared_(database.take(statement, number)),
      statement_(prepared_.statement) {}

Query::~Query() {
    database_.keep(std::move(prepared_));
}

void Query::bind(const std::vector<Stored>& values) {
    int place = 0;
    for (const auto& value : values) {
        ++place;
        int code = SQLITE_OK;
        if (const auto* whole = std::get_if<std::int64_t>(&value)) {
            code = sqlite3_bind_int64(statement_, place, *whole);
        } else if (const auto* number = std::get_if<double>(&value)) {
            code = sqlite3_bind_double(statement_, place, *number);
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            code = isAscii(*text) ? bindText(place, *text) : bindText(place, util::toUtf8(*text));
        } else {
            code = sqlite3_bind_null(statement_, place);
        }
        if (code != SQLITE_OK) {
            database_.fail(code);
        }
    }
}

int Query::bindText(int place, std::string_view utf8) {
    return sqlite3_bind_text64(
        statement_, place, utf8.data(), utf8.size(), SQLITE_TRANSIENT, SQLITE_UTF8
    );
}

bool Query::step() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        database_.fail(code);
    }
    return code == SQLITE_ROW;
}

void Query::reset() {
    sqlite3_reset(statement_);
}

Stored Query::value(int column) const {
    switch (sqlite3_column_type(statement_, column)) {
    case SQLITE_NULL:
        return std::monostate{};
    case SQLITE_INTEGER:
        return static_cast<std::int64_t>(sqlite3_column_int64(statement_, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement_, column);
    default:
        return text(column);
    }
}

void Query::packRow(PackedRows& rows) const {
    RowPacker put = rows.add();
    const int count = sqlite3_column_count(statement_);
    for (int column = 0; column < count; ++column) {
        switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_NULL:
            put(std::monostate{});
            break;
        case SQLITE_INTEGER:
            put(number(column));
            break;
        case SQLITE_FLOAT:
            put(sqlite3_column_double(statement_, column));
            break;
        default:
            const std::string_view utf8 = bytes(column);
            if (isAscii(utf8)) {
                put(utf8);
            } else {
                put(std::string_view(util::fromUtf8(utf8)));
            }
        }
    }
}

std::string_view Query::bytes(int column) const {
    const auto* text = sqlite3_column_text(statement_, column);
    if (text == nullptr) {
        return {};
    }
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
    return {reinterpret_cast<const char*>(text), size};
}

std::string Query::text(int column) const {
    return util::fromUtf8(bytes(column));
}

std::int64_t Query::number(int column) const {
    return sqlite3_column_int64(statement_, column);
}

}  // namespace platform
