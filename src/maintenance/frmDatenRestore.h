#pragma once
#include "maintenance/frmDatensicherung.h"
#include <memory>

namespace Ui {
class frmDatenRestore;
}

/// Reads a backup in, or one of the daily copies.
class frmDatenRestore : public frmDatensicherung {
    Q_OBJECT
  public:
    explicit frmDatenRestore(const platform::Services& services, QWidget* parent = nullptr);
    ~frmDatenRestore() override;

  private:
    void fillSicherungen();
    void cmdLoadFile_Click();
    void choose(const QString& path);
    void cmdBackup_Click();

    std::unique_ptr<Ui::frmDatenRestore> m_ui;
};
