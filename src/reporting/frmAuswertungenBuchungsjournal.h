#pragma once
#include "reporting/frmAuswertung.h"
#include <memory>

class frmPopUpMenu;

namespace Ui {
class frmAuswertungenBuchungsjournal;
}

/// The booked orders by day and by courier, with their total. Double click or Enter opens one on the order
/// screen; a cancelled one stays here.
class frmAuswertungenBuchungsjournal : public frmAuswertung {
    Q_OBJECT
  public:
    /// Lists today's bookings: the databases are open. The services outlive the screen.
    explicit frmAuswertungenBuchungsjournal(const platform::Services& services, QWidget* parent = nullptr);
    ~frmAuswertungenBuchungsjournal() override;

    void FormatGrid();
    /// Shows the total that the query adds up.
    void DisplayTotalBetrag(const QString& sql, const platform::Progress& progress);

  protected:
    void showFigures() override;
    void printFigures() override;
    std::vector<platform::SheetTable> sheets() const override;

  private:
    void setUpGrid();
    void setUpMenu();
    void setUpFilters();
    void check_AlleBuchungen_Click();
    void check_Filter_Click();
    void mnBuchungJournal_Click(const QString& order);
    void openBuchung(int row);
    QString heading() const;

    std::unique_ptr<Ui::frmAuswertungenBuchungsjournal> m_ui;
    frmPopUpMenu* m_menus;
    platform::DataControl DataControl;
    /// The boxes as of the list on show, 0 or 1: the printout's heading tells what it holds.
    qint16 m_stateDatum = 1, m_stateKurier = 0;
    QString m_heading; ///< of the list on show
};
