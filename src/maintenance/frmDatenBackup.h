#pragma once
#include "maintenance/frmDatensicherung.h"
#include <memory>

namespace Ui {
class frmDatenBackup;
}

/// Saves all data into one file.
class frmDatenBackup : public frmDatensicherung {
    Q_OBJECT
  public:
    explicit frmDatenBackup(const platform::Services& services, QWidget* parent = nullptr);
    ~frmDatenBackup() override;

  private:
    void cmdSaveFile_Click();
    void cmdBackup_Click();

    std::unique_ptr<Ui::frmDatenBackup> m_ui;
};
