#include "platform/sql_dialect/statement_cache.h"

#include "util/conversions.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace platform {

namespace {

constexpr std::size_t kMostKept = 64;
/// More texts than a walk's statement has.
constexpr std::size_t kMostTexts = 32;
constexpr char kQuote = '\'';

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

/// Takes a text with its quotes off the front of `rest`. @return the text as it stands between
/// them; nothing when there is none that ends.
std::optional<std::string_view> takeText(std::string_view& rest) {
    if (!rest.starts_with(kQuote)) {
        return std::nullopt;
    }
    std::size_t close = rest.find(kQuote, 1);
    while (close != std::string_view::npos && rest.substr(close + 1).starts_with(kQuote)) {
        close = rest.find(kQuote, close + 2);
    }
    if (close == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view text = rest.substr(1, close - 1);
    rest.remove_prefix(close + 1);
    return text;
}

/// The first of the texts that is like the last one.
std::size_t firstLikeLast(const std::vector<std::string_view>& texts) {
    const auto first = std::find(texts.begin(), texts.end(), texts.back());
    return static_cast<std::size_t>(first - texts.begin());
}

}  // namespace

/// True when the statement has the kept one's shape; its texts are then the texts at hand.
bool StatementCache::fits(const Kept& kept, std::string_view statement) {
    texts_.clear();
    for (std::size_t at = 0; at < kept.firsts.size(); ++at) {
        if (!statement.starts_with(kept.around[at])) {
            return false;
        }
        statement.remove_prefix(kept.around[at].size());
        const auto text = takeText(statement);
        if (!text) {
            return false;
        }
        texts_.push_back(*text);
        if (firstLikeLast(texts_) != kept.firsts[at]) {
            return false;
        }
    }
    return statement == kept.around.back();
}

const StatementCache::Kept* StatementCache::find(std::string_view statement) {
    const auto found = std::find_if(kept_.rbegin(), kept_.rend(), [&](const Kept& each) {
        return fits(each, statement);
    });
    if (found == kept_.rend()) {
        return nullptr;
    }
    if (found != kept_.rbegin()) {
        std::swap(*found, kept_.back());
    }
    return &kept_.back();
}

/// Keeps a translation for statements like this one, when it serves them.
void StatementCache::keep(std::string_view statement, const std::shared_ptr<Translation>& fresh) {
    Kept kept;
    texts_.clear();
    for (;;) {
        const std::size_t open = statement.find_first_of("'\"[");
        kept.around.emplace_back(statement.substr(0, open));
        if (open == std::string_view::npos) {
            break;
        }
        statement.remove_prefix(open);
        const auto text = takeText(statement);
        if (!text || texts_.size() == kMostTexts) {
            return;
        }
        texts_.push_back(*text);
        kept.firsts.push_back(firstLikeLast(texts_));
    }
    if (!hasTextsAsValuesOnly(*fresh, texts_.size())) {
        return;
    }
    if (kept_.size() >= kMostKept) {
        kept_.clear();
    }
    fresh->number = ++lastNumber_;
    kept.translation = fresh;
    kept_.push_back(std::move(kept));
}

/// The values of a kept translation with the texts at hand.
std::vector<Stored> StatementCache::valuesFor(const Translation& translation) const {
    std::vector<Stored> values;
    values.reserve(translation.sources.size());
    for (std::size_t at = 0; at < translation.sources.size(); ++at) {
        const ValueSource& source = translation.sources[at];
        if (source.literal.place == Literal::kNowhere) {
            values.push_back(translation.values[at]);
        } else {
            const std::string_view text = texts_[static_cast<std::size_t>(source.literal.place)];
            values.push_back(
                valueOf(source, {false, true, util::replaceAll(text, "''", "'")}, dialect_)
            );
        }
    }
    return values;
}

FilledTranslation StatementCache::translated(std::string_view statement, std::int64_t version) {
    if (version != version_) {
        kept_.clear();
        version_ = version;
    }
    if (const Kept* kept = find(statement)) {
        return {kept->translation, valuesFor(*kept->translation)};
    }
    auto fresh = std::make_shared<Translation>(translate(statement, schema_, dialect_));
    keep(statement, fresh);
    return {fresh, fresh->values};
}

}  // namespace platform
