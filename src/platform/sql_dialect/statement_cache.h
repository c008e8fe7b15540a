#pragma once

#include "platform/sql_dialect/translator.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A statement without its texts: two that differ in nothing but the texts between their quotes
/// have the same key, as long as the same ones among the texts are alike.
struct StatementShape {
    std::string key;  ///< empty: a statement that has no shape of this kind
    std::vector<std::string> texts;
};
StatementShape shapeOf(std::string_view statement);

/// A translation with the values of one statement of its shape.
struct FilledTranslation {
    std::shared_ptr<const Translation> translation;
    std::vector<Stored> values;
};

/// Translates, and keeps the translations of the queries: a walk asks the same few over and over,
/// with other texts. For a dialect whose values stand beside the statement.
class StatementCache {
public:
    StatementCache(const SchemaView& schema, const Dialect& dialect)
        : schema_(schema),
          dialect_(dialect) {}

    /// @param version  of the tables' structure: with another one, all that was kept is forgotten.
    /// @throws PlatformError as translate().
    FilledTranslation translated(std::string_view statement, std::int64_t version);

private:
    const SchemaView& schema_;
    const Dialect& dialect_;
    std::int64_t version_ = 0;
    std::map<std::string, std::shared_ptr<const Translation>, std::less<>> kept_;
};

}  // namespace platform
