// Turnover by product, of all customers and of one, and a customer's journal.
#include "ScreenTest.h"
#include "platform/chart/ChartView.h"
#include "reporting/frmAuswertungenBuchungsjournalPerKunde.h"
#include "reporting/frmAuswertungenUmsatzProdukte.h"
#include "reporting/frmAuswertungenUmsatzProduktePerKunde.h"
#include "store/SystemSettings.h"
#include "support/Bookings.h"
#include <QRadioButton>

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

constexpr double kFive = 5 / 24.0;
const test::TestDialogs::Said kNoCustomer{u"Keine gültige Kunden-Nr."_s, 64, u"Ungültige Kunden-Nr."_s};

/// An order of one line of two pieces at a rate that makes a fifth of it VAT.
void sell(qint64 number, double moment, qint64 product, double price, double discount = 0,
          qint64 customer = TestFirm::kAnna, qint64 courier = TestFirm::kKurierAB) {
    test::book({number, moment, {{product, 2, price, discount, 25}}, customer, courier});
}

template <typename Screen> class StatisticsTest : public test::ScreenTest<Screen> {
  protected:
    /// The stored values of the rows on show, columns divided by "|".
    QStringList values() {
        QStringList lines;
        for (int row = 0; row < this->grid()->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < this->grid()->model()->columnCount(); ++column)
                cells << this->grid()->text(row, column);
            lines << cells.join(u'|');
        }
        return lines;
    }

    QString label(QStringView name) { return this->template find<QLabel>(name)->text(); }

    const platform::Chart& chart() { return this->template find<platform::ChartView>(u"Bild")->chart(); }

    void check(QStringView button) { this->template find<QRadioButton>(button)->click(); }
};

class ProductTurnover : public StatisticsTest<frmAuswertungenUmsatzProdukte> {
  protected:
    ProductTurnover() {
        SysFiktiverTag = kFive;
        const double day = TestFirm::day();
        ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte WHERE lng_ID = 4"_s);
        sell(1, day + 0.1, TestFirm::kMargherita, 14, 0);
        sell(2, day + kFive, TestFirm::kHawaii, 16.5, 0);
        sell(3, day + 0.8, TestFirm::kWein, 24, 1.2, TestFirm::kBruno, TestFirm::kKurierCD);
        sell(4, day + 0.8, TestFirm::kHawaii, 33, 3);
        sell(5, day + 0.9, TestFirm::kGutschein, 20, 0);
        sell(6, day + 1 + kFive, TestFirm::kBier, 18, 0, -1, TestFirm::kKurierCD);
        sell(7, day + 1 + kFive + 0.0001, TestFirm::kWein, 12, 0);
        TestFirm::setTime(20, 30);
        open();
    }

    /// What the firm's own statements give.
    static QStringList told(bool categories, double lower, double upper, int kurier) {
        const QString master = u"tbl_Auftragswesen_Bestellungen_Master"_s;
        const QString details = u"tbl_Auftragswesen_Bestellungen_Details"_s;
        const QString sums =
            u", Sum(%1.dbl_MengeIntern) AS TotalMenge, 'CHF' AS Ccy, Sum(%1.dbl_PreisMitMWSt - "
            u"%1.dbl_Rabatt) AS TotalUmsatz, Sum(%1.dbl_PreisMitMWSt - %1.dbl_Rabatt - "
            u"%1.dbl_PreisOhneMWSt) AS TotalMWST "_s.arg(details);
        const QString bounds = u"%1.dbl_BestellDatumNow >= %2 AND  %1.dbl_BestellDatumNow <= %3"_s.arg(
            master, QString::number(lower, 'g', 17), QString::number(upper, 'g', 17));
        if (categories)
            return TestFirm::rows(
                u"SELECT tbl_Verwaltung_ProdukteKategorien.txt_ProduktGruppe AS Gruppe"_s + sums +
                u"FROM "_s + master + u", tbl_Verwaltung_ProdukteKategorien, "_s + details +
                u", tbl_Verwaltung_Produkte WHERE "_s + master + u".lng_TrxNr = "_s + details +
                u".lng_TrxNrMaster AND "_s + bounds +
                (kurier ? u" AND %1.lng_Kurierid = '%2'"_s.arg(master).arg(kurier) : QString()) +
                u" AND tbl_Verwaltung_ProdukteKategorien.lng_ID = tbl_Verwaltung_Produkte.lng_ProduktGruppe "
                u"AND "
                u"tbl_Verwaltung_Produkte.lng_ID = "_s +
                details + u".lng_ProduktID GROUP BY tbl_Verwaltung_ProdukteKategorien.txt_ProduktGruppe;"_s);
        return TestFirm::rows(u"SELECT (SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Produkte WHERE "_s +
                              details + u".lng_ProduktID = tbl_Verwaltung_Produkte.lng_ID) AS Gruppe"_s +
                              sums + u"FROM "_s + master + u" INNER JOIN "_s + details + u" ON "_s + master +
                              u".lng_TrxNr = "_s + details + u".lng_TrxNrMaster WHERE "_s + bounds +
                              (kurier ? u" AND %1.lng_KurierID = %2"_s.arg(master).arg(kurier) : QString()) +
                              u" GROUP BY "_s + details + u".lng_ProduktID;"_s);
    }

