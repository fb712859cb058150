#pragma once
#include "platform/Services.h"
#include <QDialog>
#include <memory>

namespace Ui {
class frmInternetEMailConfo;
}

/// Confirms a web order to its customer. The mail itself is sent by the system's server.
class frmInternetEMailConfo : public QDialog {
    Q_OBJECT
  public:
    explicit frmInternetEMailConfo(const platform::Services& services, QWidget* parent = nullptr);
    ~frmInternetEMailConfo() override;

  private:
    void LoadDefaultMessage();
    void cmdSend_Click();

    std::unique_ptr<Ui::frmInternetEMailConfo> m_ui;
    platform::Services m_services;
};
