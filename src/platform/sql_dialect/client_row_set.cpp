#include "platform/sql_dialect/client_row_set.h"

#include "platform/sql_dialect/tokens.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <numeric>
#include <utility>

namespace platform {

namespace {

/// True for a whole amount that is money at every scale.
constexpr bool isMoney(std::int64_t whole) {
    constexpr std::int64_t kMost = 100'000'000'000;
    return whole > -kMost && whole < kMost;
}

constexpr bool isWhole(ColumnKind kind) {
    return kind == ColumnKind::smallInt || kind == ColumnKind::integer ||
           kind == ColumnKind::bigInt;
}

/// Puts a kept value of a column into a field. What most values are goes straight through.
struct Putter {
    const ColumnForm& form;
    const ColumnInfo& column;
    const RecordField& field;
    void* record;
    FieldFiller fill;

    void operator()(std::string_view text) const {
        if (form.kind != ColumnKind::text) {
            fill(record, field, viewFromStored(column, text));
            return;
        }
        const std::string_view cut = text.substr(0, form.cut);
        if (field.kind != FieldKind::text) {
            fill(record, field, cut);
        } else if (!cut.empty()) {
            std::memcpy(place(), cut.data(), std::min<std::size_t>(cut.size(), field.size));
        }
    }
    void operator()(std::int64_t whole) const {
        switch (field.kind) {
        case FieldKind::small:
            putWhole<std::int16_t>(whole);
            break;
        case FieldKind::whole:
            putWhole<std::int32_t>(whole);
            break;
        case FieldKind::wide:
            putWhole<std::int64_t>(whole);
            break;
        case FieldKind::single:
            if (form.kind == ColumnKind::real) {
                put(static_cast<float>(static_cast<double>(whole)));
            } else {
                putNumber(whole);
            }
            break;
        case FieldKind::money:
            if (form.kind == ColumnKind::decimal && isMoney(whole)) {
                put(util::Money::fromWhole(whole));
                break;
            }
            [[fallthrough]];
        default:
            putNumber(whole);
        }
    }
    void operator()(double number) const {
        if (form.kind == ColumnKind::decimal && field.kind == FieldKind::money) {
            put(moneyFromStored(column, number));
        } else if (form.kind == ColumnKind::real && field.kind == FieldKind::single) {
            put(static_cast<float>(number));
        } else {
            putNumber(number);
        }
    }
    void operator()(std::monostate none) const { fill(record, field, none); }

private:
    [[nodiscard]] std::byte* place() const {
        return static_cast<std::byte*>(record) + field.offset;
    }
    template <class Field>
    void put(Field value) const {
        std::memcpy(place(), &value, sizeof value);
    }
    template <class Field>
    void putWhole(std::int64_t whole) const {
        if (isWhole(form.kind) && std::in_range<Field>(whole)) {
            put(static_cast<Field>(whole));
        } else {
            putNumber(whole);
        }
    }
    /// A number in a text column becomes a text.
    void putNumber(const StoredView& number) const {
        if (form.kind == ColumnKind::text) {
            const util::Value text = fromStored(column, number);
            fill(record, field, std::string_view(std::get<std::string>(text)));
        } else {
            fill(record, field, viewFromStored(column, number));
        }
    }
};

}  // namespace

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
    return static_cast<int>(columns().size());
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
    return fromStored(columns()[at], current(at));
}

const std::vector<StoredView>& ClientRowSet::values() const {
    if (values_.empty()) {
        values_.reserve(leadingCount_ + columns().size());
        for (RowReader row = rows_.read(at_); !row.atEnd();) {
            values_.push_back(row.next());
        }
    }
    return values_;
}

StoredView ClientRowSet::current(std::size_t column) const {
    const std::size_t at = leadingCount_ + column;
    return edited_.empty() ? values()[at] : viewOf(edited_[at]);
}

void ClientRowSet::readRecord(std::span<const RecordField> fields, void* record, FieldFiller fill)
    const {
    static_cast<void>(column(static_cast<int>(fields.size()) - 1));
    requireRow();
    RowReader kept = rows_.read(at_);
    for (std::size_t at = 0; at < leadingCount_; ++at) {
        kept.next();
    }
    const ColumnInfo* infos = columns().data();
    const ColumnForm* forms = columns_->forms().data();
    for (std::size_t at = 0; at < fields.size(); ++at) {
        const Putter put{forms[at], infos[at], fields[at], record, fill};
        if (edited_.empty()) {
            kept.next(put);
        } else {
            std::visit(put, current(at));
        }
    }
}

void ClientRowSet::setValue(int ordinal, const util::Value& value) {
    const std::size_t at = column(ordinal);
    requireRow();
    const bool isExact = numbers_ == Numbers::exact;
    Stored stored = isExact ? toExact(columns()[at], value) : toStored(columns()[at], value);
    if (edited_.empty()) {
        edited_ = rows_.row(at_);
    }
    edited_[leadingCount_ + at] = std::move(stored);
}

void ClientRowSet::load() {
    isRemoved_ = false;
    edited_.clear();
    values_.clear();
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
            std::find_if(columns().begin(), columns().end(), [&](const ColumnInfo& column) {
                return sameSqlName(column.name, name);
            });
        return static_cast<std::size_t>(found - columns().begin());
    };
    for (const auto& index : table.indexes) {
        std::vector<std::size_t> ordinals;
        for (const auto& name : index.columns) {
            ordinals.push_back(ordinalOf(name));
        }
        const bool isWhole = std::all_of(ordinals.begin(), ordinals.end(), [&](std::size_t at) {
            return at < columns().size();
        });
        if (index.unique && isWhole) {
            return ordinals;
        }
    }
    std::vector<std::size_t> all(columns().size());
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
    for (std::size_t at = 0; !edited_.empty() && at < columns().size(); ++at) {
        const StoredView before = values()[leadingCount_ + at];
        const ColumnInfo& info = columns()[at];
        const bool isSame =
            current(at) == before || fromStored(info, current(at)) == fromStored(info, before);
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
    rows_.replace(at_, edited_);
    load();
}

void ClientRowSet::remove() {
    requireRow();
    sendRemove();
    rows_.erase(at_);
    isRemoved_ = true;
}

}  // namespace platform
