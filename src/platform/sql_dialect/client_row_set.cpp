#include "platform/sql_dialect/client_row_set.h"

#include "platform/sql_dialect/tokens.h"

#include <algorithm>
#include <numeric>

namespace platform {

PlatformError rowChangedError() {
    return {
        kRowChangedError,
        "Row cannot be located for updating. Some values may have been changed since it was last "
        "read."};
}

ClientRowSet::ClientRowSet(Columns columns, PackedRows rows, std::size_t leading, Numbers numbers)
    : columns_(std::move(columns)),
      rows_(std::move(rows)),
      leadingCount_(leading),
      numbers_(numbers) {
    load();
}

std::int32_t ClientRowSet::recordCount() const {
    return static_cast<std::int32_t>(rows_.size());
}

int ClientRowSet::fieldCount() const {
    return static_cast<int>(columns_->size());
}

std::size_t ClientRowSet::column(int ordinal) const {
    if (ordinal < 0 || ordinal >= fieldCount()) {
        throw PlatformError(
            kNoSuchFieldError,
            "Item cannot be found in the collection corresponding to the requested name or ordinal."
        );
    }
    return static_cast<std::size_t>(ordinal);
}

std::string ClientRowSet::fieldName(int ordinal) const {
    return columns()[column(ordinal)].name;
}

void ClientRowSet::requireRow() const {
    if (atEnd() || isRemoved_) {
        throw PlatformError(
            kNoCurrentRowError,
            "Either BOF or EOF is True, or the current record has been deleted. Requested "
            "operation requires a current record."
        );
    }
}

util::Value ClientRowSet::value(int ordinal) const {
    const std::size_t at = column(ordinal);
    requireRow();
    return fromStored(columns()[at], edited(at));
}

void ClientRowSet::setValue(int ordinal, const util::Value& value) {
    const std::size_t at = column(ordinal);
    requireRow();
    const bool isExact = numbers_ == Numbers::exact;
    Stored stored = isExact ? toExact(columns()[at], value) : toStored(columns()[at], value);
    if (edited_.empty()) {
        edited_ = kept_;
    }
    edited_[leadingCount_ + at] = std::move(stored);
}

void ClientRowSet::load() {
    isRemoved_ = false;
    edited_.clear();
    if (at_ < rows_.size()) {
        kept_.reserve(leadingCount_ + columns_->size());
        rows_.read(at_, kept_);
    }
}

void ClientRowSet::moveFirst() {
    at_ = 0;
    load();
}

void ClientRowSet::moveNext() {
    if (atEnd() && !isRemoved_) {
        requireRow();
    }
    at_ += isRemoved_ ? 0 : 1;
    load();
}

bool ClientRowSet::atEnd() const {
    return at_ >= rows_.size() && !isRemoved_;
}

std::vector<std::size_t> ClientRowSet::keyColumns(const TableSchema& table) const {
    const auto ordinalOf = [&](const std::string& name) {
        const auto found =
            std::find_if(columns_->begin(), columns_->end(), [&](const ColumnInfo& column) {
                return sameSqlName(column.name, name);
            });
        return static_cast<std::size_t>(found - columns_->begin());
    };
    for (const auto& index : table.indexes) {
        std::vector<std::size_t> ordinals;
        for (const auto& name : index.columns) {
            ordinals.push_back(ordinalOf(name));
        }
        const bool isWhole = std::all_of(ordinals.begin(), ordinals.end(), [&](std::size_t at) {
            return at < columns_->size();
        });
        if (index.unique && isWhole) {
            return ordinals;
        }
    }
    std::vector<std::size_t> all(columns_->size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

std::vector<std::size_t> ClientRowSet::checkedColumns(
    const TableSchema& table, const std::vector<std::size_t>& changed
) const {
    std::vector<std::size_t> checked = keyColumns(table);
    for (const std::size_t at : changed) {
        if (std::find(checked.begin(), checked.end(), at) == checked.end()) {
            checked.push_back(at);
        }
    }
    return checked;
}

std::vector<std::size_t> ClientRowSet::changedColumns() const {
    std::vector<std::size_t> changed;
    for (std::size_t at = 0; !edited_.empty() && at < columns_->size(); ++at) {
        const bool isSame = edited(at) == kept(at) || fromStored(columns()[at], edited(at)) ==
                                                          fromStored(columns()[at], kept(at));
        if (!isSame) {
            changed.push_back(at);
        }
    }
    return changed;
}

void ClientRowSet::update() {
    requireRow();
    const std::vector<std::size_t> changed = changedColumns();
    if (changed.empty()) {
        return;
    }
    sendUpdate(changed);
    kept_ = std::move(edited_);
    edited_.clear();
    rows_.replace(at_, kept_);
}

void ClientRowSet::remove() {
    requireRow();
    sendRemove();
    rows_.erase(at_);
    isRemoved_ = true;
}

}  // namespace platform
