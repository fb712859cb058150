#pragma once
#include "platform/form/DataGrid.h"
#include <QAbstractTableModel>
#include <QPointer>

namespace platform {

/// Shows a data control's rows to a view, straight from the recordset.
class RecordsetModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    explicit RecordsetModel(QObject* parent);

    void setDataControl(DataControl& control);
    /// Whether they differ from the present ones: screens form their grid anew after each refresh.
    bool setColumns(std::vector<DataColumn> columns);

    const std::vector<DataColumn>& columns() const { return m_columns; }

    void setRowLook(RowLook look) { m_look = std::move(look); }

    /// The row's, "" for none.
    QString note(const QModelIndex& cell) const;

    /// Asks the store where the row is not in memory.
    common::Value value(int row, int column) const;
    /// Has data() show these rows, the last one included: it asks the store nothing, and a row that is not in
    /// memory shows empty.
    void showRows(int first, int last);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    /// Null where the row is not in memory.
    const common::Value* held(const QModelIndex& cell) const;

    /// A screen's control may go before its grid does.
    QPointer<DataControl> m_control;
    std::vector<DataColumn> m_columns;
    RowLook m_look;
};

} // namespace platform
