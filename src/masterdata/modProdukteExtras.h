#pragma once
#include "masterdata/Artikel.h"
#include "platform/Progress.h"
#include "store/Recordset.h"
#include <QString>
#include <optional>

/// The extras that can be added to an order line.
namespace modProdukteExtras {

struct Extra {
    QString txt_Extra;
    masterdata::Artikel Artikel{};
};

/// Query of the list: one row an extra and price group.
QString ExtrasListe();
/// Puts the rows of that query into the print table.
void FillArtikelZusatzStamm(store::Recordset& rows, const platform::Progress& progress);

/// Nothing for a missing row.
std::optional<Extra> LoadExtra(qint64 key);
/// What LoadExtra reads.
store::RowMark MarkExtra(qint64 key);
/// Head and ten prices in one transaction; adds a row when the key is not there.
void SaveExtra(const Extra& extra, qint64 key, const store::RowMark& mark = {});
/// Key of another extra of that name, active or not; -1 without one.
qint64 FindExtra(const QString& name, qint64 key);
/// Whether a product offers the stored extra that is about to become inactive.
bool HasExtraProdukte(qint64 key, bool inactive);
/// False as long as a product offers it or a booking or pre-order holds it.
bool CanDeleteExtra(qint64 key);
void DeleteExtra(qint64 key, const store::RowMark& mark = {});

/// True for a missing extra as well. Uses RsSecond, since its callers hold RsMain.
bool IsExtraInaktiv(qint64 key);
/// True for a missing extra as well. Uses RsSecond, since its callers hold RsMain.
bool IsExtraInternet(qint64 key);

/// "" for a missing extra.
QString GetExtraName(qint64 extraId);

} // namespace modProdukteExtras
