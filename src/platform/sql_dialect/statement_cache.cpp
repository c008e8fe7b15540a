#include "platform/sql_dialect/statement_cache.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::size_t kMostKept = 64;
/// More texts than a walk's statement has.
constexpr std::size_t kMostTexts = 32;

/// True when every text of the statement is one of the values, so that other texts mean other
/// values and nothing else.
bool hasTextsAsValuesOnly(const Translation& translation, std::size_t texts) {
    if (translation.statement.kind != StatementKind::select ||
        translation.sources.size() != translation.values.size()) {
        return false;
    }
    std::vector<bool> isValue(texts, false);
    for (const auto& source : translation.sources) {
        if (source.literal.place != Literal::kNowhere) {
            isValue.at(static_cast<std::size_t>(source.literal.place)) = true;
        }
    }
    return std::find(isValue.begin(), isValue.end(), false) == isValue.end();
}

bool isOpening(char character) {
    return character == '\'' || character == '"' || character == '[';
}

std::vector<Stored> valuesFor(
    const Translation& translation, const std::vector<std::string>& texts, const Dialect& dialect
) {
    std::vector<Stored> values;
    values.reserve(translation.sources.size());
    for (std::size_t at = 0; at < translation.sources.size(); ++at) {
        const ValueSource& source = translation.sources[at];
        if (source.literal.place == Literal::kNowhere) {
            values.push_back(translation.values[at]);
        } else {
            const auto place = static_cast<std::size_t>(source.literal.place);
            values.push_back(valueOf(source, {false, true, texts[place]}, dialect));
        }
    }
    return values;
}

}  // namespace

StatementShape shapeOf(std::string_view statement) {
    StatementShape shape;
    shape.key.reserve(statement.size());
    std::size_t at = 0;
    while (at < statement.size()) {
        const auto* const mark = std::find_if(
            statement.begin() + static_cast<std::ptrdiff_t>(at), statement.end(), isOpening
        );
        const auto open = static_cast<std::size_t>(mark - statement.begin());
        shape.key.append(statement, at, open - at);
        if (open == statement.size()) {
            return shape;
        }
        std::string text;
        std::size_t close = statement.find('\'', open + 1);
        if (statement[open] != '\'' || close == std::string_view::npos ||
            shape.texts.size() == kMostTexts) {
            return {};
        }
        text.append(statement, open + 1, close - open - 1);
        while (statement.substr(close + 1).starts_with('\'')) {
            const std::size_t from = close + 1;
            close = statement.find('\'', from + 1);
            if (close == std::string_view::npos) {
                return {};
            }
            text.append(statement, from, close - from);
        }
        at = close + 1;
        shape.texts.push_back(std::move(text));
        const auto first = std::find(shape.texts.begin(), shape.texts.end(), shape.texts.back());
        shape.key += '\'';
        shape.key += static_cast<char>('A' + (first - shape.texts.begin()));
    }
    return shape;
}

FilledTranslation StatementCache::translated(std::string_view statement, std::int64_t version) {
    if (version != version_) {
        kept_.clear();
        version_ = version;
    }
    const StatementShape shape = shapeOf(statement);
    const auto found = kept_.find(shape.key);
    if (found != kept_.end()) {
        return {found->second, valuesFor(*found->second, shape.texts, dialect_)};
    }
    auto fresh = std::make_shared<const Translation>(translate(statement, schema_, dialect_));
    if (!shape.key.empty() && hasTextsAsValuesOnly(*fresh, shape.texts.size())) {
        if (kept_.size() >= kMostKept) {
            kept_.clear();
        }
        kept_.emplace(shape.key, fresh);
    }
    return {fresh, fresh->values};
}

}  // namespace platform
