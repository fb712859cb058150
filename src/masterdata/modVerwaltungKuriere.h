#pragma once
#include <QString>
#include <vector>

/// Lookups of couriers, who are known by a short code.
namespace modVerwaltungKuriere {

struct KurierEintrag {
    qint64 lng_ID;
    QString txt_Kurzzeichen;
};

/// The code as stored if it exists, otherwise "".
QString CheckKurierKurzzeichen(const QString& kurzzeichen);
/// 0 for an unknown code.
qint64 FindKurierByKurzzeichen(const QString& kurzzeichen);
/// "" for a missing courier.
QString GetKurierKurzzeichen(qint64 kurierId);
/// Code of the courier with the lowest key, the default of a new order; "" without couriers.
QString GetFirstKurier();
/// Entries of the courier menu in their order.
std::vector<KurierEintrag> FillKurierMenu();

} // namespace modVerwaltungKuriere
