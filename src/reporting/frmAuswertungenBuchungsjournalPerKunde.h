#pragma once
#include "reporting/frmAuswertung.h"
#include <memory>

namespace Ui {
class frmAuswertungenBuchungsjournalPerKunde;
}

class frmKundenWahl;

/// The booked orders of a customer, from where each opens on the order screen; or the best customers.
class frmAuswertungenBuchungsjournalPerKunde : public frmAuswertung {
    Q_OBJECT
  public:
    explicit frmAuswertungenBuchungsjournalPerKunde(const platform::Services& services,
                                                    QWidget* parent = nullptr);
    ~frmAuswertungenBuchungsjournalPerKunde() override;

    void LoadKundenStatistik(qint64 lng_KundenID);
    void LoadTopKundenStatistik();

  protected:
    void showFigures() override;
    void printFigures() override;
    std::vector<platform::SheetTable> sheets() const override;

  private:
    void FormatGrid();
    /// Says so where none is loaded.
    bool hasKunde();
    void showPicture();
    void openBooking(int row);

    std::unique_ptr<Ui::frmAuswertungenBuchungsjournalPerKunde> m_ui;
    frmKundenWahl* m_kunde;
    platform::DataControl m_rows;
    /// Whose orders are on show; -1 for the best customers, and before anything is.
    qint64 m_gezeigt = -1;
};
