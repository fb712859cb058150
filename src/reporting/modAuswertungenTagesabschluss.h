#pragma once
#include "platform/Progress.h"
#include <QString>
#include <vector>

/// The close of the day: what a business day, or a span of them, brought in, and what each courier owes the
/// till. Cancelled orders count nowhere but in their own list.
namespace modAuswertungenTagesabschluss {

/// A span of business days as moments: `von` belongs to it, `bis` does not, so that no order stands in two
/// closes. A business day begins and ends at the hour of the settings (SysFiktiverTag).
struct Spanne {
    double von, bis;
};

/// Both days included, as whole serials; empty where the last one comes first.
Spanne Geschaeftstage(qint64 von, qint64 bis);
/// The business day that runs at a moment.
qint64 GeschaeftstagVon(double moment);

struct MwstZeile {
    double satz;                  ///< percent
    double netto, steuer, brutto; ///< netto in whole rappen, steuer what is left of brutto
};

struct Kondition {
    QString txt_Konditionen;
    qint64 anzahl = 0;
    double umsatz = 0;
    bool bar = false; ///< what is paid so comes to the till in cash
};

struct KurierAbrechnung {
    QString kurier; ///< his code
    qint64 anzahl = 0;
    double umsatz = 0;
    double bar = 0; ///< of it in cash: what he owes the till
};

struct Tagesabschluss {
    qint64 bestellungen = 0;
    std::vector<qint64> storniert; ///< their numbers, ascending
    double umsatz = 0, rabatt = 0;
    std::vector<MwstZeile> mwst;           ///< by rate, ascending
    std::vector<Kondition> konditionen;    ///< by name; those that SetBar told also without an order
    std::vector<KurierAbrechnung> kuriere; ///< by code

    MwstZeile mwstTotal() const;
    double bar() const;
};

Tagesabschluss LoadTagesabschluss(const Spanne& spanne,
                                  const platform::Progress& progress = platform::unwatched);

/// Whether orders of these conditions count as cash; without regard to case and blanks around them. One that
/// was told once stays in the list of each close.
void SetBar(const QString& konditionen, bool bar);

/// Fills the print tables of the close, which are made where the print database lacks them.
void FillPrintTagesabschluss(const Tagesabschluss& abschluss, const QString& zeitraum, const QString& ccy);

} // namespace modAuswertungenTagesabschluss
