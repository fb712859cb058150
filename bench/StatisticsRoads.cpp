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
constexpr double kYear = 365;

QString dateText(double serial) {
    return common::formatDate(serial, u"DD/MM/YYYY");
}

/// A year by category in one statement, grouped by the text as it stands: what Tavolino's own plan is
/// measured beside.
QByteArray yearByCategory(double from, double to) {
    return u"SELECT k.txt_ProduktGruppe AS Gruppe, Sum(d.dbl_MengeIntern), 'CHF', Sum(d.dbl_PreisMitMWSt - "
           u"d.dbl_Rabatt), Sum(d.dbl_PreisMitMWSt - d.dbl_Rabatt - d.dbl_PreisOhneMWSt) FROM "
           u"tbl_Auftragswesen_Bestellungen_Master AS m, tbl_Verwaltung_ProdukteKategorien AS k, "
           u"tbl_Auftragswesen_Bestellungen_Details AS d, tbl_Verwaltung_Produkte AS p WHERE m.lng_TrxNr = "
           u"d.lng_TrxNrMaster AND m.dbl_BestellDatumNow >= %1 AND m.dbl_BestellDatumNow <= %2 AND k.lng_ID "
           u"= "
           u"p.lng_ProduktGruppe AND p.lng_ID = d.lng_ProduktID GROUP BY k.txt_ProduktGruppe"_s.arg(from)
               .arg(to)
               .toUtf8();
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
    part(day, u"check_Datum")->click();
    const QWidget& all = screen(u"frmAuswertungenBuchungsjournal"_s);
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
    const auto road = [&](const char* name, const QWidget& on, const char16_t* button) {
        Road made = replayed(name, 1, [clicked = part(on, button)](size_t) { clicked->click(); });
        made.aim = kAim;
        return made;
    };
    std::vector<Road> roads{road("Statistics: journal of a day", day, u"cmdShow"),
                            road("Statistics: journal of all", all, u"cmdShow"),
                            road("Statistics: day sums, months, years", turnover, u"opt_Umsatz"),
                            road("Statistics: a year by product", products, u"cmdShow"),
                            road("Statistics: a customer", customer, u"cmdShow"),
                            road("Statistics: top twenty customers", best, u"cmdTop20Clients")};
    const auto given =
        std::make_shared<RawStatement>(m_store, yearByCategory(yesterday - kYear, yesterday).constData());
    roads.push_back({"Statistics: a year by category, beside one statement", 1,
                     [clicked = part(categories, u"cmdShow")](size_t) { clicked->click(); },
                     [given](size_t) {
                         while (given->step())
                             (void)given->real(3);
                         given->reset();
                     },
                     kCategoryAim});
    return roads;
}

} // namespace bench
