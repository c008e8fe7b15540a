#pragma once

#include "platform/ports/platform_error.h"
#include "util/value.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// Numbers of provider errors that the link tells apart.
inline constexpr std::int32_t kRowChangedError = -2147217864;
inline constexpr std::int32_t kNoSuchFieldError = 3265;
inline constexpr std::int32_t kNoCurrentRowError = 3021;

/// What a field of a record holds: characters, whole numbers of 16, 32 and 64 bits, a float, a
/// util::Money, a std::optional<util::DateTime>.
enum class FieldKind : std::uint8_t { text, small, whole, wide, single, money, moment };

/// A field of a record that takes the value of a column.
struct RecordField {
    std::uint32_t offset;  ///< bytes from the record's beginning
    std::uint16_t size;    ///< bytes of the field; those of a text are its characters
    FieldKind kind;
};

/// Fills a field of `record` from a value of any kind.
using FieldFiller = void (*)(void* record, const RecordField& field, const util::ValueView& value);

/// Port: the rows that one statement gave, held on our side (nothing stays locked between calls).
/// Stands on the first row after opening; rows are changed by an optimistic check. One thread.
class RowSet {
public:
    virtual ~RowSet() = default;
    /// Count of rows.
    [[nodiscard]] virtual std::int32_t recordCount() const = 0;
    /// Count of columns (0 for a statement without rows to give).
    [[nodiscard]] virtual int fieldCount() const = 0;
    /// Name of the column at `ordinal`, trimmed. @throws PlatformError kNoSuchFieldError.
    [[nodiscard]] virtual std::string fieldName(int ordinal) const = 0;
    /// Value in the current row; text columns come padded to their declared width.
    /// @throws PlatformError kNoSuchFieldError, kNoCurrentRowError.
    [[nodiscard]] virtual util::Value value(int ordinal) const = 0;
    /// Fills the fields of `record` from the first columns of the current row, in the order of
    /// both. A value of the field's own kind goes straight in, every other one by `fill`. The texts
    /// of the record hold blanks before. @throws PlatformError as value(), and what `fill` throws;
    /// the record is then half filled.
    virtual void
    readRecord(std::span<const RecordField> fields, void* record, FieldFiller fill) const = 0;
    /// Puts a value into the copy of the current row; the store sees it with update().
    virtual void setValue(int ordinal, const util::Value& value) = 0;
    /// Sends the changed columns of the current row; finds it by its key columns and the old values
    /// of the changed ones. Nothing changed: sends nothing.
    /// @throws PlatformError kRowChangedError when no such row is there any more.
    virtual void update() = 0;
    /// Deletes the current row under the same check.
    virtual void remove() = 0;
    virtual void moveFirst() = 0;
    virtual void moveNext() = 0;
    /// True behind the last row, and for a set without rows.
    [[nodiscard]] virtual bool atEnd() const = 0;
};

/// Ordinal of the column called `name` (letter case does not matter).
/// @throws PlatformError kNoSuchFieldError when there is none.
int fieldOrdinal(const RowSet& rows, std::string_view name);

/// What a data connection is opened with. Texts are code page 1252.
struct ConnectionSettings {
    int timeoutSeconds = 25;
    std::string dataSource;      ///< host, or host\instance; "embedded" for the embedded store
    std::string initialCatalog;  ///< catalog name
    std::string userId;
    std::string password;
    bool integratedSecurity = false;
};

/// Port: one connection to a database server. One thread; every call blocks.
class DataConnection {
public:
    virtual ~DataConnection() = default;
    /// @throws PlatformError when the server or the catalog cannot be reached.
    virtual void open(const ConnectionSettings& settings) = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;
    virtual void close() = 0;
    /// Runs one statement that gives no rows (or whose rows nobody wants).
    /// @throws PlatformError with the server's number and text; the connection stays open unless
    /// isOpen() says otherwise.
    virtual void execute(std::string_view statement) = 0;
    /// Runs one SELECT and fetches its rows. @throws PlatformError as execute().
    virtual std::unique_ptr<RowSet> openRowSet(std::string_view statement) = 0;
};

}  // namespace platform