    QString totals() { return label(u"lbl_UmsatzTotalPreis") + u'|' + label(u"lbl_MwstTotalPreis"); }
};

using CustomerJournal = StatisticsTest<frmAuswertungenBuchungsjournalPerKunde>;
using CustomerTurnover = StatisticsTest<frmAuswertungenUmsatzProduktePerKunde>;

} // namespace

TEST_F(ProductTurnover, OpensOnTodayUntilAnHourAgo) {
    expectReachable(false);
    EXPECT_EQ(screen->windowTitle(), u"Auswertungen-. Produkte / Gruppen Umsatz"_s);
    EXPECT_EQ(text(u"txt_DatumVon") + text(u"txt_DatumBis"), u"15/05/202615/05/2026"_s);
    EXPECT_EQ(text(u"txt_TimeFrom") + text(u"txt_TimeTo"), u"00:0019:30"_s);
    EXPECT_EQ(label(u"lbl_UmsatzCcy") + label(u"lbl_MwstCcy"),
              u"Total Umsatz: CHFTotal Mehrwertsteuer:CHF"_s);
    EXPECT_EQ(grid()->rowCount(), 0);
    click(u"cmdShow");
    EXPECT_EQ(rows(), (QStringList{u"10|4|46.50 CHF|9.30 CHF"_s, u"1|2|14.00 CHF|2.80 CHF"_s,
                                   u"W|2|22.80 CHF|4.56 CHF"_s}));
    EXPECT_EQ(totals(), u"83.30|16.66"_s);
    // A time behind the date is none of its business.
    put({{u"txt_DatumVon", u"15/05/2026 13:00"_s}, {u"txt_DatumBis", u"15/05/2026 13:00"_s}});
    check(u"opt_Produkte");
    EXPECT_EQ(text(u"txt_DatumVon") + text(u"txt_DatumBis"), u"15/05/202615/05/2026"_s);
    EXPECT_EQ(totals(), u"83.30|16.66"_s);
    for (const auto& [typed, left, earlier, later] :
         {std::tuple{u"abc"_s, u"00:00"_s, u"23:00"_s, u"01:00"_s},
          {u"99:99"_s, u"00:00"_s, u"23:00"_s, u"01:00"_s},
          {u"23:30"_s, u"23:30"_s, u"22:30"_s, u"00:30"_s},
          {u"0:15"_s, u"00:15"_s, u"23:15"_s, u"01:15"_s}}) {
        for (const auto& [button, stepped] :
             {std::pair{u"cmdTimeBisBack", earlier}, {u"cmdTimeBisFwd", later}}) {
            enter(u"txt_TimeTo", typed);
            find(u"txt_DatumVon")->setFocus();
            EXPECT_EQ(text(u"txt_TimeTo"), left) << typed.toStdString();
            click(button);
            EXPECT_EQ(text(u"txt_TimeTo"), stepped);
        }
    }
    // The end before the start.
    enter(u"txt_DatumVon", u"29/02/2027"_s);
    EXPECT_EQ((find(u"txt_DatumBis")->setFocus(), text(u"txt_DatumVon")), u"15/05/2026"_s);
    put({{u"txt_DatumVon", u"16/05/2026"_s}});
    click(u"cmdShow");
    EXPECT_EQ(grid()->rowCount(), 0);
    EXPECT_EQ(totals(), u"0.00|0.00"_s);
}

