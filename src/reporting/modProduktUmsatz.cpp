#include "reporting/modProduktUmsatz.h"
#include "platform/WatchedQuery.h"
#include "platform/report/PrintTable.h"
#include "store/Collation.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <array>
#include <map>
#include <optional>

using namespace Qt::StringLiterals;

namespace modProduktUmsatz {
namespace {

/// Quantity, turnover and VAT; without a value as long as there was none.
using Sums = std::array<std::optional<double>, 3>;

struct Less {
    bool operator()(const QString& a, const QString& b) const { return store::compareTexts(a, b) < 0; }
};

void add(std::optional<double>& sum, const std::optional<double>& value) {
    if (value)
        sum = sum.value_or(0) + *value;
}

common::Value valueOf(const std::optional<double>& sum) {
    return sum ? common::Value(*sum) : common::Value();
}

/// What is known of a product that is there.
struct Produkt {
    common::Value kurzzeichen;
    std::optional<QString> gruppe;
};

/// One walk over the lines: the store would sort them all to group them.
std::map<std::optional<qint64>, Sums> sumsByProduct(store::Engine& engine, const QString& bestellungen) {
    const auto lines = engine.query(
        u"SELECT tbl_Auftragswesen_Bestellungen_Details.lng_ProduktID, "
        u"tbl_Auftragswesen_Bestellungen_Details.dbl_MengeIntern, "
        u"tbl_Auftragswesen_Bestellungen_Details.dbl_PreisMitMWSt - "
        u"tbl_Auftragswesen_Bestellungen_Details.dbl_Rabatt AS Umsatz, "
        u"tbl_Auftragswesen_Bestellungen_Details.dbl_PreisMitMWSt - "
        u"tbl_Auftragswesen_Bestellungen_Details.dbl_Rabatt - "
        u"tbl_Auftragswesen_Bestellungen_Details.dbl_PreisOhneMWSt AS MWST "
        u"FROM tbl_Auftragswesen_Bestellungen_Master INNER JOIN tbl_Auftragswesen_Bestellungen_Details ON "
        u"tbl_Auftragswesen_Bestellungen_Master.lng_TrxNr = "
        u"tbl_Auftragswesen_Bestellungen_Details.lng_TrxNrMaster WHERE "_s +
            bestellungen,
        false);
    std::map<std::optional<qint64>, Sums> sums;
    while (lines->next()) {
        const common::Value key = lines->value(0);
        Sums& product = sums[key.isNull() ? std::nullopt : std::optional(key.toLong())];
        for (int i = 0; i < int(product.size()); ++i)
            if (const common::Value value = lines->value(i + 1); !value.isNull())
                add(product[size_t(i)], value.toDouble());
    }
    return sums;
}

std::map<std::optional<qint64>, Produkt> products(store::Engine& engine) {
    const auto rows = engine.query(
        u"SELECT tbl_Verwaltung_Produkte.lng_ID, tbl_Verwaltung_Produkte.txt_Kurzzeichen, "
        u"tbl_Verwaltung_ProdukteKategorien.lng_ID AS lng_GruppeID, "
        u"tbl_Verwaltung_ProdukteKategorien.txt_ProduktGruppe FROM tbl_Verwaltung_Produkte LEFT JOIN "
        u"tbl_Verwaltung_ProdukteKategorien ON tbl_Verwaltung_ProdukteKategorien.lng_ID = "
        u"tbl_Verwaltung_Produkte.lng_ProduktGruppe"_s,
        false);
    std::map<std::optional<qint64>, Produkt> known;
    while (rows->next())
        known[rows->value(0).toLong()] = {
            rows->value(1), rows->value(2).isNull() ? std::nullopt : std::optional(rows->value(3).toText())};
    return known;
}

void addRow(Umsatz& result, const common::Value& gruppe, const Sums& sums) {
    const auto& [menge, umsatz, mwst] = sums;
    result.rows.rows.push_back({gruppe, valueOf(menge), SysCurrency, valueOf(umsatz), valueOf(mwst)});
    result.umsatz += umsatz.value_or(0);
    result.mwst += mwst.value_or(0);
}

} // namespace

Umsatz LoadProduktUmsatz(const QString& bestellungen, Gliederung gliederung,
                         const platform::Progress& progress) {
    std::map<std::optional<qint64>, Sums> sums;
    std::map<std::optional<qint64>, Produkt> known;
    ConnMain.Read(
        [&](store::Engine& engine) {
            sums = sumsByProduct(engine, bestellungen);
            known = products(engine);
        },
        platform::waitingWith(progress));

    using store::ColumnType;
    Umsatz result;
    result.rows.columns = {{u"Gruppe"_s, ColumnType::Text},
                           {u"TotalMenge"_s, ColumnType::Double},
                           {u"Ccy"_s, ColumnType::Text},
                           {u"TotalUmsatz"_s, ColumnType::Double},
                           {u"TotalMWST"_s, ColumnType::Double}};
    std::map<QString, Sums, Less> groups;
    for (const auto& [key, product] : sums) {
        const auto found = known.find(key);
        const bool there = found != known.end();
        if (there)
            result.umsatzVorhandener += product[1].value_or(0);
        if (gliederung == Gliederung::Produkte)
            addRow(result, there ? found->second.kurzzeichen : common::Value(), product);
        else if (there && found->second.gruppe)
            for (size_t i = 0; i < product.size(); ++i)
                add(groups[*found->second.gruppe][i], product[i]);
    }
    for (const auto& [name, group] : groups)
        addRow(result, name, group);
    return result;
}

void FillPrintUmsatz(const QString& table, const QStringList& columns, store::Recordset& rows,
                     const platform::Progress& progress) {
    platform::fillPrintTable(
        table, columns.join(u','), rows.RecordCount(),
        [&](int row) {
            const auto value = [&](int column) { return rows.valueAt(row, column); };
            return QStringList{store::sqlText(value(0).toText()), store::sqlText(value(2).toText()),
                               platform::sqlNumber(value(1)), platform::sqlNumber(value(3)),
                               platform::sqlNumber(value(4))}
                .first(columns.size());
        },
        progress);
}

} // namespace modProduktUmsatz
