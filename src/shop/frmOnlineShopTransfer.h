#pragma once
#include "platform/Services.h"
#include <QWidget>
#include <memory>

namespace Ui {
class frmOnlineShopTransfer;
}

namespace mod_InternetTransfer {
class Transfer;
}

/// Brings catalogue and pictures to the web shop's server. A run takes its time with the event loop running;
/// whatever closes the screen meanwhile gives the run up, and the screen goes once it has come to its end.
class frmOnlineShopTransfer : public QWidget {
    Q_OBJECT
  public:
    explicit frmOnlineShopTransfer(const platform::Services& services, QWidget* parent = nullptr);
    ~frmOnlineShopTransfer() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void showAddresses();
    /// While the consent is given and no run is under way.
    void enableUpdate();
    void cmdUpdate_Click();
    /// Gives how it went.
    QString run();

    std::unique_ptr<Ui::frmOnlineShopTransfer> m_ui;
    platform::Services m_services;
    /// The run that is under way.
    mod_InternetTransfer::Transfer* m_transfer = nullptr;
    bool m_closing = false;
};
