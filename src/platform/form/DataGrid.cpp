#include "platform/form/DataGrid.h"
#include "platform/form/GridColors.h"
#include "platform/form/RecordsetModel.h"
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

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
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumHeight(fontMetrics().height() + 8);
}

void DataGrid::setDataControl(DataControl& control) {
    m_model->setDataControl(control);
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
    for (int i = 0; i < int(columns.size()); ++i) {
        const int width = twipsToPixels(columns[size_t(i)].twips);
        setColumnHidden(i, width == 0);
        horizontalHeader()->setSectionResizeMode(i, i == m_stretched ? QHeaderView::Stretch
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

int DataGrid::rowCount() const {
    return m_model->rowCount();
}

void DataGrid::setRow(int row) {
    for (int column = 0; column < m_model->columnCount(); ++column)
        if (!isColumnHidden(column))
            return setCurrentIndex(m_model->index(row, column));
}

common::Value DataGrid::value(int row, int column) const {
    return m_model->value(row, column);
}

void DataGrid::keyPressEvent(QKeyEvent* event) {
    const int before = row();
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool menu = event->key() == Qt::Key_Menu ||
                      (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (enter && before >= 0) {
        Q_EMIT rowActivated(before);
    } else if (menu) {
        Q_EMIT rowContextMenu(before, viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
    } else {
        QTableView::keyPressEvent(event);
        if (row() != before && row() >= 0)
            Q_EMIT rowChosen(row());
    }
}

void DataGrid::mousePressEvent(QMouseEvent* event) {
    const int pressed = indexAt(event->pos()).row();
    m_pressedRow = event->button() == Qt::LeftButton ? pressed : -1;
    if (event->button() != Qt::RightButton)
        return QTableView::mousePressEvent(event);
    setFocus(Qt::MouseFocusReason);
    if (pressed >= 0)
        setRow(pressed);
    Q_EMIT rowContextMenu(pressed, event->globalPosition().toPoint());
}

void DataGrid::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    const int released = indexAt(event->pos()).row();
    const bool click = event->button() == Qt::LeftButton && released >= 0 && released == m_pressedRow;
    m_pressedRow = -1;
    if (!click)
        return;
    Q_EMIT rowChosen(released);
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
    if (event->reason() != Qt::MouseFocusReason && row() < 0 && rowCount() > 0)
        setRow(0);
}

bool DataGrid::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const QModelIndex cell = indexAt(static_cast<QHelpEvent*>(event)->pos());
        if (!cell.isValid() || sizeHintForIndex(cell).width() <= columnWidth(cell.column())) {
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
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                     m_emptyText);
}

} // namespace platform
