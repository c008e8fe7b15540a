#include "platform/qt/grid_widget.h"

#include "platform/qt/qt_text.h"
#include "util/conversions.h"

#include <algorithm>

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableWidget>

namespace platform {

namespace {

/// The table itself, with the keys of a grid.
class Table : public QTableWidget {
public:
    Table(ControlSinks sinks, QWidget* parent) : QTableWidget(parent), sinks_(std::move(sinks)) {
        setEditTriggers(QAbstractItemView::NoEditTriggers);
        setSelectionMode(QAbstractItemView::ExtendedSelection);
        setAlternatingRowColors(true);
        setTabKeyNavigation(false);
        setShowGrid(false);
        setWordWrap(false);
        verticalHeader()->hide();
        verticalHeader()->setDefaultSectionSize(
            fontMetrics().height() + fontMetrics().height() / 2
        );
        horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
        horizontalHeader()->setHighlightSections(false);
        horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        connect(this, &QTableWidget::cellClicked, this, [this](int row, int column) {
            sinks_.raised(ui::Signal::click, row + 1, column);
        });
        connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
            sinks_.raised(ui::Signal::click, 0, column);
        });
        horizontalHeader()->setSectionsClickable(true);
    }

    void setCellText(int row, int column, const QString& text, bool isNumber) {
        QTableWidgetItem* cell = item(row, column);
        if (cell == nullptr) {
            cell = new QTableWidgetItem(text);
            setItem(row, column, cell);
        } else if (cell->text() != text) {
            cell->setText(text);
        }
        cell->setTextAlignment(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Copy)) {
            copySelection();
        } else if (isOpeningKey(event->key()) && currentRow() >= 0) {
            sinks_.raised(ui::Signal::click, currentRow() + 1, currentColumn());
        } else {
            QTableWidget::keyPressEvent(event);
        }
    }

private:
    static bool isOpeningKey(int key) {
        static constexpr int kKeys[] = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_F4};
        return std::find(std::begin(kKeys), std::end(kKeys), key) != std::end(kKeys);
    }

    void copySelection() const {
        QString text;
        for (int row = 0; row < rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < columnCount(); ++column) {
                if (item(row, column) != nullptr && item(row, column)->isSelected()) {
                    cells += item(row, column)->text();
                }
            }
            if (!cells.isEmpty()) {
                text += cells.join('\t') + '\n';
            }
        }
        QGuiApplication::clipboard()->setText(text);
    }

    ControlSinks sinks_;
};

class Grid : public ControlWidget {
public:
    Grid(const ControlSinks& sinks, QWidget* parent) : table_(new Table(sinks, parent)) {}
    [[nodiscard]] QWidget* widget() const override { return table_; }
    void setUsable(bool usable) override { table_->setEnabled(usable); }
    void setShown(bool shown) override { table_->setVisible(shown); }

    void apply(const ui::ControlState& state) override {
        table_->setAccessibleName(nameFor(state));
        if (state.rows.empty()) {
            table_->setRowCount(0);
            return;
        }
        const auto columns = static_cast<int>(state.rows.front().size());
        table_->setColumnCount(columns);
        table_->setRowCount(static_cast<int>(state.rows.size()) - 1);
        QStringList headings;
        for (const std::string& heading : state.rows.front()) {
            headings += toQt(heading);
        }
        table_->setHorizontalHeaderLabels(headings);
        for (std::size_t row = 1; row < state.rows.size(); ++row) {
            for (std::size_t column = 0; column < state.rows[row].size(); ++column) {
                const std::string& text = state.rows[row][column];
                table_->setCellText(
                    static_cast<int>(row) - 1,
                    static_cast<int>(column),
                    toQt(util::trim(text)),
                    util::isNumeric(util::trim(text))
                );
            }
        }
    }

    [[nodiscard]] QRect partAt(int row, int column) const override {
        const QModelIndex cell = table_->model()->index(row - 1, column);
        table_->setCurrentIndex(cell);
        table_->scrollTo(cell);
        return table_->visualRect(cell).translated(table_->viewport()->pos());
    }

private:
    Table* table_;
};

}  // namespace

std::unique_ptr<ControlWidget> makeGrid(const ControlSinks& sinks, QWidget* parent) {
    return std::make_unique<Grid>(sinks, parent);
}

}  // namespace platform