TEST_F(ProductTurnover, EachOfTheEightFormsGivesWhatTheFirmsStatementsGive) {
    const double day = TestFirm::day();
    sell(8, day + 0.7, TestFirm::kMargherita, -4);
    ConnMain.Execute(
        u"UPDATE tbl_Verwaltung_ProdukteKategorien SET txt_ProduktGruppe = NULL WHERE lng_ID = 1"_s);
    put({{u"txt_TimeFrom", u"05:00"_s}, {u"txt_TimeTo", u"23:00"_s}});
    QSet<QString> different;
    for (const bool fiktiv : {false, true})
        for (const bool categories : {false, true})
            for (const int kurier : {0, 1}) {
                if (find<QCheckBox>(u"check_FiktivesDatum")->isChecked() != fiktiv)
                    tick(u"check_FiktivesDatum");
                find<QComboBox>(u"combo_Kurier")
                    ->setCurrentIndex(kurier ? find<QComboBox>(u"combo_Kurier")->findText(u"AB"_s) : 0);
                check(categories ? u"opt_Kategorien" : u"opt_Produkte");
                click(u"cmdShow");
                EXPECT_EQ(values(),
                          told(categories, day + kFive, fiktiv ? day + 1 + kFive : day + 23 / 24.0, kurier))
                    << fiktiv << categories << kurier;
                EXPECT_EQ(find(u"txt_TimeFrom")->isEnabled(), !fiktiv);
                different << values().join(u';');
            }
    // Courier AB has nothing behind midnight, so that the fictive day gives him the same twice.
    EXPECT_EQ(different.size(), 6);
}

TEST_F(ProductTurnover, TheWorkingDayHasBothItsEndsAndAProductThatIsGoneHasNoCategory) {
    tick(u"check_FiktivesDatum");
    EXPECT_EQ(values(), (QStringList{u"10|4|CHF|46.5|9.3"_s, u"W|2|CHF|22.8|4.56"_s, u"|2|CHF|20|4"_s,
                                     u"O'N5%|2|CHF|18|3.6"_s}));
    EXPECT_EQ(totals(), u"107.30|21.46"_s);
    EXPECT_EQ(chart().labels, (QStringList{u"10"_s, u"W"_s, u"(gelöscht)"_s, u"O'N5%"_s}));
    check(u"opt_Kategorien");
    EXPECT_EQ(values(), (QStringList{u"Getränke|4|CHF|40.8|8.16"_s, u"Pizza|4|CHF|46.5|9.3"_s}));
    EXPECT_EQ(totals(), u"87.30|17.46"_s);
    EXPECT_EQ(chart().series[0].values, (std::vector<double>{40.8, 46.5}));
    // A single moment.
    tick(u"check_FiktivesDatum");
    put({{u"txt_TimeFrom", u"05:00"_s}, {u"txt_TimeTo", u"05:00"_s}});
    check(u"opt_Produkte");
    EXPECT_EQ(totals(), u"16.50|3.30"_s);

    click(u"cmdPrint");
    EXPECT_EQ(
        TestFirm::rows(u"SELECT Gruppe, TotalMenge, Ccy, TotalUmsatz, TotalMWSt FROM PrintArtikelUmsatz"_s,
                       ConnPrint),
        values());
    EXPECT_EQ(TestFirm::value(u"SELECT ArtikelUmsatzVonBis, Ccy FROM PrintSettings"_s, ConnPrint),
              u"15/05/2026 - 15/05/2026|CHF"_s);
    ASSERT_EQ(reports.runs.size(), 1);
    EXPECT_TRUE(reports.runs[0].ReportFileName.endsWith(u"\\Reports\\rep_UmsatzProdukte.rpt"_s));
    click(u"cmdExport");
    EXPECT_FALSE(dialogs.suggested.value(0).contains(u'/'));
}

TEST_F(ProductTurnover, GivenUpItIsAsItWas) {
    click(u"cmdShow");
    const QStringList before = values();
    const QString totalsBefore = totals();
    dialogs.giveUp = true;
    check(u"opt_Kategorien");
    tick(u"check_FiktivesDatum");
    choose(u"combo_Kurier", u"AB"_s);
    click(u"cmdShow");
    EXPECT_EQ(values(), before);
    EXPECT_EQ(totals(), totalsBefore);
    EXPECT_TRUE(find<QRadioButton>(u"opt_Produkte")->isChecked());
    EXPECT_FALSE(ticked(u"check_FiktivesDatum"));
    EXPECT_TRUE(find(u"txt_TimeFrom")->isEnabled());
    EXPECT_EQ(chosen(u"combo_Kurier"), u"Alle"_s);
}

