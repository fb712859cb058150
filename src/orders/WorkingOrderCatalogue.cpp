// How a line gets its article: the lookups in the catalogue.
#include "common/Bounds.h"
#include "common/Convert.h"
#include "orders/WorkingOrder.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <functional>

using common::Value;
using modAuftragswesenAuftragserfassung::GetMWStSatz;

namespace orders {

/// What is looked for: rows of a view, by a column that begins with what was typed or by a key.
struct Lookup {
    bool isProdukt = true;
    QString condition;
    /// The column compared with the text typed; empty for a lookup by key.
    QString column;
    QString typed;
};

namespace {

QString nameColumn(bool isProdukt) {
    return isProdukt ? QStringLiteral("txt_Produkt") : QStringLiteral("txt_Extra");
}

Artikel readArtikel(store::Recordset& row, bool isProdukt) {
    Artikel artikel;
    artikel.isProdukt = isProdukt;
    artikel.lng_ID = row.Fields(u"lng_ID").toLong();
    artikel.kurzzeichen = isProdukt ? row.Fields(u"txt_Kurzzeichen").text() : QString();
    artikel.name = row.Fields(nameColumn(isProdukt)).text();
    artikel.einheit = row.Fields(u"txt_Stückelung").text();
    artikel.lng_Einheit = row.Fields(u"lng_Einheit").toLong();
    artikel.preis = row.Fields(u"dbl_Preis").toDouble();
    artikel.mwst = GetMWStSatz(row.Fields(u"lng_MWSt").Value());
    return artikel;
}

/// That of the index that finds them. A code may stand in several categories.
QString orderOf(const Lookup& lookup) {
    if (lookup.column.isEmpty())
        return {};
    const bool byCode = lookup.column == QLatin1String("txt_Kurzzeichen");
    return QStringLiteral(" ORDER BY ") + lookup.column +
           (byCode ? QStringLiteral(", lng_ProduktGruppe, lng_ID") : QStringLiteral(", lng_ID"));
}

/// Goes through the rows as long as `more` says so, which is told whether the row is called exactly as typed:
/// whoever keys "1" does not mean "10". A lookup by key has one row, and it is what was meant.
void eachArtikel(const Lookup& lookup, const std::function<bool(bool exact)>& more) {
    const QString view = lookup.isProdukt ? QStringLiteral("view_Verwaltung_Produkte")
                                          : QStringLiteral("view_Verwaltung_ProdukteExtras");
    store::OpenRecordset rows(RsMain,
                              QStringLiteral("SELECT * FROM ") + view + QStringLiteral(" WHERE ") +
                                  lookup.condition + orderOf(lookup),
                              ConnMain);
    for (; !rows->Eof(); rows->MoveNext()) {
        // A line without a name is not stored.
        if (rows->Fields(nameColumn(lookup.isProdukt)).text().isEmpty())
            continue;
        const bool exact = lookup.column.isEmpty() ||
                           rows->Fields(lookup.column).text().compare(lookup.typed, Qt::CaseInsensitive) == 0;
        if (!more(exact))
            break;
    }
}

/// The first row, unless a later one is called exactly as typed.
std::optional<Artikel> findFirst(const Lookup& lookup) {
    std::optional<Artikel> found;
    eachArtikel(lookup, [&](bool exact) {
        if (!found || exact)
            found = readArtikel(RsMain, lookup.isProdukt);
        return !exact;
    });
    // No line bears a price that it would refuse when typed.
    if (found && !common::isAmount(found->preis))
        found.reset();
    return found;
}

/// Up to `most` rows, the one that findFirst finds before the others.
void appendAll(const Lookup& lookup, size_t most, std::vector<Artikel>& found) {
    const size_t before = found.size();
    bool exactFound = false;
    eachArtikel(lookup, [&](bool exact) {
        const bool comesFirst = exact && !exactFound;
        exactFound |= exact;
        if (comesFirst || found.size() < most)
            found.insert(comesFirst ? found.begin() + qptrdiff(before) : found.end(),
                         readArtikel(RsMain, lookup.isProdukt));
        return !exactFound || found.size() < most;
    });
    if (found.size() > most)
        found.resize(most);
}

QString inGruppe(int preisGruppe) {
    return QStringLiteral(" AND lng_Gruppe = ") + QString::number(preisGruppe);
}

QString produktColumn(int col) {
    return col == Col::Kurzzeichen ? QStringLiteral("txt_Kurzzeichen") : nameColumn(true);
}

Lookup keyed(bool isProdukt, const QString& column, const QString& typed, int preisGruppe) {
    return {isProdukt,
            column + QStringLiteral(" LIKE ") + store::sqlText(typed + QLatin1Char('%')) +
                inGruppe(preisGruppe),
            column, typed};
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
        FindExtraLine(row,
                      {false, QStringLiteral("lng_ID = ") + BestellungGrid.text(row, Col::ExtraID), {}, {}});
    else if (col == Col::Bezeichnung)
        FindExtraLine(row, keyed(false, nameColumn(false), typed, PreisGruppe));
}

void WorkingOrder::FindExtraForBestellung(int row, int col) {
    // No road for products here: the table of extras bears neither short code nor price.
    if (suche == SucheModus::Produkt || col != Col::ExtraID)
        return;
    // The extra's key stands in ProduktID when this is called: meant so.
    FindExtraLine(
        row, {false,
              QStringLiteral("lng_ID = ") + BestellungGrid.text(row, Col::ProduktID) + inGruppe(PreisGruppe),
              {},
              {}});
}

bool WorkingOrder::FindProduktLine(int row, int col) {
    const QString typed = BestellungGrid.text(row, col);
    std::optional<Artikel> produkt;
    if (col == Col::ProduktID)
        produkt = findFirst({true, QStringLiteral("lng_ID = ") + typed + inGruppe(PreisGruppe), {}, {}});
    else if (col == Col::Kurzzeichen || col == Col::Bezeichnung)
        produkt = findFirst(keyed(true, produktColumn(col), typed, PreisGruppe));
    if (!produkt)
        return false;
    SetProduktKeys(row, produkt->lng_ID);
    BestellungGrid.setCell(row, Col::Kurzzeichen, produkt->kurzzeichen);
    BestellungGrid.setCell(row, Col::Rabatt, 0);
    FillArtikel(row, *produkt, produkt->lng_Einheit);
    Q_EMIT ExtrasOffered(produkt->lng_ID);
    return true;
}

bool WorkingOrder::MayHoldExtra(int row) const {
    return row > 0 && !BestellungGrid.text(row - 1, Col::Ccy).isEmpty();
}

void WorkingOrder::FindExtraLine(int row, const Lookup& lookup) {
    if (!MayHoldExtra(row))
        return;
    const std::optional<Artikel> extra = findFirst(lookup);
    if (!extra)
        return;
    // Whoever picks an extra has set its keys.
    if (suche == SucheModus::Keyed && !lookup.typed.isEmpty())
        HangUnderLineAbove(row, extra->lng_ID);
    FillArtikel(row, *extra, 0);
}

std::vector<Artikel> WorkingOrder::FindAngebote(int row, int col, const QString& typed, size_t most) const {
    std::vector<Artikel> found;
    if (typed.isEmpty())
        return found;
    appendAll(keyed(true, produktColumn(col), typed, PreisGruppe), most, found);
    if (col == Col::Bezeichnung && MayHoldExtra(row))
        appendAll(keyed(false, nameColumn(false), typed, PreisGruppe), most, found);
    return found;
}

std::optional<Artikel> WorkingOrder::FindArtikel(bool isProdukt, qint64 id) const {
    return findFirst(
        {isProdukt, QStringLiteral("lng_ID = ") + QString::number(id) + inGruppe(PreisGruppe), {}, {}});
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
