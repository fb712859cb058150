#pragma once
#include "desks/CallerListDesk.h"
#include "platform/Services.h"
#include "platform/form/DataControl.h"
#include <QDialog>
#include <memory>

namespace Ui {
class frmVerwaltungAnruferListe;
}

/// Every call that the line has seen, newest first: a call that was missed can be called up later and turned
/// into an order. The modal list closes when a call was chosen.
class frmVerwaltungAnruferListe : public QDialog, public desks::CallerList {
    Q_OBJECT
  public:
    explicit frmVerwaltungAnruferListe(const platform::Services& services, QWidget* parent = nullptr);
    ~frmVerwaltungAnruferListe() override;

    void callCame() override;

  private:
    void setUpGrid();
    void FormatGrid();
    void markRow(int row);
    /// Who made the marked call.
    void showCaller();
    void SelectKundeVonAnruferListe(int row);
    void cmdDelete_Click();

    std::unique_ptr<Ui::frmVerwaltungAnruferListe> m_ui;
    platform::Services m_services;
    platform::DataControl DataControl;
};
