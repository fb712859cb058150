#pragma once
#include "platform/form/CellTable.h"
#include "platform/form/OfferList.h"
#include <QPointer>
#include <QSet>
#include <QTableView>
#include <QTimer>
#include <functional>
#include <optional>

namespace platform {

struct CellPlace {
    int row = 0;
    int column = 0;
    friend bool operator==(const CellPlace&, const CellPlace&) = default;
};

/// A view on a CellTable that is worked by keyboard.
///
/// An editor opens by typing, F2, Enter or a double click, with its text selected. Enter and Tab take it over
/// and go to the next cell, Shift+Tab goes back, Up and Down take it over and change the row, Esc drops it.
/// An editor whose text was not touched takes nothing over. A refused edit puts the old value back and stays
/// on the cell. Where the keyed text has several offers, Down and Up go through them first. Outside an editor
/// the arrows move, Tab leaves the grid, Delete asks the table to delete the row.
class CellGrid : public QTableView {
    Q_OBJECT
  public:
    explicit CellGrid(QWidget* parent = nullptr);
    ~CellGrid() override;

    /// The table stays the caller's and must outlive the grid or be replaced before. Hides columns that are
    /// not shown.
    void setTable(CellTable& table);

    CellTable* table() const { return m_table; }

    /// Columns in which entering a cell that may be edited opens its editor at once.
    void openEditorOnEnter(const QSet<int>& columns) { m_openOnEnter = columns; }

    /// Even rows, counted from 0, are shaded.
    void setZebra(bool on);

    /// The row that stands out, larger and bold.
    void setStrongRow(int row) { m_strongRow = row; }

    /// Width of a column in twips, as the screens give them.
    void setColumnTwips(int column, int twips);

    /// Current cell; row and column are -1 when there is none.
    CellPlace place() const;
    /// Makes the cell the current one; `edit` opens its editor where the cell may be edited.
    void goTo(CellPlace cell, bool edit = false);

    bool isEditing() const { return state() == EditingState; }

    /// Takes over what an open editor holds and closes it. False when the edit was refused, also when the
    /// click that asks for it has closed the editor already.
    bool finishEdit();

    /// Where Enter and Tab lead after an edit; nothing leaves the grid for the next control. Without the hook
    /// it is the next cell to the right that may be edited, then the first one in the rows below.
    std::function<std::optional<CellPlace>(CellPlace from)> NextCell;
    /// What the text keyed into the cell may mean, the first being what the text alone means. Asked once the
    /// keys pause, or when an arrow key asks for it: what a key does never depends on how fast it came.
    std::function<std::vector<CellOffer>(CellPlace, const QString& typed)> Offers;
    /// Cells from which Enter leads on as after an edit, without opening the editor.
    std::function<bool(CellPlace)> EnterLeadsOn;
    /// Cells whose text is shown indented.
    std::function<bool(CellPlace)> Indented;
    /// Rows whose number cells show nothing, such as lines of an order that are still free.
    std::function<bool(int row)> BlankRow;

  Q_SIGNALS:
    /// Right mouse button on a cell, the menu key or Shift+F10. The cell is the current one by then.
    void cellContextMenu(int row, int column, const QPoint& globalPos);
    /// Left mouse button on a cell.
    void cellClicked(int row, int column);
    void cellEntered(int row, int column);

  protected:
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QList<int>& roles) override;

  private:
    friend class CellDelegate;
    bool editorKey(QWidget* editor, QKeyEvent* event);
    bool closeEditorTakingOver(QWidget* editor);
    void leaveTo(std::optional<CellPlace> target, CellPlace from, bool forward);
    std::optional<CellPlace> nextCell(CellPlace from) const;
    std::optional<CellPlace> previousCell(CellPlace from) const;
    bool mayEdit(CellPlace cell) const;
    void raiseContextMenu();
    void textKeyed();
    void readOffers();
    void showOffers();
    bool stepOffer(int by);
    /// Takes the offer that the user went on to; false when it is the text itself that counts.
    bool takeOffer();
    /// The cell blinks, and a soft beep is heard.
    void showRefused(const QModelIndex& index);
    void openIfWanted(const QModelIndex& index);

    CellTable* m_table = nullptr;
    QSet<int> m_openOnEnter;
    QPointer<QWidget> m_editor;
    QPointer<OfferList> m_offers;
    QTimer m_offerTimer;
    QPersistentModelIndex m_blinking;
    int m_strongRow = -1;
    bool m_zebra = false;
    bool m_holdEditor = false;
    bool m_refused = false;
    /// The present click takes the focus from the editor, and what it held was refused.
    bool m_leftByClick = false;
    bool m_refusedByClick = false;
};

} // namespace platform
