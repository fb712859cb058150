#pragma once
#include "maintenance/PackageFetch.h"
#include "platform/Services.h"
#include <QTimer>
#include <QWidget>
#include <memory>

namespace Ui {
class frmSystemUpdate;
}

/// What an update is, for the user and for the program.
struct Update {
    maintenance::Package package{};
    QString screen{};
    QString windowTitle{};
    QString button{};
    QString hint{};
    QString farewell{};
};

/// Fetches an update, ends the program and has the update installed. Closing the screen gives the fetching
/// up.
class frmSystemUpdate : public QWidget {
    Q_OBJECT
  public:
    /// The publisher outlives the screen.
    frmSystemUpdate(const platform::Services& services, const maintenance::Publisher& publisher,
                    Update update, QWidget* parent);
    ~frmSystemUpdate() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void cmdUpdate_Click();
    void giveUp();
    void showFetching(bool fetching);
    void showChecking();
    void showProgress(qint64 done, qint64 total);
    void fetched();
    /// Waits until the user is at rest and all other screens have brought their work to its end.
    void closeDown();
    void install();
    void startInstallation(const QString& file);

    std::unique_ptr<Ui::frmSystemUpdate> m_ui;
    platform::Services m_services;
    const maintenance::Publisher& m_publisher;
    const Update m_update;
    std::unique_ptr<maintenance::PackageFetch> m_fetch;
    QTimer m_closeDown;
};

/// The program's own update.
class frmSystemSoftwareUpdate : public frmSystemUpdate {
    Q_OBJECT
  public:
    frmSystemSoftwareUpdate(const platform::Services& services, const maintenance::Publisher& publisher,
                            QWidget* parent = nullptr);
};

/// The phone book's.
class frmSystemTelefonbuchUpdate : public frmSystemUpdate {
    Q_OBJECT
  public:
    frmSystemTelefonbuchUpdate(const platform::Services& services, const maintenance::Publisher& publisher,
                               QWidget* parent = nullptr);
};
