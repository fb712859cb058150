#pragma once
#include "reporting/frmProduktUmsatz.h"
#include <memory>

namespace Ui {
class frmAuswertungenUmsatzProduktePerKunde;
}

class frmKundenWahl;

/// A customer's turnover by product or category in a span of days.
class frmAuswertungenUmsatzProduktePerKunde : public frmProduktUmsatz {
    Q_OBJECT
  public:
    explicit frmAuswertungenUmsatzProduktePerKunde(const platform::Services& services,
                                                   QWidget* parent = nullptr);
    ~frmAuswertungenUmsatzProduktePerKunde() override;

    /// Does nothing without a loaded customer.
    void CalculateUmsatzArtikelandGruppenUmsatz();

  protected:
    void showFigures() override { CalculateUmsatzArtikelandGruppenUmsatz(); }

    void printFigures() override;

  private:
    std::unique_ptr<Ui::frmAuswertungenUmsatzProduktePerKunde> m_ui;
    frmKundenWahl* m_kunde;
    /// Whose turnover is on show; -1 before any is.
    qint64 m_gezeigt = -1;
};
