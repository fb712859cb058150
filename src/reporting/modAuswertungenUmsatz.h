#pragma once
#include "platform/Progress.h"
#include <QStringList>
#include <array>
#include <optional>
#include <vector>

/// Turnover by day, month and year, straight from the heads of the booked orders. Whatever the table holds is
/// added, a cancelled order with its zeros.
namespace modAuswertungenUmsatz {

/// What is added up, and whose.
struct Auswahl {
    bool mwst = false;                    ///< the VAT amounts instead of the turnover
    std::optional<qint64> lng_KurierID{}; ///< nothing: all couriers
};

struct Tag {
    qint64 lng_BestellDatum;
    double TotalUmsatz;
};

/// What the day table holds.
constexpr int kTage = 24;
/// Months and years of their tables, and lines of the paper.
constexpr int kPerioden = 12;
using Perioden = std::array<double, kPerioden>;

/// The three tables, all of one pass over the sums of the days.
struct Tabellen {
    std::vector<Tag> tage; ///< the most recent days that have a booking, newest first, kTage at most
    /// January to December of the current year, the current year and the eleven before it, oldest first. Only
    /// the ends of the periods count, the firm's practice: January holds all earlier years as well, the
    /// oldest year all before it, and what lies behind this year is in neither.
    Perioden monate{}, jahre{};
    QStringList monatsPerioden{}, jahresPerioden{}; ///< their names
    /// The months of this year and of the one before, each by itself, for the picture.
    Perioden monateDiesesJahr{}, monateVorjahr{};
};

/// 29 or 28.
int GetTageFebruar(int year);

/// The total of a span of days, both included; 0 where the end comes first.
double LoadUmsatzPeriode(qint64 von, qint64 bis, const Auswahl& auswahl,
                         const platform::Progress& progress = platform::unwatched);
Tabellen LoadUmsatzTabellen(const Auswahl& auswahl, const platform::Progress& progress = platform::unwatched);

/// The names of the periods: "Jan-2026", "2015".
QStringList LoadMonatsPerioden();
QStringList LoadJahresPerioden();

/// Orders by weekday (0 is Monday) and hour of their booking, without the cancelled ones.
using Stosszeiten = std::array<std::array<double, 24>, 7>;
Stosszeiten LoadStosszeiten(qint64 von, qint64 bis, const std::optional<qint64>& lng_KurierID,
                            const platform::Progress& progress = platform::unwatched);

/// The newest twelve days, the months and the years side by side, into the print table.
void FillPrintUmsatz(const Tabellen& tables, const QString& ccy, const platform::Progress& progress);

} // namespace modAuswertungenUmsatz
