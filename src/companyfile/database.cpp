#include "companyfile/database.h"

#include "companyfile/call_error.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace companyfile {

namespace {

constexpr int kApplicationId = 0x51425746;
constexpr int kFormat = 1;
constexpr int kBusyMs = 5000;
constexpr int kProbeBusyMs = 300;

/// Amounts are whole cents, quantities and costs hundred-thousandths; `fields` is what the wire
/// said, as XML.
constexpr const char* kTables = R"(
CREATE TABLE meta (key TEXT PRIMARY KEY, value INTEGER NOT NULL) WITHOUT ROWID;
CREATE TABLE entry (
  id INTEGER PRIMARY KEY, kind TEXT NOT NULL, list_id TEXT NOT NULL UNIQUE, name TEXT NOT NULL,
  parent INTEGER NOT NULL, active INTEGER NOT NULL, created INTEGER NOT NULL, modified INTEGER NOT NULL,
  edit INTEGER NOT NULL, balance INTEGER NOT NULL, quantity INTEGER NOT NULL, average_cost INTEGER NOT NULL,
  special TEXT NOT NULL, fields TEXT NOT NULL);
CREATE TABLE txn (
  id INTEGER PRIMARY KEY, type TEXT NOT NULL, txn_id TEXT NOT NULL UNIQUE, date TEXT NOT NULL, ref TEXT NOT NULL,
  name INTEGER NOT NULL, total INTEGER NOT NULL, tax INTEGER NOT NULL, created INTEGER NOT NULL,
  modified INTEGER NOT NULL, edit INTEGER NOT NULL, fields TEXT NOT NULL);
CREATE TABLE line (
  txn INTEGER NOT NULL, position INTEGER NOT NULL, kind TEXT NOT NULL, line_id TEXT NOT NULL, item INTEGER NOT NULL,
  amount INTEGER NOT NULL, stock INTEGER NOT NULL, fields TEXT NOT NULL, PRIMARY KEY (txn, position)) WITHOUT ROWID;
CREATE TABLE posting (
  txn INTEGER NOT NULL, position INTEGER NOT NULL, account INTEGER NOT NULL, amount INTEGER NOT NULL,
  name INTEGER NOT NULL, PRIMARY KEY (txn, position)) WITHOUT ROWID;
CREATE TABLE applied (
  payment INTEGER NOT NULL, target INTEGER NOT NULL, amount INTEGER NOT NULL, PRIMARY KEY (payment, target)) WITHOUT ROWID;
CREATE INDEX txn_name ON txn (name);
CREATE INDEX applied_target ON applied (target);
INSERT INTO meta VALUES ('clock', 1420459200), ('entries', 0), ('transactions', 0), ('lines', 0);
)";

/// Bytes of a file; 0 when it is not there.
std::int64_t sizeOf(const std::string& path) {
    std::error_code failure;
    const auto size = std::filesystem::file_size(path, failure);
    return failure ? 0 : static_cast<std::int64_t>(size);
}

std::int64_t pragma(Database& database, const char* name) {
    Statement statement = database.prepare(name);
    return statement.step() ? statement.integer(0) : 0;
}

}  // namespace

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Statement::Statement(Database& database, const char* sql) : database_(&database) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(
            database.handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr
        ) != SQLITE_OK) {
        database.fail();
    }
    handle_.reset(statement);
}

void Statement::reset() {
    sqlite3_reset(handle_.get());
}

void Statement::put(int index, std::int64_t value) {
    sqlite3_bind_int64(handle_.get(), index, value);
}

void Statement::put(int index, std::string_view value) {
    sqlite3_bind_text(
        handle_.get(), index, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT
    );
}

bool Statement::step() {
    const int result = sqlite3_step(handle_.get());
    if (result == SQLITE_ROW) {
        return true;
    }
    if (result != SQLITE_DONE) {
        sqlite3_reset(handle_.get());
        database_->fail();
    }
    sqlite3_reset(handle_.get());
    return false;
}

void Statement::run() {
    while (step()) {}
}

std::int64_t Statement::integer(int column) const {
    return sqlite3_column_int64(handle_.get(), column);
}

std::string Statement::text(int column) const {
    const auto* bytes = sqlite3_column_text(handle_.get(), column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column));
    return bytes == nullptr ? std::string()
                            : std::string(reinterpret_cast<const char*>(bytes), size);
}

void Database::Closer::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

Database::Database(const std::string& path, Mode mode) : path_(path) {
    lookForFile(mode);
    if (mode == Mode::create) {
        claim();
    }
    const bool hasLog = sizeOf(path + "-wal") > 0;
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    handle_.reset(database);
    if (result != SQLITE_OK) {
        if (mode == Mode::create) {
            removeFile(path);
        }
        throw CallError(hresult::kCannotOpen, "The company file " + path + " could not be opened.");
    }
    sqlite3_busy_timeout(handle(), kProbeBusyMs);
    if (mode == Mode::create) {
        make();
    } else {
        probe();
        if (!hasLog) {
            lookForEnd();
        }
    }
    execute("PRAGMA synchronous = NORMAL");
    execute("PRAGMA wal_autocheckpoint = 8000");  // pages; each checkpoint waits for the disk
    sqlite3_busy_timeout(handle(), kBusyMs);
    foreignChanges_ = std::make_unique<Statement>(prepare("PRAGMA data_version"));
}

