#pragma once
#include "store/RowMark.h"
#include <QString>
#include <optional>

/// The directory of postcodes, and which of its places the firm delivers to.
namespace modOnlineShopSettingsLiefergebiete {

struct Liefergebiet {
    QString txt_Land;
    qint64 lng_PLZ = 0;
    QString txt_Ort;
    double dbl_Mindestbestellmenge = 0;
    /// In minutes.
    qint64 lng_Lieferzeiten = 0;
    /// Short name of the courier.
    QString txt_Kurier;
    bool bool_Liefergebiet = false;
};

/// Query of the list: lng_ID, then the members above.
QString Liefergebiete();

/// Nothing for a missing row.
std::optional<Liefergebiet> LoadLiefergebiet(qint64 key);
/// What LoadLiefergebiet reads.
store::RowMark MarkLiefergebiet(qint64 key);
/// Adds a row when the key is not there.
void SaveLiefergebiet(const Liefergebiet& gebiet, qint64 key, const store::RowMark& mark = {});
/// Key of the place, -1 without one.
qint64 FindLiefergebiet(const QString& land, qint64 plz, const QString& ort);
void DeleteLiefergebiet(qint64 key, const store::RowMark& mark = {});

} // namespace modOnlineShopSettingsLiefergebiete
