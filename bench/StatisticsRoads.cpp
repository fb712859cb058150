// The roads of the statistics, each filled into its screen.
#include "ListRoads.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include <QAbstractButton>
#include <QLineEdit>

namespace bench {

using namespace Qt::StringLiterals;

namespace {

constexpr double kAim = 1.5;
constexpr double kCategoryAim = 0.5;
constexpr double kSameAim = 1;
/// The other side stops behind the twentieth, and has none that ties with it.
constexpr int kBest = 20;
/// Rows that a list shows at once.
constexpr int kPage = 25;
constexpr double kYear = 365;

QString dateText(double serial) {
    return common::formatDate(serial, u"DD/MM/YYYY");
}

/// The statements of a road as they are given, straight on the engine: every row is stepped to.
std::function<void(size_t)> given(RawStore& store, const QStringList& statements, int most = 1'000'000'000) {
    std::vector<std::shared_ptr<RawStatement>> prepared;
    for (const QString& sql : statements)
        prepared.push_back(std::make_shared<RawStatement>(store, sql.toUtf8().constData()));
    return [prepared, most](size_t) {
        for (const auto& statement : prepared) {
            for (int row = 0; row < most && statement->step(); ++row)
                for (int column = 0; column < statement->columns(); ++column)
                    (void)statement->text(column);
            statement->reset();
        }
    };
}

QString inYear(double last) {
    return u"m.dbl_BestellDatumNow >= %1 AND m.dbl_BestellDatumNow <= %2"_s.arg(last - kYear).arg(last);
}

const QString kSums = u"Sum(d.dbl_MengeIntern), 'CHF', Sum(d.dbl_PreisMitMWSt - d.dbl_Rabatt), "
                      u"Sum(d.dbl_PreisMitMWSt - d.dbl_Rabatt - d.dbl_PreisOhneMWSt) "_s;

QString byProduct(double last) {
    return u"SELECT (SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Produkte AS p WHERE d.lng_ProduktID = p.lng_ID), "_s +
           kSums +
           u"FROM tbl_Auftragswesen_Bestellungen_Master AS m INNER JOIN "
           u"tbl_Auftragswesen_Bestellungen_Details AS d ON "
           u"m.lng_TrxNr = d.lng_TrxNrMaster WHERE "_s +
           inYear(last) + u" GROUP BY d.lng_ProduktID"_s;
}

QString byCategory(double last) {
    return u"SELECT k.txt_ProduktGruppe, "_s + kSums +
           u"FROM tbl_Auftragswesen_Bestellungen_Master AS m, tbl_Verwaltung_ProdukteKategorien AS k, "
           u"tbl_Auftragswesen_Bestellungen_Details AS d, tbl_Verwaltung_Produkte AS p WHERE m.lng_TrxNr = "
           u"d.lng_TrxNrMaster AND "_s +
           inYear(last) +
           u" AND k.lng_ID = p.lng_ProduktGruppe AND p.lng_ID = d.lng_ProduktID GROUP BY k.txt_ProduktGruppe"_s;
}

/// Total and list of the journal.
QStringList journal(const QString& clause) {
    return {u"SELECT SUM(dbl_TotalMitMWSt) FROM view_Auswertungen_Buchungsjournal "_s + clause,
            u"SELECT date_BestellDatum, lng_BestellDatum, lng_TrxNr, txt_Buchungstext, txt_Kurier, "
            u"dbl_TotalMitMWSt "
            u"FROM view_Auswertungen_Buchungsjournal "_s +
                clause};
}

} // namespace

std::vector<Road> ListRoads::statistics() {
    const auto part = [](const QWidget& screen, const char16_t* name) {
        return screen.findChild<QAbstractButton*>(QString::fromUtf16(name));
    };
    const auto span = [](const QWidget& screen, double from, double to) {
        screen.findChild<QLineEdit*>(u"txt_DatumVon"_s)->setText(dateText(from));
        screen.findChild<QLineEdit*>(u"txt_DatumBis"_s)->setText(dateText(to));
    };
    const double yesterday = common::clock::today() - 1;
    const QWidget& day = screen(u"frmAuswertungenBuchungsjournal"_s);
    span(day, yesterday, yesterday);
    const QWidget& all = screen(u"frmAuswertungenBuchungsjournal"_s);
    part(all, u"check_AlleBuchungen")->click();
    const QWidget& turnover = screen(u"frmAuswertungenUmsatz"_s);
    const QWidget& products = screen(u"frmAuswertungenUmsatzProdukte"_s);
    span(products, yesterday - kYear, yesterday);
    const QWidget& categories = screen(u"frmAuswertungenUmsatzProdukte"_s);
    span(categories, yesterday - kYear, yesterday);
    part(categories, u"opt_Kategorien")->setChecked(true);
    const QWidget& customer = screen(u"frmAuswertungenBuchungsjournalPerKunde"_s);
    customer.findChild<QLineEdit*>(u"txt_KundenID"_s)->setText(u"1"_s);
    part(customer, u"cmdLoad")->click();
    const QWidget& best = screen(u"frmAuswertungenBuchungsjournalPerKunde"_s);
    const QString heads = u"FROM tbl_Auftragswesen_Bestellungen_Master "_s;
    const auto road = [&](const char* name, const QWidget& on, const char16_t* button, double aim,
                          std::function<void(size_t)> raw) {
        return Road{name, 1, [clicked = part(on, button)](size_t) { clicked->click(); }, std::move(raw), aim};
    };
    return {
        road("Statistics: journal of a day", day, u"cmdShow", kAim,
             given(m_store,
                   journal(u"WHERE lng_BestellDatum >= %1 AND lng_BestellDatum <= %1"_s.arg(yesterday)))),
        // The list shows its first page only.
        road("Statistics: journal of all, a page of it", all, u"cmdShow", kAim,
             given(m_store, journal({}) + QStringList{u"SELECT Count(*) "_s + heads}, kPage)),
        road("Statistics: day sums, months, years", turnover, u"opt_Umsatz", kAim,
             given(m_store, {u"SELECT lng_BestellDatum, Sum(dbl_TotalMitMWSt) "_s + heads +
                             u"GROUP BY lng_BestellDatum ORDER BY lng_BestellDatum DESC"_s})),
        road("Statistics: a year by product", products, u"cmdShow", kAim,
             given(m_store, {byProduct(yesterday)})),
        road("Statistics: a year by category", categories, u"cmdShow", kCategoryAim,
             given(m_store, {byCategory(yesterday)})),
        {"Statistics: a year by category, beside by product", 1,
         [clicked = part(categories, u"cmdShow")](size_t) { clicked->click(); },
         [clicked = part(products, u"cmdShow")](size_t) { clicked->click(); }, kSameAim},
        road("Statistics: a customer", customer, u"cmdShow", kAim,
             given(m_store, {u"SELECT txt_LieferDatum, lng_KundenID, lng_TrxNr, 'CHF', dbl_TotalMitMWSt "_s +
                                 heads + u"WHERE lng_KundenID = 1 ORDER BY lng_LieferDatum ASC"_s,
                             u"SELECT SUM(dbl_TotalMitMWSt) "_s + heads + u"WHERE lng_KundenID = 1"_s})),
        road("Statistics: top twenty customers", best, u"cmdTop20Clients", kAim,
             given(m_store,
                   {u"SELECT lng_KundenID, SUM(dbl_TotalMitMWSt) AS Betrag "_s + heads +
                    u"WHERE lng_KundenID >= 0 GROUP BY lng_KundenID ORDER BY Betrag DESC"_s},
                   kBest))};
}

} // namespace bench
