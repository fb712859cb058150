#include "platform/form/CellDelegate.h"
#include "platform/form/CellGrid.h"
#include "platform/form/GridColors.h"
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QScopedValueRollback>

namespace platform {
namespace {

/// The window inside the main window that the widget belongs to, else its own; null for none.
const QWidget* screenOf(const QWidget* widget) {
    while (widget && !widget->isWindow() && !qobject_cast<const QMdiSubWindow*>(widget))
        widget = widget->parentWidget();
    return widget;
}

} // namespace

CellDelegate::CellDelegate(CellGrid& grid) : QStyledItemDelegate(&grid), m_grid(grid) {
}

/// The column's caption; in a table without captions the text in front of the cell says what it holds.
QString CellDelegate::nameOf(const QModelIndex& index) const {
    const QString caption = m_grid.model()->headerData(index.column(), Qt::Horizontal).toString();
    return caption.isEmpty() ? index.siblingAtColumn(index.column() - 1).data().toString() : caption;
}

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
    auto* editor = new QLineEdit(parent);
    editor->setFrame(false);
    editor->setObjectName(QStringLiteral("cellEditor"));
    editor->setAccessibleName(nameOf(index));
    // The grid's own menu is the one that counts in a cell.
    editor->setContextMenuPolicy(Qt::NoContextMenu);
    if (!m_grid.table()->cell(index.row(), index.column()).isText())
        editor->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_grid.m_editor = editor;
    m_grid.m_refused = false;
    connect(editor, &QLineEdit::textEdited, &m_grid, &CellGrid::textKeyed);
    return editor;
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    auto* line = qobject_cast<QLineEdit*>(editor);
    if (!line || !line->isModified())
        return;
    const QString typed = line->text();
    // A handler of the edit may show a message, and the focus that it takes comes back here.
    line->setModified(false);
    if (m_grid.takeOffer())
        return;
    m_grid.m_refused = !model->setData(index, typed, Qt::EditRole);
    if (m_grid.m_refused)
        m_grid.showRefused(index);
}

void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const auto kind = CellKind(index.data(CellTable::KindRole).toInt());
    const bool number = !m_grid.table()->cell(index.row(), index.column()).isText();
    option->displayAlignment = Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft);
    option->textElideMode = Qt::ElideRight;
    if (kind == CellKind::ReadOnly || (m_grid.m_zebra && index.row() % 2 == 0))
        option->backgroundBrush = quietGrey(option->palette);
    if (number && m_grid.BlankRow && m_grid.BlankRow(index.row()))
        option->text.clear();
    if (m_grid.Indented && m_grid.Indented({index.row(), index.column()}))
        option->text.prepend(QString(4, QChar(QChar::Nbsp)));
    if (index.row() == m_grid.m_strongRow) {
        constexpr double kLarger = 4;
        option->font.setPointSizeF(option->font.pointSizeF() + kLarger);
        option->font.setBold(true);
    }
    if (index == m_grid.m_blinking) {
        const QColor ground = refusedTint(option->palette);
        option->state &= ~QStyle::State_Selected;
        option->backgroundBrush = ground;
        option->palette.setColor(QPalette::Text, readable(option->palette.color(QPalette::Text), ground));
    }
}

bool CellDelegate::eventFilter(QObject* object, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(object);
    // Whoever looks at another window comes back to what he was typing.
    if (editor && event->type() == QEvent::FocusOut &&
        screenOf(QApplication::focusWidget()) != screenOf(editor))
        return false;
    if (editor && event->type() == QEvent::KeyPress &&
        m_grid.editorKey(editor, static_cast<QKeyEvent*>(event)))
        return true;
    const QScopedValueRollback leaving(m_grid.m_leftByClick, event->type() == QEvent::FocusOut &&
                                                                 static_cast<QFocusEvent*>(event)->reason() ==
                                                                     Qt::MouseFocusReason);
    // Keys that act at the press must not reach the main window as shortcuts first.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

} // namespace platform
