#pragma once
#include "platform/Services.h"
#include <QWidget>
#include <memory>

namespace Ui {
class frmSystemAbout;
}

/// Which program this is, what it stands on, and a diagnosis for whoever helps from afar.
class frmSystemAbout : public QWidget {
    Q_OBJECT
  public:
    explicit frmSystemAbout(const platform::Services& services, QWidget* parent = nullptr);
    ~frmSystemAbout() override;

  private:
    void cmdDiagnose_Click();
    /// Starts the operating system's own program that tells about the computer.
    void StartSysInfo();

    std::unique_ptr<Ui::frmSystemAbout> m_ui;
    platform::Services m_services;
};
