#pragma once
#include "store/RowMark.h"
#include <QString>
#include <array>
#include <optional>
#include <vector>

/// The shop's opening hours, its two lead times, whether it is open, and its address for confirmations.
namespace modOnlineShopSettingsBestellzeiten {

/// A period of a day: from hour and minute, to hour and minute, as "00"; "" where nothing is stored.
struct Periode {
    std::array<QString, 4> zeiten;
    bool geschlossen = false;
};

struct Wochentag {
    /// 1 is Monday, 7 Sunday.
    qint64 lngWochentag = 0;
    Periode mittag, abend;
};

struct Lieferzeiten {
    /// In minutes.
    qint64 lng_Abholzeit = 0;
    qint64 lng_LastOrder = 0;
    bool geschlossen = false;
    QString txt_EMailAdresse;
};

struct Bestellzeiten {
    std::vector<Wochentag> tage;
    std::optional<Lieferzeiten> lieferzeiten;
};

Bestellzeiten LoadBestellzeiten();
/// What LoadBestellzeiten reads.
store::RowMark MarkBestellzeiten();
/// A weekday that has no row is not saved; the row of the lead times is added where it is missing. All of it
/// or nothing. `tage` holds Monday first, `lieferzeiten` are there.
void SaveBestellzeiten(const Bestellzeiten& zeiten, const store::RowMark& mark = {});

} // namespace modOnlineShopSettingsBestellzeiten
