#pragma once
#include "reporting/frmAuswertung.h"
#include "reporting/modAuswertungenTagesabschluss.h"
#include <memory>

namespace Ui {
class frmAuswertungenTagesabschluss;
}

/// The close of the day, on the screen, on A4 and on the roll. Opens on the business day that runs. Which
/// conditions count as cash is changed here, by a double click, Enter or cmdBar; it counts for all days.
class frmAuswertungenTagesabschluss : public frmAuswertung {
    Q_OBJECT
  public:
    explicit frmAuswertungenTagesabschluss(const platform::Services& services, QWidget* parent = nullptr);
    ~frmAuswertungenTagesabschluss() override;

  protected:
    void showFigures() override;
    void printFigures() override;
    std::vector<platform::SheetTable> sheets() const override;
    void activated() override;

  private:
    void setUpGrids();
    void showSpan(const modAuswertungenTagesabschluss::Spanne& span);
    void showAbschluss();
    store::Rows overview() const;
    /// The chosen condition counts as cash from now on, or no longer.
    void turnBar();
    void printOn(const QString& reportFile);

    std::unique_ptr<Ui::frmAuswertungenTagesabschluss> m_ui;
    platform::DataControl m_uebersicht, m_mwst, m_konditionen, m_kuriere;
    modAuswertungenTagesabschluss::Tagesabschluss m_abschluss;
    std::optional<modAuswertungenTagesabschluss::Spanne> m_spanne; ///< of the figures on show
    QString m_zeitraum;                                            ///< the same as text
};
