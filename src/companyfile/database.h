#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace companyfile {

class Database;

/// One prepared statement, used again and again. Bind, then step until it gives false or run().
class Statement {
public:
    /// Binds the values to the parameters from 1 on, after taking the statement back to its start.
    template <class... Values>
    Statement& bind(const Values&... values) {
        reset();
        int index = 0;
        (put(++index, values), ...);
        return *this;
    }
    /// Goes to the next row. @return false at the end. @throws CallError when the file fails.
    bool step();
    /// Carries out a statement that gives no rows.
    void run();
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] std::string text(int column) const;

private:
    friend class Database;
    Statement(Database& database, const char* sql);
    void reset();
    void put(int index, std::int64_t value);
    void put(int index, bool value) { put(index, static_cast<std::int64_t>(value)); }
    void put(int index, std::string_view value);
    void put(int index, const std::string& value) { put(index, std::string_view(value)); }

    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
    Database* database_;
};

/// The SQLite file under a company file.
class Database {
public:
    enum class Mode { create, open };
    /// @throws CallError as CompanyFile::create and open tell.
    Database(const std::string& path, Mode mode);

    Statement prepare(const char* sql) { return {*this, sql}; }
    void execute(const char* sql);
    /// As execute, for a way out that must not fail: a failure is passed over.
    void tryExecute(const char* sql) noexcept;
    /// Grows with every row that this connection writes.
    [[nodiscard]] std::int64_t changes() const;
    /// Grows whenever another connection has changed the file.
    std::int64_t foreignChanges();
    [[noreturn]] void fail() const;
    /// Fails because of what the file holds. @param what  a clause, as "entry 3 is of no kind".
    [[noreturn]] void damaged(const std::string& what) const;
    [[nodiscard]] sqlite3* handle() const { return handle_.get(); }

private:
    void lookForFile(Mode mode) const;
    void claim() const;
    void make();
    void fill();
    void probe();
    void lookForEnd();

    struct Closer {
        void operator()(sqlite3* database) const;
    };
    std::unique_ptr<sqlite3, Closer> handle_;
    std::string path_;
    std::unique_ptr<Statement> foreignChanges_;
};

/// Removes a company file and what stands beside it.
void removeFile(const std::string& path);

/// One unit of work: rolled back unless it was committed.
class Work {
public:
    /// Begins; a writer waits for another writer.
    Work(Database& database, bool writes);
    ~Work();
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    void commit();

private:
    Database& database_;
    bool open_ = true;
};

}  // namespace companyfile
