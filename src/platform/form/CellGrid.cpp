#include "platform/form/CellGrid.h"
#include "common/Guard.h"
#include "platform/form/CellDelegate.h"
#include "platform/form/GridColors.h"
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTimer>
#include <utility>

namespace platform {
namespace {

/// Longer than between the keys of somebody who knows what he types.
constexpr int kOffersAfterMilliseconds = 120;

/// Acts once the mouse button that is down has been let go and what it clicked has acted.
class EndOfClick : public QObject {
  public:
    EndOfClick(QObject* parent, std::function<void()> act) : QObject(parent), m_act(std::move(act)) {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonRelease) {
            qApp->removeEventFilter(this);
            QTimer::singleShot(0, this, [this] {
                m_act();
                deleteLater();
            });
        }
        return false;
    }

  private:
    std::function<void()> m_act;
};

} // namespace

CellGrid::CellGrid(QWidget* parent) : QTableView(parent) {
    setItemDelegate(new CellDelegate(*this));
    setSelectionMode(SingleSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    // Outside an editor Tab leaves the grid, so that the keyboard is never caught in it.
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumHeight(fontMetrics().height() + 8);
    setWordWrap(false);
    m_offerTimer.setSingleShot(true);
    m_offerTimer.setInterval(kOffersAfterMilliseconds);
    common::connectGuarded(common::Origin::Timer, &m_offerTimer, &QTimer::timeout, this, [this] {
        readOffers();
        showOffers();
    });
}

CellGrid::~CellGrid() {
    delete m_offers;
}

void CellGrid::setTable(CellTable& table) {
    if (m_table)
        disconnect(m_table, &CellTable::editsDropped, this, nullptr);
    m_table = &table;
    setModel(&table);
    connect(m_table, &CellTable::editsDropped, this, [this] {
        if (m_editor)
            closeEditor(m_editor, QAbstractItemDelegate::RevertModelCache);
    });
    bool anyCaption = false;
    for (int column = 0; column < table.columnCount(); ++column) {
        setColumnHidden(column, !table.columnInfo(column).shown);
        anyCaption |= !table.columnInfo(column).caption.isEmpty();
    }
    horizontalHeader()->setVisible(anyCaption);
}

void CellGrid::setZebra(bool on) {
    m_zebra = on;
    viewport()->update();
}

void CellGrid::setColumnTwips(int column, int twips) {
    setColumnWidth(column, twipsToPixels(twips));
}

CellPlace CellGrid::place() const {
    return {currentIndex().row(), currentIndex().column()};
}

void CellGrid::goTo(CellPlace cell, bool edit) {
    {
        const QScopedValueRollback hold(m_holdEditor, true);
        setCurrentIndex(model()->index(cell.row, cell.column));
    }
    if (edit && mayEdit(cell))
        QTableView::edit(currentIndex());
}

bool CellGrid::finishEdit() {
    if (isEditing() && m_editor)
        return closeEditorTakingOver(m_editor);
    if (!std::exchange(m_refusedByClick, false))
        return true;
    setFocus();
    return false;
}

bool CellGrid::mayEdit(CellPlace cell) const {
    return m_table && m_table->flags(m_table->index(cell.row, cell.column)).testFlag(Qt::ItemIsEditable);
}

bool CellGrid::closeEditorTakingOver(QWidget* editor) {
    commitData(editor);
    const bool taken = !m_refused;
    m_refused = false;
    // What the edit set off may have closed the editor already.
    if (m_editor == editor)
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    return taken;
}

void CellGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    if (m_editor == editor) {
        m_editor = nullptr;
        m_offerTimer.stop();
        if (m_offers)
            m_offers->setOffers({});
    }
    QTableView::closeEditor(editor, hint);
}

void CellGrid::textKeyed() {
    if (!Offers)
        return;
    // The former offers stay until the keys pause, but none of them is chosen any longer.
    if (m_offers)
        m_offers->chooseFirst();
    m_offerTimer.start();
}

void CellGrid::readOffers() {
    m_offerTimer.stop();
    const auto* editor = qobject_cast<QLineEdit*>(m_editor);
    if (!editor)
        return;
    // The window that the grid stands in is not known before.
    if (!m_offers) {
        m_offers = new OfferList(window());
        m_offers->setFont(font());
        connect(m_offers, &OfferList::offerClicked, this, [this] {
            const CellPlace from = place();
            if (m_editor && closeEditorTakingOver(m_editor))
                leaveTo(nextCell(from), from, true);
        });
        // Another screen may come to the front while the editor stays open below it.
        connect(qApp, &QApplication::focusChanged, m_offers, [this](QWidget*, const QWidget* now) {
            if (now && now != m_editor)
                m_offers->setOffers({});
        });
    }
    m_offers->setOffers(Offers(place(), editor->text()));
}

void CellGrid::showOffers() {
    if (!m_offers || m_offers->count() == 0)
        return;
    const QRect cell = visualRect(currentIndex());
    if (!viewport()->rect().intersects(cell))
        return m_offers->hide();
    m_offers->showAt({viewport()->mapTo(window(), cell.topLeft()), cell.size()});
}

bool CellGrid::stepOffer(int by) {
    if (m_offerTimer.isActive())
        common::guarded(common::Origin::User, [this] { readOffers(); });
    if (!m_offers || m_offers->count() < 2 || (by < 0 && m_offers->chosen() == 0))
        return false;
    m_offers->step(by);
    showOffers();
    return true;
}

bool CellGrid::takeOffer() {
    if (!m_offers || m_offers->count() == 0 || m_offers->chosen() == 0)
        return false;
    const auto take = m_offers->offer(m_offers->chosen()).take;
    common::guarded(common::Origin::User, take);
    return true;
}

