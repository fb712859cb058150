#pragma once
#include "reporting/frmAuswertung.h"
#include "reporting/modAuswertungenUmsatz.h"
#include <memory>

namespace Ui {
class frmAuswertungenUmsatz;
}

/// Turnover by day, month and year, as tables and pictures, and the total of a span. Each time the screen
/// comes to the front the tables are fresh; the total stays as it was asked for, whatever measure and courier
/// are chosen since.
class frmAuswertungenUmsatz : public frmAuswertung {
    Q_OBJECT
  public:
    explicit frmAuswertungenUmsatz(const platform::Services& services, QWidget* parent = nullptr);
    ~frmAuswertungenUmsatz() override;

  protected:
    void showFigures() override;
    void printFigures() override;
    std::vector<platform::SheetTable> sheets() const override;
    void activated() override;

  private:
    /// When the orders came, in what span and whose.
    struct PeakTimes {
        qint64 von = 0, bis = 0;
        QString kurier{}; ///< behind the span in a heading
        modAuswertungenUmsatz::Stosszeiten anzahl{};

        QString heading() const;
    };

    void setUpTables();
    void setUpPeakTimes();
    modAuswertungenUmsatz::Auswahl auswahl() const;
    bool peakTimesShown() const;
    void showTables();
    void showPictures();
    PeakTimes readPeakTimes(qint64 von, qint64 bis, const platform::Progress& progress) const;
    void showPeakTimes(const PeakTimes& counted);
    /// Of the chosen weekday, or of all.
    void showHours();

    std::unique_ptr<Ui::frmAuswertungenUmsatz> m_ui;
    const QString m_ccy;
    platform::DataControl m_tage, m_monate, m_jahre;
    modAuswertungenUmsatz::Tabellen m_tabellen;
    QString m_was; ///< measure and courier of the tables on show
    PeakTimes m_stosszeiten;
};