TEST_F(CustomerJournal, IsInTheOrderOfDeliveryAndOpensTheBooking) {
    sell(1, TestFirm::day(), TestFirm::kHawaii, 30);
    sell(2, TestFirm::day() + 1, TestFirm::kHawaii, 20.5);
    ConnMain.Execute(
        u"UPDATE tbl_Auftragswesen_Bestellungen_Master SET lng_LieferDatum = 46160, txt_LieferDatum = '18/05/2026' WHERE lng_TrxNr = 1"_s);
    sell(3, TestFirm::day(), TestFirm::kHawaii, 9, 0, TestFirm::kBruno);
    sell(4, TestFirm::day() + 1, TestFirm::kHawaii, 5);
    open();
    expectReachable(false);
    click(u"cmdShow");
    grid()->setFocus();
    find(u"cmdPrint")->setEnabled(true);
    click(u"cmdPrint");
    EXPECT_EQ(said(), (Said{kNoCustomer, kNoCustomer}));
    enter(u"txt_KundenID", u"1"_s);
    EXPECT_FALSE(find(u"cmdPrint")->isEnabled());
    press(Qt::Key_Return);
    EXPECT_TRUE(find<QPlainTextEdit>(u"txt_KundenAdresse")->toPlainText().contains(u"Seestrasse 1"_s));
    EXPECT_TRUE(find(u"cmdPrint")->isEnabled());
    click(u"cmdShow");
    EXPECT_EQ(rows(), (QStringList{u"16/05/2026|1|2|CHF|20.50"_s, u"16/05/2026|1|4|CHF|5.00"_s,
                                   u"18/05/2026|1|1|CHF|30.00"_s}));
    EXPECT_EQ(label(u"lbl_TotalPreis"), u"55.50"_s);
    EXPECT_EQ(chart().labels, (QStringList{u"16/05/2026"_s, u"18/05/2026"_s}));
    EXPECT_EQ(chart().series[0].values, (std::vector<double>{25.5, 30}));
    doubleClickRow(0);
    EXPECT_EQ(navigation.openedBestellung, 2);
    click(u"cmdPrint");
    EXPECT_EQ(TestFirm::rows(u"SELECT Datum, KundenNr, AuftragsNr, Ccy, Betrag FROM PrintKundenUmsatz"_s,
                             ConnPrint),
              values());
    EXPECT_TRUE(
        TestFirm::value(u"SELECT KundenUmsatzKunde FROM PrintSettings"_s, ConnPrint).contains(u"Meier"_s));
    EXPECT_TRUE(reports.runs.value(0).ReportFileName.endsWith(u"\\Reports\\rep_KundenBuchungsjournal.rpt"_s));
    // Whose name stands on the paper, his bookings stand below it.
    enter(u"txt_KundenID", u"2"_s);
    press(Qt::Key_Return);
    click(u"cmdPrint");
    EXPECT_EQ(TestFirm::rows(u"SELECT KundenNr, AuftragsNr FROM PrintKundenUmsatz"_s, ConnPrint),
              QStringList{u"2|3"_s});
    ConnMain.Execute(u"DELETE FROM tbl_Auftragswesen_Bestellungen_Master"_s);
    click(u"cmdShow");
    EXPECT_EQ(grid()->rowCount(), 0);
    EXPECT_EQ(label(u"lbl_TotalPreis"), u"0.00"_s);
}

