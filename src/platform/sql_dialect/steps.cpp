#include "platform/sql_dialect/query_writer.h"
#include "platform/sql_dialect/tokens.h"

#include <algorithm>

namespace platform {

namespace {

/// Comparisons of one alternative in order, without its test on the count of rows; empty when
/// something else stands among them.
std::vector<const Condition*> comparisonsOf(const Condition& alternative) {
    std::vector<const Condition*> leaves;
    if (alternative.kind == Condition::Kind::all) {
        for (const auto& child : alternative.children) {
            leaves.push_back(&child);
        }
    } else {
        leaves.push_back(&alternative);
    }
    std::erase_if(leaves, [](const Condition* leaf) { return leaf->count.has_value(); });
    const bool isPlain = std::all_of(leaves.begin(), leaves.end(), [](const Condition* leaf) {
        return leaf->kind == Condition::Kind::compare && !leaf->leftTrimmed;
    });
    return isPlain ? leaves : std::vector<const Condition*>();
}

/// Leading comparisons that hold the first columns of the order fixed.
std::size_t
fixedColumns(const std::vector<const Condition*>& leaves, const std::vector<OrderItem>& order) {
    std::size_t count = 0;
    while (count < leaves.size() && count < order.size() && leaves[count]->comparison == "=" &&
           sameSqlName(leaves[count]->column, order[count].column)) {
        ++count;
    }
    return count;
}

bool sameValue(const Condition& left, const Condition& right) {
    return left.values.front().isText == right.values.front().isText &&
           left.values.front().text == right.values.front().text;
}

/// The rows of `later` lie behind all rows of `earlier`: it fixes fewer columns, to the same
/// values, and goes strictly past the value that `earlier` fixes next.
bool follows(
    const std::vector<const Condition*>& earlier,
    const std::vector<const Condition*>& later,
    std::size_t fixed,
    std::string_view strict
) {
    for (std::size_t at = 0; at < fixed; ++at) {
        if (!sameValue(*earlier[at], *later[at])) {
            return false;
        }
    }
    return fixed < later.size() && later[fixed]->comparison == strict &&
           sameSqlName(later[fixed]->column, earlier[fixed]->column) &&
           sameValue(*earlier[fixed], *later[fixed]);
}

bool oneDirection(const std::vector<OrderItem>& order) {
    return std::all_of(order.begin(), order.end(), [&](const OrderItem& item) {
        return item.descending == order.front().descending && !item.leftTrimmed;
    });
}

}  // namespace

std::vector<std::size_t> stepAlternatives(const Statement& statement) {
    const bool isCandidate = statement.top == 1 && statement.order.size() > 1 && statement.where &&
                             statement.where->kind == Condition::Kind::any &&
                             oneDirection(statement.order);
    if (!isCandidate) {
        return {};
    }
    const std::string_view strict = statement.order.front().descending ? "<" : ">";
    std::vector<std::size_t> fixed;
    std::vector<const Condition*> earlier;
    for (const auto& alternative : statement.where->children) {
        const auto leaves = comparisonsOf(alternative);
        const std::size_t count = fixedColumns(leaves, statement.order);
        const bool fits = fixed.empty()
                              ? !leaves.empty()
                              : count < fixed.back() && follows(earlier, leaves, count, strict);
        if (!fits) {
            return {};
        }
        fixed.push_back(count);
        earlier = leaves;
    }
    return fixed;
}

}  // namespace platform