void Database::lookForFile(Mode mode) const {
    std::error_code error;
    const auto type = std::filesystem::status(path_, error).type();
    if (type == std::filesystem::file_type::none) {
        throw CallError(
            hresult::kCannotOpen,
            "The company file " + path_ + " could not be opened: " + error.message() + "."
        );
    }
    const bool exists = type != std::filesystem::file_type::not_found;
    if (exists == (mode == Mode::create)) {
        throw CallError(
            hresult::kCannotOpen,
            exists ? "The company file " + path_ + " exists already."
                   : "The company file " + path_ + " could not be found."
        );
    }
    if (exists && type != std::filesystem::file_type::regular) {
        throw CallError(hresult::kNotUsable, path_ + " is not a company file.");
    }
}

/// Makes the file, empty, unless somebody else has made it meanwhile. The books are nobody else's;
/// the files beside this one take over its rights.
void Database::claim() const {
    constexpr mode_t kRights = S_IRUSR | S_IWUSR | S_IRGRP;
    const int file = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kRights);
    if (file < 0) {
        throw CallError(
            hresult::kCannotOpen,
            "The company file " + path_ +
                " could not be made: " + std::generic_category().message(errno) + "."
        );
    }
    ::close(file);
}

/// Fills a new file, or leaves none behind.
void Database::make() {
    try {
        fill();
    } catch (const CallError&) {
        handle_.reset();
        removeFile(path_);
        throw;
    }
}

void Database::fill() {
    execute("PRAGMA journal_mode = WAL");
    execute("BEGIN IMMEDIATE");
    execute(kTables);
    execute(("PRAGMA user_version = " + std::to_string(kFormat)).c_str());
    execute(("PRAGMA application_id = " + std::to_string(kApplicationId)).c_str());
    execute("COMMIT");
}

void Database::probe() {
    if (pragma(*this, "PRAGMA application_id") != kApplicationId) {
        throw CallError(hresult::kNotUsable, path_ + " is not a company file.");
    }
    if (pragma(*this, "PRAGMA user_version") > kFormat) {
        throw CallError(
            hresult::kNotUsable,
            "The company file " + path_ + " was made by a newer version of this program."
        );
    }
    execute("BEGIN IMMEDIATE");  // fails when another program holds the file
    execute("ROLLBACK");
}

/// A file that was cut within its last page opens like a whole one. While there is a log, pages may
/// still be there only.
void Database::lookForEnd() {
    if (sizeOf(path_) < pragma(*this, "PRAGMA page_count") * pragma(*this, "PRAGMA page_size")) {
        damaged("its end is missing");
    }
}

void Database::execute(const char* sql) {
    if (sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        fail();
    }
}

void Database::tryExecute(const char* sql) noexcept {
    sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr);
}

std::int64_t Database::changes() const {
    return sqlite3_total_changes(handle());
}

std::int64_t Database::foreignChanges() {
    const bool row = foreignChanges_->bind().step();
    const std::int64_t value = row ? foreignChanges_->integer(0) : 0;
    foreignChanges_->bind();
    return value;
}

void Database::fail() const {
    const int code = sqlite3_errcode(handle()) & 0xFF;
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED) {
        throw CallError(
            hresult::kFileInUse, "The company file " + path_ + " is in use by another program."
        );
    }
    if (code == SQLITE_NOTADB) {
        throw CallError(hresult::kNotUsable, path_ + " is not a company file.");
    }
    if (code == SQLITE_CORRUPT || code == SQLITE_ERROR) {
        damaged(sqlite3_errmsg(handle()));
    }
    throw CallError(
        hresult::kCannotOpen,
        "The company file " + path_ + " cannot be used: " + sqlite3_errmsg(handle()) + "."
    );
}

void Database::damaged(const std::string& what) const {
    throw CallError(
        hresult::kNotUsable, "The company file " + path_ + " is damaged: " + what + "."
    );
}

void removeFile(const std::string& path) {
    std::error_code ignored;
    for (const char* suffix : {"", "-wal", "-shm"}) {
        std::filesystem::remove(path + suffix, ignored);
    }
}

Work::Work(Database& database, bool writes) : database_(database) {
    database_.execute(writes ? "BEGIN IMMEDIATE" : "BEGIN");
}

Work::~Work() {
    if (open_) {
        database_.tryExecute("ROLLBACK");
    }
}

void Work::commit() {
    database_.execute("COMMIT");
    open_ = false;
}

}  // namespace companyfile