bool CellGrid::editorKey(QWidget* editor, QKeyEvent* event) {
    const CellPlace from = place();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
        if (closeEditorTakingOver(editor))
            leaveTo(nextCell(from), from, true);
        return true;
    case Qt::Key_Backtab:
        if (closeEditorTakingOver(editor))
            leaveTo(previousCell(from), from, false);
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down: {
        if (stepOffer(event->key() == Qt::Key_Down ? 1 : -1))
            return true;
        const int row = from.row + (event->key() == Qt::Key_Down ? 1 : -1);
        if (closeEditorTakingOver(editor) && row >= 0 && row < m_table->rows())
            setCurrentIndex(m_table->index(row, from.column));
        return true;
    }
    case Qt::Key_Menu:
    case Qt::Key_F10:
        if (event->key() == Qt::Key_F10 && event->modifiers() != Qt::ShiftModifier)
            return false;
        if (closeEditorTakingOver(editor))
            raiseContextMenu();
        return true;
    default:
        // The mnemonic of a button that is disabled just now is not text.
        return event->modifiers() == Qt::AltModifier;
    }
}

void CellGrid::leaveTo(std::optional<CellPlace> target, CellPlace from, bool forward) {
    // A handler of the edit may have moved on by itself.
    if (place() != from)
        return;
    if (target)
        setCurrentIndex(m_table->index(target->row, target->column));
    else
        focusNextPrevChild(forward);
}

std::optional<CellPlace> CellGrid::nextCell(CellPlace from) const {
    if (NextCell)
        return NextCell(from);
    for (int row = from.row; row < m_table->rows(); ++row)
        for (int column = row == from.row ? from.column + 1 : 0; column < m_table->columnCount(); ++column)
            if (!isColumnHidden(column) && mayEdit({row, column}))
                return CellPlace{row, column};
    return std::nullopt;
}

std::optional<CellPlace> CellGrid::previousCell(CellPlace from) const {
    for (int row = from.row; row >= 0; --row)
        for (int column = row == from.row ? from.column - 1 : m_table->columnCount() - 1; column >= 0;
             --column)
            if (!isColumnHidden(column) && mayEdit({row, column}))
                return CellPlace{row, column};
    return std::nullopt;
}

void CellGrid::keyPressEvent(QKeyEvent* event) {
    const bool menu = event->key() == Qt::Key_Menu ||
                      (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (menu) {
        raiseContextMenu();
    } else if (event->key() == Qt::Key_Delete && currentIndex().isValid()) {
        common::guarded(common::Origin::User, [this] { m_table->requestDelete(place().row); });
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
               currentIndex().isValid()) {
        if (mayEdit(place()) && !(EnterLeadsOn && EnterLeadsOn(place())))
            edit(currentIndex());
        else
            leaveTo(nextCell(place()), place(), true);
    } else {
        QTableView::keyPressEvent(event);
    }
}

void CellGrid::showRefused(const QModelIndex& index) {
    constexpr int kBlinkMilliseconds = 400;
    m_blinking = index;
    viewport()->update();
    QApplication::beep();
    if (m_leftByClick) {
        m_refusedByClick = true;
        new EndOfClick(this, [this] { m_refusedByClick = false; });
    }
    QTimer::singleShot(kBlinkMilliseconds, this, [this] {
        m_blinking = QModelIndex();
        viewport()->update();
    });
}

void CellGrid::raiseContextMenu() {
    if (!currentIndex().isValid())
        return;
    const QPoint corner = visualRect(currentIndex()).bottomLeft();
    Q_EMIT cellContextMenu(place().row, place().column, viewport()->mapToGlobal(corner));
}

void CellGrid::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->pos());
    if (event->button() != Qt::RightButton) {
        QTableView::mousePressEvent(event);
        if (event->button() == Qt::LeftButton && index.isValid())
            Q_EMIT cellClicked(index.row(), index.column());
        return;
    }
    if (!index.isValid() || !finishEdit())
        return;
    setFocus(Qt::MouseFocusReason);
    goTo({index.row(), index.column()});
    Q_EMIT cellContextMenu(index.row(), index.column(), event->globalPosition().toPoint());
}

void CellGrid::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse button and the menu key have raised the signal already.
    event->accept();
}

void CellGrid::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    const bool byKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                       event->reason() == Qt::ShortcutFocusReason;
    if (byKey && m_table && !currentIndex().isValid() && m_table->rows() > 0)
        if (const auto first = mayEdit({0, 0}) ? std::optional(CellPlace{}) : nextCell({0, 0}))
            goTo(*first);
}

void CellGrid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    showOffers();
}

void CellGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!current.isValid())
        return;
    Q_EMIT cellEntered(current.row(), current.column());
    openIfWanted(current);
}

void CellGrid::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                           const QList<int>& roles) {
    QTableView::dataChanged(topLeft, bottomRight, roles);
    // A row that has become blank, or is no longer, shows its other numbers differently.
    if (BlankRow && topLeft.row() == bottomRight.row() && !isColumnHidden(topLeft.column()))
        viewport()->update(0, rowViewportPosition(topLeft.row()), viewport()->width(),
                           rowHeight(topLeft.row()));
}

void CellGrid::openIfWanted(const QModelIndex& index) {
    const bool wanted = m_openOnEnter.contains(index.column()) && !m_holdEditor && isVisible();
    if (wanted && currentIndex() == index && mayEdit({index.row(), index.column()}))
        edit(index);
}

} // namespace platform
