#pragma once
#include "common/Value.h"
#include "platform/form/DataControl.h"
#include <QString>
#include <QTableView>
#include <functional>
#include <vector>

namespace platform {

/// How a column of a list shows itself. Width 0 hides the column, which rides along unseen. A column is never
/// narrower than its heading and its widest usual text.
struct DataColumn {
    QString heading;
    int twips = 0;
    Qt::Alignment alignment = Qt::AlignLeft;
    QString format{}; ///< see formatField
    QString widest{};
    bool isSummed = false; ///< in a spreadsheet the column ends in its sum

    friend bool operator==(const DataColumn&, const DataColumn&) = default;
};

/// What a row has beyond its cells; asked for the rows on the screen only, the note when it is to be told as
/// the row's tool tip.
struct RowLook {
    std::function<bool(int row)> isBold{};
    /// What does not count any more: paler and slanted.
    std::function<bool(int row)> isQuiet{};
    std::function<QString(int row)> note{};
};

class RecordsetModel;

/// A read-only list of rows on a DataControl, chosen from by mouse and keyboard. An empty list says so in its
/// middle. Columns that formatColumns does not name are hidden.
///
/// The present row is where the list stands and the arrow keys go on from. It is marked once it was chosen,
/// whatever key or mouse button did that; where the pointer slips to while a button is held does not count.
class DataGrid : public QTableView {
    Q_OBJECT
  public:
    explicit DataGrid(QWidget* parent = nullptr);

    /// The control stays the caller's; without it the grid is empty.
    void setDataControl(DataControl& control);
    void formatColumns(std::vector<DataColumn> columns);
    const std::vector<DataColumn>& columns() const;
    /// Lets the column take what width is left over; without a word the widest one takes it.
    void stretchColumn(int column);
    void setEmptyText(const QString& text);
    void setRowLook(RowLook look);

    const QString& emptyText() const { return m_emptyText; }

    int rowCount() const;

    /// The present row, marked or not; -1 without one.
    int row() const { return currentIndex().row(); }

    /// Makes the row the present one, marked, without raising a signal.
    void setRow(int row);
    /// Makes the row the present one and leaves none marked.
    void standAt(int row);
    /// The chosen row turned out to be gone: the list stands there with none marked, and the arrow keys go on
    /// from it instead of choosing it again.
    void passOver(int row);

    /// Reads the rows again by `refresh` and stands on the row of the same key as before, marked where it
    /// was; the key is in column 0.
    void refreshInPlace(const std::function<void()>& refresh);

    /// A list over a mask marks nothing by itself: what is marked is what is in the mask. Any other one marks
    /// its first row when the focus comes to it by a key.
    void setOverMask(bool over) { m_overMask = over; }

    /// The first row below the present one, all round, that begins with what was typed; of a very long list
    /// among the next 20,000.
    void keyboardSearch(const QString& typed) override;
    /// Null outside the rows.
    common::Value value(int row, int column) const;

    /// The stored value as text, without the column's format.
    QString text(int row, int column) const { return value(row, column).toText(); }

  Q_SIGNALS:
    /// The user pressed a mouse button on the row or moved to it.
    void rowChosen(int row);
    /// The user clicked the row with the left button; rowChosen comes before.
    void rowClicked(int row);
    /// Double click or Enter on the row.
    void rowActivated(int row);
    /// The row that a hint should tell of: under the pointer, or where the keyboard stands, whichever moved
    /// last; -1 for none.
    void rowNoticed(int row);
    /// Right mouse button, the menu key or Shift+F10; row -1 beside the rows.
    void rowContextMenu(int row, const QPoint& globalPos);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    /// A cell that shows its whole text has no tool tip; beside the rows stands the list's own.
    bool viewportEvent(QEvent* event) override;
    /// A row is marked, never given back.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

  private:
    void applyColumns();
    void notice(int row);
    /// -1 without one.
    int markedRow() const;
    QModelIndex firstCell(int row) const;
    /// Has the rows that come into view read before they are painted.
    void readShownRows();

    RecordsetModel* m_model;
    QString m_emptyText;
    int m_pressedRow = -1;
    int m_noticedRow = -1;
    QPersistentModelIndex m_passedOver;
    int m_stretched = -1;
    bool m_overMask = false;
};

} // namespace platform
