#include "platform/odbc/odbc_connection.h"

#include "platform/odbc/odbc_row_set.h"

namespace platform {

OdbcConnection::OdbcConnection(std::function<OdbcOptions()> options)
    : options_(std::move(options)) {}

void OdbcConnection::open(const ConnectionSettings& settings) {
    close();
    store_ = std::make_shared<OdbcStore>(settings, options_());
}

/// A change through a row set can have found the server gone, too.
bool OdbcConnection::isOpen() const {
    return store_ != nullptr && store_->session().isOpen();
}

void OdbcConnection::close() {
    store_.reset();
}

StoreRows OdbcConnection::run(std::string_view statement) {
    if (!store_) {
        throw PlatformError(kClosedError, "Operation is not allowed when the object is closed.");
    }
    return store_->run(statement);
}

void OdbcConnection::execute(std::string_view statement) {
    run(statement);
}

std::unique_ptr<RowSet> OdbcConnection::openRowSet(std::string_view statement) {
    return std::make_unique<OdbcRowSet>(store_, run(statement));
}

}  // namespace platform
