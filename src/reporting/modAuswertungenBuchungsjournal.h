#pragma once
#include "platform/Progress.h"
#include <QString>
#include <optional>

/// The booked orders as a list with its total, and that list on paper.
namespace modAuswertungenBuchungsjournal {

/// Days by their whole serials, both included.
struct Zeitraum {
    qint64 von, bis;
};

/// What is listed; without a word all bookings.
struct Auswahl {
    std::optional<Zeitraum> tage{};
    std::optional<qint64> lng_KurierID{};
};

/// Columns of the list's query.
enum Column : int { kDatum, kTag, kTrxNr, kBuchungstext, kKurier, kTotal };

/// No two rows of the list share it (see store::Recordset::SetKey).
inline const QString kKey = QStringLiteral("lng_TrxNr");

/// Queries of the list, in the view's own order, and of its total.
QString Buchungen(const Auswahl& auswahl);
QString TotalBuchungen(const Auswahl& auswahl);
/// 0 where there is nothing to add up.
double TotalBetrag(const QString& sql, const platform::Progress& progress = platform::unwatched);

/// Whether a booking's text says that it was cancelled.
bool IstStorniert(const QString& buchungstext);

/// What the list holds, in words: filtered by date and by courier, or not.
QString Ueberschrift(bool datum, bool kurier, const QString& vonBis, const QString& kurierText);
/// The rows of a query of the list, read afresh, into their table of the print database.
void FillPrintBuchungsJournal(const QString& sql, const platform::Progress& progress);

} // namespace modAuswertungenBuchungsjournal
