#include "platform/form/DataGrid.h"
#include "common/Guard.h"
#include "platform/form/Contrast.h"
#include "platform/form/GridColors.h"
#include "platform/form/RecordsetModel.h"
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <utility>

namespace platform {

DataGrid::DataGrid(QWidget* parent) :
    QTableView(parent), m_model(new RecordsetModel(this)), m_emptyText(tr("Keine Einträge")) {
    setModel(m_model);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setVerticalScrollMode(ScrollPerItem);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumHeight(fontMetrics().height() + 8);
    viewport()->setMouseTracking(true);
    connect(this, &DataGrid::entered, this, [this](const QModelIndex& cell) { notice(cell.row()); });
    connect(this, &DataGrid::viewportEntered, this, [this] { notice(-1); });
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] { notice(-1); });
}

void DataGrid::setDataControl(DataControl& control) {
    m_model->setDataControl(control);
    readShownRows();
}

void DataGrid::formatColumns(std::vector<DataColumn> columns) {
    if (m_model->setColumns(std::move(columns)))
        applyColumns();
}

const std::vector<DataColumn>& DataGrid::columns() const {
    return m_model->columns();
}

void DataGrid::stretchColumn(int column) {
    if (column == m_stretched)
        return;
    m_stretched = column;
    applyColumns();
}

void DataGrid::applyColumns() {
    const auto& columns = m_model->columns();
    const auto widest = std::max_element(columns.begin(), columns.end(),
                                         [](const auto& a, const auto& b) { return a.twips < b.twips; });
    const int filling = m_stretched >= 0 ? m_stretched : int(widest - columns.begin());
    for (int i = 0; i < int(columns.size()); ++i) {
        const int width = twipsToPixels(columns[size_t(i)].twips);
        setColumnHidden(i, width == 0);
        horizontalHeader()->setSectionResizeMode(i, i == filling ? QHeaderView::Stretch
                                                                 : QHeaderView::Interactive);
        constexpr int kCellMargins = 8;
        const int text = fontMetrics().horizontalAdvance(columns[size_t(i)].widest) + kCellMargins;
        if (width > 0)
            setColumnWidth(i, std::max({width, text, horizontalHeader()->sectionSizeHint(i)}));
    }
}

void DataGrid::setEmptyText(const QString& text) {
    m_emptyText = text;
    viewport()->update();
}

void DataGrid::setRowLook(RowLook look) {
    m_model->setRowLook(std::move(look));
}

int DataGrid::rowCount() const {
    return m_model->rowCount();
}

QModelIndex DataGrid::firstCell(int row) const {
    for (int column = 0; column < m_model->columnCount(); ++column)
        if (!isColumnHidden(column))
            return m_model->index(row, column);
    return {};
}

int DataGrid::markedRow() const {
    const QModelIndexList marked = selectionModel()->selectedRows();
    return marked.isEmpty() ? -1 : marked.first().row();
}

void DataGrid::setRow(int row) {
    setCurrentIndex(firstCell(row));
}

void DataGrid::standAt(int row) {
    clearSelection();
    selectionModel()->setCurrentIndex(firstCell(row), QItemSelectionModel::NoUpdate);
}

void DataGrid::passOver(int row) {
    standAt(row);
    m_passedOver = currentIndex();
}

void DataGrid::refreshInPlace(const std::function<void()>& refresh) {
    const int before = row(), top = verticalScrollBar()->value();
    const bool marked = markedRow() >= 0;
    const common::Value key = value(before, 0);
    refresh();
    int now = before < 0 ? rowCount() : 0;
    while (now < rowCount() && value(now, 0).toLong() != key.toLong())
        ++now;
    now = now < rowCount() ? now : -1;
    marked&& now >= 0 ? setRow(now) : standAt(now);
    verticalScrollBar()->setValue(top);
}

QItemSelectionModel::SelectionFlags DataGrid::selectionCommand(const QModelIndex& index,
                                                               const QEvent*) const {
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::SelectionFlags(QItemSelectionModel::NoUpdate);
}

common::Value DataGrid::value(int row, int column) const {
    return m_model->value(row, column);
}

