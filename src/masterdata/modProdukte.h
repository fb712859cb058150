#pragma once
#include "masterdata/Artikel.h"
#include "masterdata/ProductPictures.h"
#include "platform/Progress.h"
#include "store/Lookups.h"
#include "store/Recordset.h"
#include "store/RowMark.h"
#include <QList>
#include <QString>
#include <optional>

/// The products of the catalogue.
namespace modProdukte {

struct Produkt {
    /// Key of the category.
    qint64 lng_ProduktGruppe = -1;
    /// Unique within its category.
    QString txt_Kurzzeichen;
    QString txt_Produkt;
    QString txt_Beschreibung;
    masterdata::Artikel Artikel{};
    /// The pictures are published.
    bool flag_InternetBilder = false;
    masterdata::ProduktBild BildKlein{};
    masterdata::ProduktBild BildGross{};
    /// Keys of the extras that the product offers.
    QList<qint64> Extras{};
};

/// Query of the list: one row a product and price group.
QString ProdukteListe();
/// Puts the rows of that query into the print table, under the name of the category that the list shows.
void FillArtikelStamm(store::Recordset& rows, const QString& kategorie, const platform::Progress& progress);
/// Categories in their order.
std::vector<store::Eintrag> Kategorien();
/// Active extras in their order.
std::vector<store::Eintrag> AktiveExtras();

/// Nothing for a missing row.
std::optional<Produkt> LoadProdukt(qint64 key);
/// What LoadProdukt reads.
store::RowMark MarkProdukt(qint64 key);
/// Head, ten prices and extras in one transaction, together with the staged pictures; adds a row when the key
/// is not there. An extra that became inactive meanwhile is dropped. Throws RunTimeError.
void SaveProdukt(const Produkt& produkt, qint64 key, const store::RowMark& mark = {});
/// Key of another product of that code in the category, active or not; -1 without one.
qint64 FindKurzzeichen(const QString& kurzzeichen, qint64 key, qint64 kategorie);
/// False as long as it offers an extra, or a booking or pre-order holds it.
bool CanDeleteProdukt(qint64 key);
/// With its prices. Picture files stay.
void DeleteProdukt(qint64 key, const store::RowMark& mark = {});

/// "" for a missing product.
QString GetProduktKurzzeichen(qint64 produktId);
/// "" for a missing product.
QString GetProduktName(qint64 produktId);

} // namespace modProdukte
