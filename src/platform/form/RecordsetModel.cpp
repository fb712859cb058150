#include "platform/form/RecordsetModel.h"
#include "common/Guard.h"
#include "platform/form/Contrast.h"
#include "platform/form/FieldFormat.h"
#include "platform/form/FieldHelpers.h"
#include <QFont>

namespace platform {

RecordsetModel::RecordsetModel(QObject* parent) : QAbstractTableModel(parent) {
}

void RecordsetModel::setDataControl(DataControl& control) {
    if (m_control)
        m_control->disconnect(this);
    beginResetModel();
    m_control = &control;
    endResetModel();
    connect(&control, &DataControl::aboutToChange, this, [this] { beginResetModel(); });
    connect(&control, &DataControl::changed, this, [this] { endResetModel(); });
    connect(&control, &QObject::destroyed, this, [this] {
        beginResetModel();
        endResetModel();
    });
}

bool RecordsetModel::setColumns(std::vector<DataColumn> columns) {
    if (columns == m_columns)
        return false;
    beginResetModel();
    m_columns = std::move(columns);
    endResetModel();
    return true;
}

common::Value RecordsetModel::value(int row, int column) const {
    const bool there = m_control && m_control->isOpen() && row >= 0 && row < m_control->rowCount() &&
                       column >= 0 && column < int(m_control->Recordset().Columns().size());
    return there ? m_control->Recordset().valueAt(row, column) : common::Value();
}

void RecordsetModel::showRows(int first, int last) {
    if (m_control)
        m_control->showRows(first, last);
}

int RecordsetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !m_control ? 0 : m_control->rowCount();
}

int RecordsetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_columns.size());
}

QString RecordsetModel::note(const QModelIndex& cell) const {
    QString text;
    if (cell.isValid() && m_look.note)
        common::guarded(common::Origin::User, [&] { text = m_look.note(cell.row()); });
    return text;
}

const common::Value* RecordsetModel::held(const QModelIndex& cell) const {
    return m_control && m_control->isOpen() ? m_control->Recordset().held(cell.row(), cell.column())
                                            : nullptr;
}

QVariant RecordsetModel::data(const QModelIndex& index, int role) const {
    const DataColumn& column = m_columns.at(size_t(index.column()));
    if (role == Qt::DisplayRole) {
        const common::Value* shown = held(index);
        return shown ? formatField(*shown, column.format) : QString();
    }
    if (role == Qt::ToolTipRole) {
        const QString rowNote = note(index);
        return toolTipOf(rowNote.isEmpty() ? index.data().toString() : rowNote);
    }
    const auto looks = [&](const std::function<bool(int)>& look) {
        return look && held(index) && look(index.row());
    };
    if (role == Qt::FontRole && looks(m_look.isBold)) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    if (role == Qt::FontRole && looks(m_look.isQuiet)) {
        QFont slanted;
        slanted.setItalic(true);
        return slanted;
    }
    if (role == Qt::ForegroundRole && looks(m_look.isQuiet)) {
        const QPalette palette = qobject_cast<const QWidget*>(QObject::parent())->palette();
        return quietInk(palette, palette.color(QPalette::Base), palette.color(QPalette::AlternateBase));
    }
    if (role == Qt::TextAlignmentRole)
        return int(column.alignment | Qt::AlignVCenter);
    return {};
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= int(m_columns.size()))
        return {};
    const DataColumn& column = m_columns.at(size_t(section));
    if (role == Qt::DisplayRole)
        return column.heading;
    return role == Qt::TextAlignmentRole ? QVariant(int(column.alignment | Qt::AlignVCenter)) : QVariant();
}

} // namespace platform
