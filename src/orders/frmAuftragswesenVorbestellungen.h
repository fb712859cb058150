#pragma once
#include "desks/PreOrderDesk.h"
#include "platform/Services.h"
#include "platform/form/DataControl.h"
#include <QWidget>
#include <memory>
#include <optional>

namespace Ui {
class frmAuftragswesenVorbestellungen;
}

/// The list of pre-orders, by delivery day. Double click or Enter opens one on the order screen.
class frmAuftragswesenVorbestellungen : public QWidget, public desks::PreOrderList {
    Q_OBJECT
  public:
    /// Lists the pre-orders for today: the databases are open. The services outlive the screen.
    explicit frmAuftragswesenVorbestellungen(const platform::Services& services, QWidget* parent = nullptr);
    ~frmAuftragswesenVorbestellungen() override;

    void ShowVorbestellung(qint64 trxNr) override;
    void FormatGrid();

  private:
    void fillDates();
    void setUpControls();
    void refresh();
    void showRows(const QString& query);
    /// Name of the customer in a row, "" outside the rows.
    QString kundeIn(int row) const;
    void showKunde();
    void cmdLoad_Click();
    void cmdShowAll_Click();
    void cmdDelete_Click();
    void VorbestellungGrid_DblClick();
    /// Number of the current row; nothing without one.
    std::optional<qint64> chosen() const;

    std::unique_ptr<Ui::frmAuftragswesenVorbestellungen> m_ui;
    platform::Services m_services;
    platform::DataControl DataControl;
};
