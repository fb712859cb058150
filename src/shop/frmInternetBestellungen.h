#pragma once
#include "desks/WebOrder.h"
#include "desks/WebOrderDesk.h"
#include "platform/Services.h"
#include "platform/form/DataControl.h"
#include <QWidget>
#include <memory>
#include <optional>

namespace Ui {
class frmInternetBestellungen;
}

/// The open orders of the web shop. Double click or Enter takes one over: its customer is matched, the order
/// screen opens for him, and the lines are keyed there; booking stays the clerk's own step. The server keeps
/// the order until it is deleted here.
///
/// The rows stand in memory: a poll that replaces the orders meanwhile changes nothing here until the next
/// refresh, so that what is taken over is what is on show.
class frmInternetBestellungen : public QWidget, public desks::WebOrderList {
    Q_OBJECT
  public:
    /// Lists all orders: the databases are open. The services outlive the screen.
    explicit frmInternetBestellungen(const platform::Services& services, QWidget* parent = nullptr);
    ~frmInternetBestellungen() override;

    QString EMail() const override { return m_EMail; }

    void Refresh() override;
    void FormatGrid();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    /// An order as it stood on show.
    struct Bestellung;

    void fillDates();
    void setUpControls();
    void readRows();
    void showRows(const QString& query);
    void showDetails();
    void cmdLoad_Click();
    void cmdShowAll_Click();
    void cmdDelete_Click();
    void cmdEMailConfo_Click();
    void BestellungGrid_DblClick();

    /// The present row's; nothing without one.
    std::optional<Bestellung> chosen() const;
    bool asks(const QString& question, const QString& title);
    void tells(const QString& text, const QString& title);
    bool mayTakeOver(const desks::WebOrderId& web);
    bool takeOn(qint64 id);
    /// Whom the order is for; nothing where the take-over ends.
    std::optional<qint64> findKunde(const Bestellung& bestellung);
    std::optional<qint64> askForKunde();
    void captureKunde(const Bestellung& bestellung);
    void takeOver(const Bestellung& bestellung, qint64 kundenId);
    void fetchLines(const desks::WebOrderId& id);
    /// Answer of a script of the shop; "" when it failed, which `problem` tells.
    QString askShop(const QString& script, qint64 id, QString& problem);

    std::unique_ptr<Ui::frmInternetBestellungen> m_ui;
    platform::Services m_services;
    platform::DataControl DataControl;
    QString m_query;
    QString m_EMail;
};
