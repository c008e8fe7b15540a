#include "platform/sql_dialect/server_error.h"

#include <string>

namespace platform {

namespace {

struct ErrorText {
    std::int32_t number;
    const char* text;
};

constexpr ErrorText kErrorTexts[] = {
    {errorNetwork, "General network error. Check your network documentation."},
    {errorNoServer, "SQL Server does not exist or access denied."},
    {errorSyntax, "Incorrect syntax near '%1'. Statement: %2"},
    {errorUnclosedQuote, "Unclosed quotation mark after the character string '%1'."},
    {errorColumnInvalid, "Invalid column name '%1'."},
    {errorObjectInvalid, "Invalid object name '%1'."},
    {errorValueCount, "Column name or number of supplied values does not match table definition."},
    {errorSmallOverflow, "Arithmetic overflow error for data type %1, value = %2."},
    {errorNoPermission, "The permission was denied (%1)."},
    {errorDate, "Conversion failed when converting date and/or time from character string."},
    {errorTextOverflowsSmall,
     "The conversion of the varchar value '%1' overflowed an INT2 column. Use a larger integer "
     "column."},
    {errorTextOverflowsInteger,
     "The conversion of the varchar value '%1' overflowed an int column."},
    {errorTextConversion,
     "Conversion failed when converting the varchar value '%1' to data type %2."},
    {errorNullRefused,
     "Cannot insert the value NULL into column '%1', table '%2'; column does not allow nulls. %3 "
     "fails."},
    {errorSourceUnreadable, "The operating system returned an error for the catalog's file (%1)."},
    {errorCatalogDamaged, "The catalog's file is damaged (%1). Restore it from a backup."},
    {errorObjectMissing,
     "Cannot find the object \"%1\" because it does not exist or you do not have permissions."},
    {errorCatalogFull,
     "Could not allocate space in database '%1' because the 'PRIMARY' filegroup is full."},
    {errorDeadlock,
     "Transaction was deadlocked on lock resources with another process and has been chosen as the "
     "deadlock victim. Rerun the transaction."},
    {errorLockTimeout, "Lock request time out period exceeded."},
    {errorDuplicatesFound,
     "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the "
     "object name 'dbo.%1' and the index name '%2'."},
    {errorCatalogExists, "Database '%1' already exists. Choose a different database name."},
    {errorIndexColumn, "Column name '%1' does not exist in the target table or view."},
    {errorIndexExists,
     "The operation failed because an index or statistics with name '%1' already exists on table "
     "'%2'."},
    {errorDuplicateKey,
     "Cannot insert duplicate key row in object 'dbo.%1' with unique index '%2'."},
    {errorColumnExists,
     "Column names in each table must be unique. Column name '%1' in table '%2' is specified more "
     "than once."},
    {errorObjectExists, "There is already an object named '%1' in the database."},
    {errorTypeUnknown, "Column, parameter, or variable '%1': Cannot find data type %2."},
    {errorDropMissing,
     "Cannot drop the %1 '%2', because it does not exist or you do not have permission."},
    {errorNothingToCommit,
     "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    {errorNothingToRollBack,
     "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    {errorReadOnly, "Failed to update database \"%1\" because the database is read-only."},
    {errorNoCatalog, "Cannot open database \"%1\" requested by the login. The login failed. (%2)"},
    {errorAlterMissing,
     "Cannot find the object \"%1\" because it does not exist or you do not have permissions."},
    {errorAlterColumnMissing,
     "ALTER TABLE ALTER COLUMN failed because column '%1' does not exist in table '%2'."},
    {errorFileOpen, "Unable to open the physical file \"%1\" (%2)."},
    {errorFileCreate, "CREATE FILE failed for the physical file '%1' (%2)."},
    {errorNoCatalogFile, "%1 is not a primary database file."},
    {errorTypeConversion, "Error converting data type varchar to %1."},
    {errorNumericOverflow, "Arithmetic overflow error converting %1 to data type %2."},
    {errorTruncated,
     "String or binary data would be truncated in column '%1'. The statement has been "
     "terminated."},
    {errorRenameMissing,
     "Either the parameter @objname is ambiguous or the claimed @objtype (COLUMN) is wrong. (%1)"},
    {errorRenameExists,
     "Error: The new name '%1' is already in use as a COLUMN name and would cause a duplicate "
     "that is not permitted."},
    {errorLoginFailed, "Login failed for user '%1'."},
};

const char* textOf(std::int32_t number) {
    for (const auto& row : kErrorTexts) {
        if (row.number == number) {
            return row.text;
        }
    }
    return "%1";
}

}  // namespace

PlatformError serverError(std::int32_t number, std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const char* at = textOf(number); *at != '\0'; ++at) {
        const bool isPlace = at[0] == '%' && at[1] >= '1' && at[1] <= '9';
        if (!isPlace) {
            text += *at;
            continue;
        }
        ++at;
        const auto part = static_cast<std::size_t>(*at - '1');
        if (part < parts.size()) {
            text += parts.begin()[part];
        }
    }
    return {number, text, "Embedded store"};
}

}  // namespace platform
