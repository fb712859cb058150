#pragma once
#include "platform/Services.h"
#include <QWidget>
#include <memory>

namespace Ui {
class frmSystemMessagesService;
}

/// Shows the message of the system's administrator, and sends him one.
class frmSystemMessagesService : public QWidget {
    Q_OBJECT
  public:
    explicit frmSystemMessagesService(const platform::Services& services, QWidget* parent = nullptr);
    ~frmSystemMessagesService() override;

    /// The one that was told last.
    void showSystemMessage();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void drawCode();
    void cmdReadMessage_Click();
    void cmdSend_Click();
    /// Whether the server confirmed; what is wrong has been told.
    bool request(const QString& script, const QString& value, const QString& title);
    void tell(const QString& text, const QString& title);

    std::unique_ptr<Ui::frmSystemMessagesService> m_ui;
    platform::Services m_services;
};
