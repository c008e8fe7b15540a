#include "platform/odbc/odbc_management.h"

#include "util/text_codec.h"

namespace platform {

namespace {

constexpr int kServerRuns = 1;
constexpr std::int32_t kNotConnected = -2147201022;

/// Rows of a query of names, each with 1 for one of the server's own.
template <class Info>
std::vector<Info> namesOf(OdbcSession& session, const char* query) {
    const OdbcResult result = session.run(query);
    std::vector<Info> found;
    for (std::size_t at = 0; at < result.rows.size(); ++at) {
        const std::vector<Stored> row = result.rows.row(at);
        const auto* name = std::get_if<std::string>(&row.front());
        const auto* isOwn = std::get_if<std::int64_t>(&row.at(1));
        if (name != nullptr) {
            found.push_back({*name, isOwn != nullptr && *isOwn == 1});
        }
    }
    return found;
}

}  // namespace

OdbcManagement::OdbcManagement(std::function<OdbcOptions()> options)
    : options_(std::move(options)) {}

void OdbcManagement::connect(
    const std::string& server,
    const std::string& login,
    const std::string& password,
    bool integrated
) {
    session_.reset();
    settings_.dataSource = server;
    settings_.userId = login;
    settings_.password = password;
    settings_.integratedSecurity = integrated;
    connectedWith_ = options_();
    session_ = sessionIn("");
}

/// An empty catalog is the one in which such a session stands.
std::unique_ptr<OdbcSession> OdbcManagement::sessionIn(const std::string& catalog) const {
    const std::vector<std::string> installed = installedDrivers();
    ConnectionSettings settings = settings_;
    const std::string driver = connectionText(settings, connectedWith_, installed).driver;
    const ServerKind& kind = serverKind(driver);
    settings.initialCatalog = catalog.empty() ? kind.homeCatalog : catalog;
    const std::string text = connectionText(settings, connectedWith_, installed).text;
    return std::make_unique<OdbcSession>(kind, driver, text, settings.timeoutSeconds);
}

OdbcSession& OdbcManagement::session() const {
    if (!session_) {
        throw PlatformError(kNotConnected, "This server object is not connected to a server.");
    }
    return *session_;
}

void OdbcManagement::setLoginTimeout(int seconds) {
    settings_.timeoutSeconds = seconds;
}

int OdbcManagement::status() const {
    return session_ != nullptr && session_->isOpen() ? kServerRuns : 0;
}

std::vector<CatalogInfo> OdbcManagement::catalogs() const {
    return namesOf<CatalogInfo>(session(), session().kind().catalogs);
}

void OdbcManagement::addCatalog(const CatalogFiles& files) {
    const ServerKind& kind = session().kind();
    for (const std::string& statement : kind.makeCatalog(files)) {
        session().run(util::toUtf8(statement));
    }
    const std::vector<std::string> furnishing = kind.furnishCatalog();
    if (furnishing.empty()) {
        return;
    }
    const auto inside = sessionIn(files.name);
    for (const std::string& statement : furnishing) {
        inside->run(util::toUtf8(statement));
    }
}

std::vector<TableInfo> OdbcManagement::tables(const std::string& catalog) const {
    const auto inside = sessionIn(catalog);
    return namesOf<TableInfo>(*inside, inside->kind().tables);
}

}  // namespace platform
