#pragma once

#include "platform/sql_dialect/translator.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A translation with the values of one statement of its shape.
struct FilledTranslation {
    std::shared_ptr<const Translation> translation;
    std::vector<Stored> values;
};

/// Translates, and keeps the translations of the queries: a walk asks the same few over and over,
/// with other texts. Two queries that differ in nothing but the texts between their quotes share a
/// translation, as long as the same ones among the texts are alike. For a dialect whose values
/// stand beside the statement.
class StatementCache {
public:
    StatementCache(const SchemaView& schema, const Dialect& dialect)
        : schema_(schema),
          dialect_(dialect) {}

    /// @param version  of the tables' structure: with another one, all that was kept is forgotten.
    /// @throws PlatformError as translate().
    FilledTranslation translated(std::string_view statement, std::int64_t version);

private:
    struct Kept {
        std::vector<std::string> around;  ///< what stands around the texts: one more than these
        std::vector<std::size_t> firsts;  ///< for each text, the first that is like it
        std::shared_ptr<const Translation> translation;
    };

    bool fits(const Kept& kept, std::string_view statement);
    const Kept* find(std::string_view statement);
    void keep(std::string_view statement, const std::shared_ptr<Translation>& fresh);
    [[nodiscard]] std::vector<Stored> valuesFor(const Translation& translation) const;

    const SchemaView& schema_;
    const Dialect& dialect_;
    std::int64_t version_ = 0;
    std::int64_t lastNumber_ = 0;
    std::vector<Kept> kept_;               ///< the one that was used last is the last
    std::vector<std::string_view> texts_;  ///< those of the statement at hand, as they stand there
};

}  // namespace platform
