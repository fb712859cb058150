#pragma once
#include <QStyledItemDelegate>

namespace platform {

class CellGrid;

/// Paints the kinds of cells and carries the editor's keys to the grid.
class CellDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit CellDelegate(CellGrid& grid);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    /// Takes an untouched text over as nothing done.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QString nameOf(const QModelIndex& index) const;

    CellGrid& m_grid;
};

} // namespace platform
