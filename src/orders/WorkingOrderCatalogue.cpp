// How a line gets its article: the lookups in the catalogue.
#include "common/Convert.h"
#include "orders/WorkingOrder.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using common::Value;
using modAuftragswesenAuftragserfassung::GetMWStSatz;

namespace orders {

/// What a line takes from a row of the catalogue.
struct Artikel {
    qint64 lng_ID = 0;
    QString kurzzeichen, name, einheit;
    qint64 lng_Einheit = 0;
    double preis = 0, mwst = 0;
};

namespace {

QString nameColumn(bool isProdukt) {
    return isProdukt ? QStringLiteral("txt_Produkt") : QStringLiteral("txt_Extra");
}

Artikel readArtikel(store::Recordset& row, bool isProdukt) {
    Artikel artikel;
    artikel.lng_ID = row.Fields(u"lng_ID").toLong();
    artikel.kurzzeichen = isProdukt ? row.Fields(u"txt_Kurzzeichen").text() : QString();
    artikel.name = row.Fields(nameColumn(isProdukt)).text();
    artikel.einheit = row.Fields(u"txt_Stückelung").text();
    artikel.lng_Einheit = row.Fields(u"lng_Einheit").toLong();
    artikel.preis = row.Fields(u"dbl_Preis").toDouble();
    artikel.mwst = GetMWStSatz(row.Fields(u"lng_MWSt").Value());
    return artikel;
}

/// What is looked for: rows of a view, by a column that begins with what was typed or by a key.
struct Lookup {
    bool isProdukt = true;
    QString condition;
    /// The column compared with the text typed; empty for a lookup by key.
    QString column;
    QString typed;
};

/// The first row, unless a later one is called exactly as typed: whoever keys "1" does not mean "10".
std::optional<Artikel> findArtikel(const Lookup& lookup) {
    const QString view = lookup.isProdukt ? QStringLiteral("view_Verwaltung_Produkte")
                                          : QStringLiteral("view_Verwaltung_ProdukteExtras");
    std::optional<Artikel> found;
    store::OpenRecordset rows(
        RsMain, QStringLiteral("SELECT * FROM ") + view + QStringLiteral(" WHERE ") + lookup.condition,
        ConnMain);
    for (; !rows->Eof(); rows->MoveNext()) {
        // A line without a name is not stored.
        if (rows->Fields(nameColumn(lookup.isProdukt)).text().isEmpty())
            continue;
        const bool exact = lookup.column.isEmpty() ||
                           rows->Fields(lookup.column).text().compare(lookup.typed, Qt::CaseInsensitive) == 0;
        if (!found || exact)
            found = readArtikel(RsMain, lookup.isProdukt);
        if (exact)
            break;
    }
    return found;
}

QString inGruppe(int preisGruppe) {
    return QStringLiteral(" AND lng_Gruppe = ") + QString::number(preisGruppe);
}

QString beginsWith(const QString& typed) {
    return QStringLiteral(" LIKE ") + store::sqlText(typed + QLatin1Char('%'));
}

} // namespace

void WorkingOrder::FindArtikelForBestellung(int row, int col) {
    const QString typed = BestellungGrid.text(row, col);
    // An emptied cell would find the catalogue's first article.
    if ((col == Col::Kurzzeichen || col == Col::Bezeichnung) && typed.isEmpty())
        return;
    if (suche != SucheModus::Extra && (FindProduktLine(row, col) || suche == SucheModus::Produkt))
        return;
    if (col == Col::ProduktID)
        // Without a price group, unlike the products: meant so.
        FindExtraLine(row, QStringLiteral("lng_ID = ") + BestellungGrid.text(row, Col::ExtraID), QString());
    else if (col == Col::Bezeichnung)
        FindExtraLine(row, QStringLiteral("txt_Extra") + beginsWith(typed) + inGruppe(PreisGruppe), typed);
}

void WorkingOrder::FindExtraForBestellung(int row, int col) {
    // No road for products here: the table of extras bears neither short code nor price.
    if (suche == SucheModus::Produkt || col != Col::ExtraID)
        return;
    // The extra's key stands in ProduktID when this is called: meant so.
    FindExtraLine(
        row, QStringLiteral("lng_ID = ") + BestellungGrid.text(row, Col::ProduktID) + inGruppe(PreisGruppe),
        QString());
}

bool WorkingOrder::FindProduktLine(int row, int col) {
    const QString typed = BestellungGrid.text(row, col);
    Lookup lookup{true, {}, {}, typed};
    if (col == Col::ProduktID)
        lookup.condition = QStringLiteral("lng_ID = ") + typed;
    else if (col == Col::Kurzzeichen || col == Col::Bezeichnung) {
        lookup.column = col == Col::Kurzzeichen ? QStringLiteral("txt_Kurzzeichen") : nameColumn(true);
        lookup.condition = lookup.column + beginsWith(typed);
    } else
        return false;
    lookup.condition += inGruppe(PreisGruppe);
    const std::optional<Artikel> produkt = findArtikel(lookup);
    if (!produkt)
        return false;
    BestellungGrid.setCell(row, Col::ProduktID, produkt->lng_ID);
    BestellungGrid.setCell(row, Col::IsProdukt, 1);
    BestellungGrid.setCell(row, Col::ExtraID, -1);
    BestellungGrid.setCell(row, Col::Kurzzeichen, produkt->kurzzeichen);
    BestellungGrid.setCell(row, Col::Rabatt, 0);
    FillArtikel(row, *produkt, produkt->lng_Einheit);
    Q_EMIT ExtrasOffered(produkt->lng_ID);
    return true;
}

void WorkingOrder::FindExtraLine(int row, const QString& condition, const QString& typed) {
    if (row == 0 || BestellungGrid.text(row - 1, Col::Ccy).isEmpty())
        return;
    const QString column = typed.isEmpty() ? QString() : nameColumn(false);
    const std::optional<Artikel> extra = findArtikel({false, condition, column, typed});
    if (!extra)
        return;
    // Whoever picks an extra has set its keys.
    if (suche == SucheModus::Keyed && !typed.isEmpty())
        HangUnderLineAbove(row, extra->lng_ID);
    FillArtikel(row, *extra, 0);
}

void WorkingOrder::FillArtikel(int row, const Artikel& artikel, qint64 anzahlIntern) {
    BestellungGrid.setCell(row, Col::Anzahl, artikel.lng_Einheit);
    BestellungGrid.setCell(row, Col::EinheitAnzahl, artikel.lng_Einheit);
    BestellungGrid.setCell(row, Col::AnzahlIntern, anzahlIntern);
    BestellungGrid.setCell(row, Col::Einheit, artikel.einheit);
    BestellungGrid.setCell(row, Col::Bezeichnung, artikel.name);
    BestellungGrid.setCell(row, Col::Ccy, SysCurrency);
    LineMoney fresh = freshLine(artikel.preis, artikel.mwst);
    fresh.discount = BestellungGrid.number(row, Col::Rabatt);
    setMoney(row, fresh);
}

} // namespace orders
