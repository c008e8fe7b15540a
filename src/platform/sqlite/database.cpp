#include "platform/sqlite/database.h"

#include "platform/sql_dialect/server_error.h"
#include "platform/sql_dialect/server_order.h"
#include "util/text_codec.h"

#include <algorithm>
#include <utility>

#include <sqlite3.h>

namespace platform {

namespace {

constexpr int kMillisecondsOfSecond = 1000;
constexpr std::size_t kMostKept = 64;

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80;
    });
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

Database::Prepared::node_type Database::take(const std::string& statement) const {
    auto kept = kept_.extract(statement);
    if (kept) {
        return kept;
    }
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v2(
        handle_, statement.data(), static_cast<int>(statement.size()), &prepared, nullptr
    );
    if (code != SQLITE_OK) {
        fail(code);
    }
    return kept_.extract(kept_.emplace(statement, prepared).first);
}

void Database::keep(Prepared::node_type statement) const {
    sqlite3_reset(statement.mapped());
    sqlite3_clear_bindings(statement.mapped());
    if (kept_.size() >= kMostKept) {
        forget();
    }
    const auto result = kept_.insert(std::move(statement));
    if (!result.inserted) {  // the same text was prepared twice at the same time
        sqlite3_finalize(result.node.mapped());
    }
}

void Database::forget() const {
    for (const auto& [text, statement] : kept_) {
        sqlite3_finalize(statement);
    }
    kept_.clear();
}

Query::Query(const Database& database, const std::string& statement)
    : database_(database),
      node_(database.take(statement)),
      statement_(node_.mapped()) {}

Query::~Query() {
    database_.keep(std::move(node_));
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
            const std::string utf8 = util::toUtf8(*text);
            code = sqlite3_bind_text64(
                statement_, place, utf8.data(), utf8.size(), SQLITE_TRANSIENT, SQLITE_UTF8
            );
        } else {
            code = sqlite3_bind_null(statement_, place);
        }
        if (code != SQLITE_OK) {
            database_.fail(code);
        }
    }
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
    rows.begin();
    const int count = sqlite3_column_count(statement_);
    for (int column = 0; column < count; ++column) {
        switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_NULL:
            rows.put(std::monostate{});
            break;
        case SQLITE_INTEGER:
            rows.put(number(column));
            break;
        case SQLITE_FLOAT:
            rows.put(sqlite3_column_double(statement_, column));
            break;
        default:
            const std::string_view utf8 = bytes(column);
            if (isAscii(utf8)) {
                rows.put(utf8);
            } else {
                rows.put(std::string_view(util::fromUtf8(utf8)));
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
