#pragma once
#include "reporting/frmProduktUmsatz.h"
#include <memory>

namespace Ui {
class frmAuswertungenUmsatzProdukte;
}

/// Turnover by product or category in a span of time, of all couriers or of one. The span is one of moments,
/// or of working days that end after midnight.
class frmAuswertungenUmsatzProdukte : public frmProduktUmsatz {
    Q_OBJECT
  public:
    explicit frmAuswertungenUmsatzProdukte(const platform::Services& services, QWidget* parent = nullptr);
    ~frmAuswertungenUmsatzProdukte() override;

    void CalculateUmsatzArtikelandGruppenUmsatz();

  protected:
    void showFigures() override { CalculateUmsatzArtikelandGruppenUmsatz(); }

    void printFigures() override;

  private:
    void setUpTimes();
    void enableTimes();

    std::unique_ptr<Ui::frmAuswertungenUmsatzProdukte> m_ui;
};
