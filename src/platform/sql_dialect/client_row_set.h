#pragma once

#include "platform/ports/data.h"
#include "platform/sql_dialect/columns.h"
#include "platform/sql_dialect/packed_rows.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace platform {

inline constexpr std::int32_t kClosedError = 3704;
inline constexpr std::int32_t kReadOnlyRowsError = 3251;

/// The error of a change to a row that is not there any more as it was read.
PlatformError rowChangedError();

/// Rows held on our side, with a copy of the current one that can be edited. How a change reaches
/// the store is the adapter's affair: it has the row as read and as edited.
class ClientRowSet : public RowSet {
public:
    // The values of the current row point into the pack.
    ClientRowSet(const ClientRowSet&) = delete;
    ClientRowSet& operator=(const ClientRowSet&) = delete;
    ClientRowSet(ClientRowSet&&) = delete;
    ClientRowSet& operator=(ClientRowSet&&) = delete;
    ~ClientRowSet() override = default;

    [[nodiscard]] std::int32_t recordCount() const override;
    [[nodiscard]] int fieldCount() const override;
    [[nodiscard]] std::string fieldName(int ordinal) const override;
    [[nodiscard]] util::Value value(int ordinal) const override;
    void
    readRecord(std::span<const RecordField> fields, void* record, FieldFiller fill) const override;
    void setValue(int ordinal, const util::Value& value) override;
    void update() override;
    void remove() override;
    void moveFirst() override;
    void moveNext() override;
    [[nodiscard]] bool atEnd() const override;

protected:
    enum class Numbers : bool { nearest, exact };

    using Columns = std::shared_ptr<const ColumnList>;

    /// An empty set without columns.
    ClientRowSet() = default;
    /// @param columns  may be shared with other sets of the same statement.
    /// @param leading  values of each packed row in front of those of the columns.
    ClientRowSet(Columns columns, PackedRows rows, std::size_t leading, Numbers numbers);

    /// Writes the changed columns of the current row, under the check. @throws PlatformError.
    virtual void sendUpdate(const std::vector<std::size_t>& changed) = 0;
    /// Deletes the current row, under the check. @throws PlatformError.
    virtual void sendRemove() = 0;

    [[nodiscard]] const std::vector<ColumnInfo>& columns() const { return columns_->infos(); }
    /// A value of the current row as fetched.
    [[nodiscard]] Stored kept(std::size_t column) const {
        return ownStored(values()[leadingCount_ + column]);
    }
    /// The same with what setValue put there.
    [[nodiscard]] Stored edited(std::size_t column) const { return ownStored(current(column)); }
    /// The first of the values in front of the columns.
    [[nodiscard]] Stored leading() const { return ownStored(values().front()); }
    /// What the check of a change to `changed` compares: the columns of the first unique index of
    /// `table` that is whole in the set (without one: all columns), and the changed ones.
    [[nodiscard]] std::vector<std::size_t>
    checkedColumns(const TableSchema& table, const std::vector<std::size_t>& changed) const;

private:
    [[nodiscard]] std::size_t column(int ordinal) const;
    void requireRow() const;
    void load();
    [[nodiscard]] const std::vector<StoredView>& values() const;
    [[nodiscard]] StoredView current(std::size_t column) const;
    [[nodiscard]] std::vector<std::size_t> keyColumns(const TableSchema& table) const;
    [[nodiscard]] std::vector<std::size_t> changedColumns() const;

    Columns columns_ = std::make_shared<const ColumnList>();
    PackedRows rows_;
    std::size_t leadingCount_ = 0;
    Numbers numbers_ = Numbers::nearest;
    std::size_t at_ = 0;
    bool isRemoved_ = false;  ///< the current row was deleted; at_ is the one behind it
    /// The current row as fetched, leading values first; empty until one of them is asked for.
    mutable std::vector<StoredView> values_;
    std::vector<Stored> edited_;  ///< the row with what setValue put there; empty: nothing yet
};

}  // namespace platform