TEST_F(CustomerJournal, FindsTheCustomerAsTheOptionStandsAtTheNextEnter) {
    open();
    const auto address = [&] { return find<QPlainTextEdit>(u"txt_KundenAdresse")->toPlainText(); };
    enter(u"txt_KundenID", u"0799999999"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(address(), QString());
    click(u"cmdShow");
    EXPECT_EQ(said(), Said{kNoCustomer});
    check(u"opt_TelefonNummer");
    EXPECT_EQ(address(), QString()) << "not yet";
    find(u"txt_KundenID")->setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(address().contains(u"Bruno"_s)) << "by his mobile number";
    for (const QString& unknown : {u"0790000000"_s, QString(400, u'9'), QString()}) {
        enter(u"txt_KundenID", unknown);
        click(u"cmdShow");
        EXPECT_EQ(said(), Said{kNoCustomer}) << unknown.toStdString();
        EXPECT_EQ(address(), QString());
    }
    enter(u"txt_KundenID", u"a07b91234567"_s);
    EXPECT_EQ(text(u"txt_KundenID"), u"0791234567"_s);
    click(u"cmdLoad");
    EXPECT_TRUE(address().contains(u"Anna"_s));
}

TEST_F(CustomerJournal, TheTopViewHasTiesAndTheFirmsOddTotal) {
    for (int kunde = 1; kunde <= 23; ++kunde)
        sell(kunde, TestFirm::day(), TestFirm::kHawaii, kunde <= 4 ? 10.0 : kunde * 10.0, 0, kunde);
    open();
    click(u"cmdTop20Clients");
    EXPECT_EQ(grid()->rowCount(), 23) << "the twentieth place is shared by four";
    EXPECT_EQ(rows().value(0), u"|23||CHF|230.00"_s);
    EXPECT_EQ(label(u"lbl_TotalPreis"), u"10.00"_s) << "of the customer with the lowest number";
    EXPECT_TRUE(chart().labels.contains(u"2 Bruno"_s));
    EXPECT_EQ(focusName(), u"txt_KundenID"_s);
    EXPECT_FALSE(find(u"cmdPrint")->isEnabled());
    sell(99, TestFirm::day(), TestFirm::kHawaii, 700, 0, -1);
    click(u"cmdTop20Clients");
    EXPECT_EQ(label(u"lbl_TotalPreis"), u"700.00"_s);
    EXPECT_FALSE(values().join(u';').contains(u"-1"_s));
    doubleClickRow(0);
    EXPECT_TRUE(navigation.shown.isEmpty());
    enter(u"txt_KundenID", u"2"_s);
    press(Qt::Key_Return);
    click(u"cmdPrint");
    EXPECT_EQ(TestFirm::rows(u"SELECT KundenNr FROM PrintKundenUmsatz"_s, ConnPrint), QStringList{u"2"_s});
}

TEST_F(CustomerTurnover, ByProductAndByCategoryInASpanOfDays) {
    for (const double moment : {0.0, 0.9, 1.0, 2.0})
        sell(int(moment * 10) + 1, TestFirm::day() + moment, TestFirm::kHawaii, 20, 5);
    sell(50, TestFirm::day(), TestFirm::kWein, 12, 0);
    sell(51, TestFirm::day(), TestFirm::kWein, 99, 0, TestFirm::kBruno);
    sell(52, TestFirm::day(), 4711, 7, 0);
    sell(53, TestFirm::day(), TestFirm::kMargherita, -4);
    open();
    expectReachable(false);
    EXPECT_EQ(label(u"lbl_Ccy"), u"Total Umsatz: CHF"_s);
    click(u"cmdShow");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(label(u"lbl_TotalPreis"), QString());
    enter(u"txt_KundenID", u"1"_s);
    put({{u"txt_DatumBis", u"16/05/2026"_s}});
    click(u"cmdShow");
    EXPECT_EQ(rows(),
              (QStringList{u"10|6|45.00 CHF"_s, u"1|2|-4.00 CHF"_s, u"W|2|12.00 CHF"_s, u"|2|7.00 CHF"_s}));
    EXPECT_EQ(label(u"lbl_TotalPreis"), u"60.00"_s);
    enter(u"txt_KundenID", u"2"_s);
    press(Qt::Key_Return);
    click(u"cmdPrint");
    EXPECT_EQ(TestFirm::rows(u"SELECT Artikel, Umsatz FROM PrintKundenArtikelUmsatz"_s, ConnPrint),
              QStringList{u"W|99"_s});
    enter(u"txt_KundenID", u"1"_s);
    press(Qt::Key_Return);
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_ProdukteKategorien WHERE lng_ID = 1"_s);
    const auto chosenOptions = [this] {
        QString names;
        for (const auto* option : screen->findChildren<QRadioButton*>())
            names += option->isChecked() ? option->objectName() + u' ' : QString();
        return names;
    };
    for (const auto& [option, options] :
         {std::pair{u"opt_TelefonNummer"_s, u"opt_TelefonNummer opt_Produkte "_s},
          {u"opt_Kategorien"_s, u"opt_TelefonNummer opt_Kategorien "_s},
          {u"opt_Produkte"_s, u"opt_TelefonNummer opt_Produkte "_s},
          {u"opt_KundenNummer"_s, u"opt_KundenNummer opt_Produkte "_s}}) {
        check(option);
        EXPECT_EQ(chosenOptions().toStdString(), options.toStdString());
    }
    check(u"opt_Kategorien");
    EXPECT_EQ(grid()->rowCount(), 1) << "not before it is asked for";
    click(u"cmdShow");
    EXPECT_EQ(rows(), QStringList{u"Pizza|8|41.00 CHF"_s});
    EXPECT_EQ(label(u"lbl_TotalPreis"), u"53.00"_s) << "with the wine, whose category is gone";
    click(u"cmdPrint");
    EXPECT_EQ(
        TestFirm::rows(u"SELECT Artikel, Ccy, Menge, Umsatz FROM PrintKundenArtikelUmsatz"_s, ConnPrint),
        QStringList{u"Pizza|CHF|8|41"_s});
    EXPECT_EQ(TestFirm::value(u"SELECT KundenUmsatzVonBis FROM PrintSettings"_s, ConnPrint),
              u"15/05/2026 - 16/05/2026"_s);
    EXPECT_TRUE(reports.runs.value(0).ReportFileName.endsWith(u"\\Reports\\rep_UmsatzKundenProdukte.rpt"_s));
}
