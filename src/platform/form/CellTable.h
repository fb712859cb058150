#pragma once
#include "common/Value.h"
#include <QAbstractTableModel>
#include <functional>
#include <vector>

namespace platform {

struct CellColumn {
    enum class Type { Text, Number };
    QString name;    ///< the column's name in the code
    QString caption; ///< heading; empty for a table without headings
    Type type = Type::Text;
    QString form; ///< number form such as "0.00"; empty shows the plain value
    bool shown = true;
    double blank = 0; ///< what a number cell of an untouched row holds
};

/// How a cell presents itself: a fixed label, a value that cannot be edited (grey), or a field.
enum class CellKind { Label, ReadOnly, Field };

/// A table of cells with the life of an edit: before edit, before end of edit, after change, before delete.
/// It is a Qt model, so that a grid shows it, and lives without one. Cells always hold a value of their
/// column's type; an untouched number cell holds its column's blank value, a text cell "".
///
/// Writing with setCell raises no event. What the user types goes through beginEdit and endEdit, and so do
/// picks that must run the same rules.
class CellTable : public QAbstractTableModel {
    Q_OBJECT
  public:
    CellTable(std::vector<CellColumn> columns, int rows, QObject* parent = nullptr);

    /// Position of a column by its name; -1 when there is none.
    int column(QStringView name) const;

    const CellColumn& columnInfo(int column) const { return m_columns.at(size_t(column)); }

    const common::Value& cell(int row, int column) const;

    QString text(int row, int column) const { return cell(row, column).toText(); }

    double number(int row, int column) const { return cell(row, column).toDouble(); }

    /// A text put into a number column is converted; "" counts as 0. Throws kTypeMismatch for other texts.
    void setCell(int row, int column, const common::Value& value);
    /// The row as it was before anything was put into it; the kinds of its cells stay.
    void clearRow(int row);

    /// Whether nothing was put into the row since it was made or cleared.
    bool isUntouched(int row) const { return m_rows.at(size_t(row)).untouched; }

    /// Rows that something was put into, with their values.
    using Content = std::vector<std::pair<int, std::vector<common::Value>>>;
    Content content() const;
    /// The values are again as they were then.
    void putBack(const Content& content);

    void setCaption(int column, const QString& caption);
    void setKind(int row, int column, CellKind kind);
    CellKind kind(int row, int column) const;

    int rows() const { return int(m_rows.size()); }

    /// Rows are cut or added (empty) at the end.
    void setRows(int rows);
    void removeRow(int row);

    /// May the cell be edited at all? Asks BeforeEdit.
    bool mayEdit(int row, int column) const;
    /// Takes the editor's text over: BeforeEndEdit (may change the value or refuse), the cell, Change.
    /// False when refused; the cell then keeps its value, as it does where Change throws. A text that is no
    /// number in a number column is refused.
    bool endEdit(int row, int column, const QString& editorText);

    /// Open editors close without taking anything over: what stands in the table is about to become something
    /// else.
    void dropEdits() { Q_EMIT editsDropped(); }

    /// The user asks to delete a row: BeforeDelete decides and acts; the table itself deletes nothing.
    void requestDelete(int row);

    /// Hooks of the owner.
    std::function<bool(int row, int column)> BeforeEdit;
    std::function<void(int row, int column, common::Value& editor, bool& cancel)> BeforeEndEdit;
    std::function<void(int row, int column)> Change;
    std::function<void(int row)> BeforeDelete;

    // The model's side.
    enum Roles { KindRole = Qt::UserRole + 1 };

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// EditRole runs endEdit guarded (common/Guard.h), so that no exception reaches the view.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  Q_SIGNALS:
    void editsDropped();

  private:
    struct Cell {
        common::Value value;
        CellKind kind = CellKind::Field;
    };

    struct Row {
        std::vector<Cell> cells;
        /// Nothing was put in since the row was made or cleared.
        bool untouched = true;
    };

    const Cell& cellAt(int row, int column) const { return m_rows.at(size_t(row)).cells.at(size_t(column)); }

    common::Value blankValue(size_t column) const;
    Row emptyRow() const;

    std::vector<CellColumn> m_columns;
    std::vector<Row> m_rows;
};

} // namespace platform
