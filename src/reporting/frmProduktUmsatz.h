#pragma once
#include "reporting/frmAuswertung.h"
#include "reporting/modProduktUmsatz.h"

namespace platform {
class ChartView;
}

/// What the screens of turnover by product or category share. The layout of a screen has for it:
///
///     opt_Produkte, opt_Kategorien   what the rows are
///     ArtikelGruppenDetailsGrid      the rows
///     Bild                           the same rows as ranked bars
class frmProduktUmsatz : public frmAuswertung {
    Q_OBJECT
  protected:
    using frmAuswertung::frmAuswertung;

    /// Puts those controls to work. Headings of the names, of the turnover and, where it is shown, of the
    /// VAT.
    void setUpUmsatz(const QString& name, const QString& umsatz, const QString& mwst = {});

    /// As the options stand.
    modProduktUmsatz::Gliederung gliederung() const;
    /// `heading` tells of which span and whose the rows are.
    void showUmsatz(const modProduktUmsatz::Umsatz& figures, const QString& heading);

    /// Closed before the first ones are shown.
    store::Recordset& umsatzRows() { return m_rows.Recordset(); }

    std::vector<platform::SheetTable> sheets() const override;

  private:
    platform::DataGrid& grid() const;

    platform::DataControl m_rows;
    /// "Produkte" or "Kategorien", as the rows on show are.
    QString m_ansicht;
    QString m_heading; ///< of the rows on show
};
