#pragma once
#include "store/Lookups.h"
#include "store/RowMark.h"
#include <QString>
#include <optional>

/// Couriers, who are known by a short code.
namespace modVerwaltungKuriere {

struct Kurier {
    QString txt_Kurzzeichen;
    QString txt_Bezeichnung;
    /// 1 to 25: never renumbered, not unique.
    qint64 lng_Reihenfolge = 1;
};

/// Query of the list: lng_ID, code, name, position.
QString KuriereListe();
/// Nothing for a missing row.
std::optional<Kurier> LoadKurier(qint64 key);
/// What LoadKurier reads.
store::RowMark MarkKurier(qint64 key);
/// Adds a row when the key is not there.
void SaveKurier(const Kurier& kurier, qint64 key, const store::RowMark& mark = {});
/// Key of another courier of that code, -1 without one.
qint64 FindKurier(const QString& kurzzeichen, qint64 key);
/// False as long as a booking or a pre-order refers to the courier.
bool CanDeleteKurier(qint64 key);
void DeleteKurier(qint64 key, const store::RowMark& mark = {});

/// The code as stored if it exists, otherwise "".
QString CheckKurierKurzzeichen(const QString& kurzzeichen);
/// 0 for an unknown code.
qint64 FindKurierByKurzzeichen(const QString& kurzzeichen);
/// "" for a missing courier.
QString GetKurierKurzzeichen(qint64 kurierId);
/// Code of the courier with the lowest key, the default of a new order; "" without couriers.
QString GetFirstKurier();
/// Codes for the courier menu, in their order.
std::vector<store::Eintrag> FillKurierMenu();
/// Codes for the courier lists, the oldest first.
std::vector<store::Eintrag> FillKurierCombo();

} // namespace modVerwaltungKuriere