void DataGrid::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool menu = event->key() == Qt::Key_Menu ||
                      (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    const bool arrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    const int before = markedRow();
    const bool goesOn = m_passedOver.isValid() && m_passedOver == currentIndex();
    if (enter && row() >= 0) {
        Q_EMIT rowActivated(row());
    } else if (menu) {
        Q_EMIT rowContextMenu(row(), viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
    } else if (arrow && before < 0 && !goesOn && rowCount() > 0) {
        setRow(qMax(row(), 0));
        Q_EMIT rowChosen(row());
    } else {
        QTableView::keyPressEvent(event);
        if (markedRow() >= 0 && markedRow() != before)
            Q_EMIT rowChosen(markedRow());
    }
}

void DataGrid::mousePressEvent(QMouseEvent* event) {
    const QModelIndex pressed = indexAt(event->pos());
    m_pressedRow = event->button() == Qt::LeftButton ? pressed.row() : -1;
    if (event->button() != Qt::RightButton) {
        QTableView::mousePressEvent(event);
        if (m_pressedRow >= 0)
            Q_EMIT rowChosen(m_pressedRow);
        return;
    }
    setFocus(Qt::MouseFocusReason);
    // A menu on the chosen row leaves it as it is.
    if (pressed.isValid() && pressed.row() != markedRow()) {
        setCurrentIndex(pressed);
        Q_EMIT rowChosen(pressed.row());
    }
    Q_EMIT rowContextMenu(pressed.row(), event->globalPosition().toPoint());
}

void DataGrid::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

void DataGrid::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    const int released = indexAt(event->pos()).row();
    const bool click = event->button() == Qt::LeftButton && released >= 0 && released == m_pressedRow;
    m_pressedRow = -1;
    if (click)
        Q_EMIT rowClicked(released);
}

void DataGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    const int clicked = indexAt(event->pos()).row();
    if (event->button() == Qt::LeftButton && clicked >= 0)
        Q_EMIT rowActivated(clicked);
}

void DataGrid::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse button and the menu key have raised the signal already.
    event->accept();
}

void DataGrid::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    // Whoever comes by keyboard sees where the arrows start; nothing counts as chosen by that.
    if (!m_overMask && event->reason() != Qt::MouseFocusReason && markedRow() < 0 && rowCount() > 0)
        setRow(qMax(row(), 0));
    notice(row());
}

void DataGrid::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    notice(-1);
}

void DataGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (hasFocus())
        notice(current.row());
}

void DataGrid::notice(int row) {
    if (std::exchange(m_noticedRow, row) != row)
        Q_EMIT rowNoticed(row);
}

void DataGrid::readShownRows() {
    const int first = verticalScrollBar()->value();
    const int page = viewport()->height() / verticalHeader()->defaultSectionSize();
    m_model->showRows(first, first + page + 1);
}

void DataGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    common::guarded(common::Origin::User, [this] { readShownRows(); });
}

void DataGrid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dy != 0)
        common::guarded(common::Origin::User, [this] { readShownRows(); });
}

void DataGrid::keyboardSearch(const QString& typed) {
    // Of a long list only so many rows are read for it as nobody waits for.
    constexpr int kSearched = 20'000;
    const int from = rowCount() > kSearched ? qMax(row(), 0) : 0;
    m_model->showRows(from, from + kSearched);
    QTableView::keyboardSearch(typed);
    readShownRows();
}

bool DataGrid::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave)
        notice(hasFocus() ? row() : -1);
    if (event->type() == QEvent::ToolTip) {
        const auto& help = static_cast<QHelpEvent&>(*event);
        const QModelIndex cell = indexAt(help.pos());
        if (!cell.isValid()) {
            QToolTip::showText(help.globalPos(), toolTip(), viewport());
            return true;
        }
        const bool isCut = sizeHintForIndex(cell).width() > columnWidth(cell.column());
        if (!isCut && m_model->note(cell).isEmpty()) {
            QToolTip::hideText();
            return true;
        }
    }
    return QTableView::viewportEvent(event);
}

void DataGrid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (rowCount() > 0 || m_emptyText.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(quietInk(palette(), palette().color(QPalette::Base)));
    painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                     m_emptyText);
}

} // namespace platform
