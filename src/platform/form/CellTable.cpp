#include "platform/form/CellTable.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include <QScopeGuard>

using common::Value;

namespace platform {

CellTable::CellTable(std::vector<CellColumn> columns, int rows, QObject* parent) :
    QAbstractTableModel(parent), m_columns(std::move(columns)), m_rows(size_t(rows), emptyRow()) {
}

Value CellTable::blankValue(size_t column) const {
    const CellColumn& info = m_columns[column];
    return info.type == CellColumn::Type::Number ? Value(info.blank) : Value(QString());
}

CellTable::Row CellTable::emptyRow() const {
    Row row;
    row.cells.reserve(m_columns.size());
    for (size_t column = 0; column < m_columns.size(); ++column)
        row.cells.push_back({blankValue(column), CellKind::Field});
    return row;
}

int CellTable::column(QStringView name) const {
    for (size_t i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].name == name)
            return int(i);
    return -1;
}

const Value& CellTable::cell(int row, int column) const {
    return cellAt(row, column).value;
}

void CellTable::setCell(int row, int column, const Value& value) {
    const bool isNumber = m_columns.at(size_t(column)).type == CellColumn::Type::Number;
    Value taken = isNumber ? Value(value.toDouble()) : value.isText() ? value : Value(value.toText());
    Row& target = m_rows.at(size_t(row));
    Value& held = target.cells.at(size_t(column)).value;
    // A view has nothing to do where nothing changes, and most of what is cleared is empty already.
    if (held == taken)
        return;
    held = std::move(taken);
    target.untouched = false;
    const QModelIndex changed = index(row, column);
    Q_EMIT dataChanged(changed, changed);
}

void CellTable::clearRow(int row) {
    Row& target = m_rows.at(size_t(row));
    if (target.untouched)
        return;
    for (size_t column = 0; column < target.cells.size(); ++column)
        target.cells[column].value = blankValue(column);
    target.untouched = true;
    Q_EMIT dataChanged(index(row, 0), index(row, int(m_columns.size()) - 1));
}

CellTable::Content CellTable::content() const {
    Content content;
    for (int row = 0; row < rows(); ++row) {
        if (isUntouched(row))
            continue;
        std::vector<Value>& values = content.emplace_back(row, std::vector<Value>()).second;
        for (int column = 0; column < columnCount(); ++column)
            values.push_back(cell(row, column));
    }
    return content;
}

void CellTable::putBack(const Content& content) {
    auto held = content.begin();
    for (int row = 0; row < rows(); ++row) {
        if (held == content.end() || held->first != row) {
            clearRow(row);
            continue;
        }
        for (int column = 0; column < columnCount(); ++column)
            setCell(row, column, held->second[size_t(column)]);
        ++held;
    }
}

void CellTable::setCaption(int column, const QString& caption) {
    m_columns.at(size_t(column)).caption = caption;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void CellTable::setKind(int row, int column, CellKind kind) {
    m_rows.at(size_t(row)).cells.at(size_t(column)).kind = kind;
    const QModelIndex changed = index(row, column);
    Q_EMIT dataChanged(changed, changed);
}

CellKind CellTable::kind(int row, int column) const {
    return cellAt(row, column).kind;
}

void CellTable::setRows(int count) {
    if (count < rows()) {
        beginRemoveRows({}, count, rows() - 1);
        m_rows.resize(size_t(count));
        endRemoveRows();
    } else if (count > rows()) {
        beginInsertRows({}, rows(), count - 1);
        m_rows.resize(size_t(count), emptyRow());
        endInsertRows();
    }
}

void CellTable::removeRow(int row) {
    Q_ASSERT(row >= 0 && row < rows());
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
}

bool CellTable::mayEdit(int row, int column) const {
    return kind(row, column) == CellKind::Field && (!BeforeEdit || BeforeEdit(row, column));
}

bool CellTable::endEdit(int row, int column, const QString& editorText) {
    Value editor(editorText);
    if (m_columns.at(size_t(column)).type == CellColumn::Type::Number) {
        const std::optional<double> number = common::parseNumber(editorText);
        if (!number && !editorText.trimmed().isEmpty())
            return false;
        editor = number ? Value(*number) : Value();
    }
    bool cancel = false;
    if (BeforeEndEdit)
        BeforeEndEdit(row, column, editor, cancel);
    if (cancel)
        return false;
    const Value before = cell(row, column);
    setCell(row, column, editor);
    auto keep = qScopeGuard([&] { setCell(row, column, before); });
    if (Change)
        Change(row, column);
    keep.dismiss();
    return true;
}

void CellTable::requestDelete(int row) {
    if (BeforeDelete)
        BeforeDelete(row);
}

int CellTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows();
}

int CellTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant CellTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const CellColumn& column = m_columns[size_t(index.column())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (!column.form.isEmpty())
            return common::formatNumber(number(index.row(), index.column()), column.form);
        return text(index.row(), index.column());
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter |
                   (column.type == CellColumn::Type::Number ? Qt::AlignRight : Qt::AlignLeft));
    case KindRole:
        return int(kind(index.row(), index.column()));
    default:
        return {};
    }
}

bool CellTable::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    bool accepted = false;
    common::guarded(common::Origin::User,
                    [&] { accepted = endEdit(index.row(), index.column(), value.toString()); });
    return accepted;
}

Qt::ItemFlags CellTable::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (mayEdit(index.row(), index.column()))
        flags |= Qt::ItemIsEditable;
    return flags;
}

QVariant CellTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < int(m_columns.size()))
        return m_columns[size_t(section)].caption;
    return {};
}

} // namespace platform
