// Every figure of the statistics beside a reckoning by another program, straight from the rows: on the demo
// firm, with the awkward days added.
#include "common/Clock.h"
#include "common/Convert.h"
#include "install/Installer.h"
#include "platform/chart/ChartView.h"
#include "platform/form/DataGrid.h"
#include "reporting/frmAuswertungenBuchungsjournal.h"
#include "reporting/frmAuswertungenBuchungsjournalPerKunde.h"
#include "reporting/frmAuswertungenTagesabschluss.h"
#include "reporting/frmAuswertungenUmsatz.h"
#include "reporting/frmAuswertungenUmsatzProdukte.h"
#include "reporting/frmAuswertungenUmsatzProduktePerKunde.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

constexpr int kFictiveHour = 5;

/// The ninety days of the demo firm before it hold 29 February and the night in which the clock goes on.
double today() {
    return common::dateSerial(2028, 3, 31);
}

/// Copies some booked orders, lines and all, to another day; `time` of 0 keeps theirs.
void copyTo(int which, double day, double time) {
    const QString moment = QString::number(day + time, 'g', 17);
    const QString number = u"lng_TrxNr + %1"_s.arg(100'000 * (which + 1));
    const QString chosen = u"lng_TrxNr % 211 = %1 AND lng_TrxNr < 100000"_s.arg(which);
    ConnMain.Execute(
        u"INSERT INTO tbl_Auftragswesen_Bestellungen_Details SELECT dbl_TrxNr, lng_TrxNrMaster + %1, "
        u"lng_ProduktID, flag_IsProdukt, lng_ExtraID, dbl_Menge, dbl_MengeIntern, txt_Stückelung, "
        u"lng_Einheit, "
        u"txt_Ccy, dbl_PreisMitMWSt, dbl_Rabatt, dbl_MWStSatz, dbl_PreisOhneMWSt, dbl_BestellZeitDouble FROM "
        u"tbl_Auftragswesen_Bestellungen_Details WHERE lng_TrxNrMaster IN (SELECT lng_TrxNr FROM "
        u"tbl_Auftragswesen_Bestellungen_Master WHERE %2)"_s.arg(100'000 * (which + 1))
            .arg(chosen));
    ConnMain.Execute(u"INSERT INTO tbl_Auftragswesen_Bestellungen_Master SELECT %1, lng_KundenID, "
                     u"lng_KurierID, %2, %2, %3 - %2, %3, "
                     u"time_Lieferzeit, txt_Konditionen, lng_LieferDatum, txt_LieferDatum, "
                     u"dbl_SummeOhneMWSt, dbl_MWStBetrag, "
                     u"dbl_TotalMitMWSt FROM tbl_Auftragswesen_Bestellungen_Master WHERE %4"_s.arg(number)
                         .arg(qint64(day))
                         .arg(moment, chosen));
}

class ReckoningTest : public testing::Test {
  protected:
    void SetUp() override {
        common::clock::set(today() + 10 / 24.0);
        install::installDatabases(folder.path(), {.demo = true, .reportsFrom = {}});
        store::setAppPath(folder.path());
        store::OpenDatabases();
        store::LoadSystemSettings();
        SysFiktiverTag = kFictiveHour / 24.0;
        const double night = today() - 1;
        copyTo(1, night, common::timeSerial(2, 30));
        copyTo(2, night, common::timeSerial(kFictiveHour, 0));
        copyTo(3, today(), common::timeSerial(4, 59));
        copyTo(4, common::dateSerial(2027, 10, 31), common::timeSerial(2, 30));
        copyTo(5, common::dateSerial(2027, 12, 31), common::timeSerial(23, 59));
        copyTo(6, common::dateSerial(2016, 2, 29), common::timeSerial(12, 0));
        copyTo(7, common::dateSerial(2028, 2, 29), common::timeSerial(0, 0));
        ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte WHERE lng_ID = 3"_s);
        reckon();
    }

    ~ReckoningTest() override {
        if (ConnMain.IsOpen())
            store::CloseDatabases();
        common::clock::release();
    }

    void reckon() {
        QProcess python;
        python.start(u"/usr/bin/python3"_s, {QStringLiteral(TAVOLINO_SOURCE_DIR "/tests/program/reckon.py"),
                                             folder.filePath(u"Data/DBTavolino.mdb"_s),
                                             QString::number(today()), QString::number(kFictiveHour)});
        ASSERT_TRUE(python.waitForFinished(120'000));
        ASSERT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
        lines = QString::fromUtf8(python.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        ASSERT_GT(lines.size(), 100);
    }

    /// What the other program says behind a beginning.
    QStringList reckoned(const QString& beginning) const {
        QStringList found;
        for (const QString& line : lines)
            if (line.startsWith(beginning + u'|'))
                found << line.mid(beginning.size() + 1);
        EXPECT_FALSE(found.isEmpty()) << beginning.toStdString();
        return found;
    }

    template <typename Screen> Screen& open() {
        auto opened = std::make_unique<Screen>(
            platform::Services{dialogs, navigation, registry, reports, printers, internet});
        Screen& it = *opened;
        screen = std::move(opened);
        screen->show();
        return it;
    }

    template <typename Widget> Widget& find(const char16_t* name) {
        return *screen->findChild<Widget*>(QString::fromUtf16(name));
    }

    /// The place of the courier whom the other program asks for, "Alle" without one.
    int courierAt(bool one) {
        return one ? find<QComboBox>(u"combo_Kurier").findData(test::TestFirm::kKurierAB) : 0;
    }

    platform::DataGrid& grid(const char16_t* name) { return find<platform::DataGrid>(name); }

    void click(const char16_t* name) { find<QAbstractButton>(name).click(); }

    void setSpan(double from, double to) {
        find<QLineEdit>(u"txt_DatumVon").setText(common::formatDate(from, u"DD/MM/YYYY"));
        find<QLineEdit>(u"txt_DatumBis").setText(common::formatDate(to, u"DD/MM/YYYY"));
    }

    /// By a user's hand.
    void choose(const char16_t* list, int entry) {
        auto& box = find<QComboBox>(list);
        box.setCurrentIndex(entry);
        Q_EMIT box.activated(entry);
    }

    static QString shown(const common::Value& value) {
        if (value.isDate())
            return QString::number(value.toSerial());
        return value.isDouble() ? common::formatNumber(value.toDouble(), u"0.00") : value.toText();
    }

    /// Cells of a list, divided by "|"; rows whose last cell is empty are left out.
    static QStringList rows(const platform::DataGrid& list, std::initializer_list<int> columns) {
        QStringList all;
        for (int row = 0; row < list.rowCount(); ++row) {
            QStringList cells;
            for (const int column : columns)
                cells << shown(list.value(row, column));
            if (!cells.last().isEmpty())
                all << cells.join(u'|');
        }
        return all;
    }

    /// Name and amounts of each row, with two decimals.
    QStringList withAmounts(const char16_t* list, std::initializer_list<int> columns) {
        QStringList all;
        for (int row = 0; row < grid(list).rowCount(); ++row) {
            QStringList cells{grid(list).text(row, 0)};
            for (const int column : columns)
                cells << common::formatNumber(grid(list).value(row, column).toDouble(), u"0.00");
            all << cells.join(u'|');
        }
        return all;
    }

    /// The main database as it lies on the disk.
    QByteArray storedBytes() const {
        QByteArray bytes;
        for (const QString& name : {u"Data/DBTavolino.mdb"_s, u"Data/DBTavolino.mdb-wal"_s}) {
            QFile file(folder.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                bytes += file.readAll();
        }
        return bytes;
    }

    static QString printed(const QString& sql) {
        return common::formatNumber(test::TestFirm::value(sql, ConnPrint).toDouble(), u"0.00");
    }

    QString label(const char16_t* name) { return find<QLabel>(name).text().remove(u'\''); }

    static void expectSame(const QStringList& ours, const QStringList& theirs) {
        EXPECT_EQ(ours.join(u'\n').toStdString(), theirs.join(u'\n').toStdString());
    }

    static void expectSame(const QString& ours, const QString& theirs) {
        EXPECT_EQ(ours.toStdString(), theirs.toStdString());
    }

    QTemporaryDir folder;
    QStringList lines;
    test::TestDialogs dialogs;
    test::TestNavigation navigation;
    test::TestRegistry registry;
    test::TestReports reports;
    test::TestPrinters printers;
    test::TestInternet internet;
    std::unique_ptr<QWidget> screen;
};

} // namespace

TEST_F(ReckoningTest, TurnoverByPeriodAndPeakTimes) {
    open<frmAuswertungenUmsatz>();
    for (const auto& [button, measure] :
         {std::pair{u"opt_Umsatz", u"dbl_TotalMitMWSt"_s}, std::pair{u"opt_MWSt", u"dbl_MWStBetrag"_s}})
        for (const auto& [courier, name] :
             {std::pair{false, measure}, std::pair{true, measure + u"-courier"_s}}) {
            choose(u"combo_Kurier", courierAt(courier));
            click(button);
            expectSame(rows(grid(u"TagesUmsatzGrid"), {0, 2}), reckoned(u"day|"_s + name));
            QStringList months, years;
            for (const QString& row : rows(grid(u"MonatsUmsatzGrid"), {2}))
                months << QString::number(months.size() + 1) + u'|' + row;
            expectSame(months, reckoned(u"month|"_s + name));
            expectSame(rows(grid(u"JahresUmsatzGrid"), {0, 2}), reckoned(u"year|"_s + name));
        }
    click(u"opt_Umsatz");
    choose(u"combo_Kurier", 0);
    setSpan(today() - 40, today() - 1);
    click(u"cmdShow");
    expectSame(label(u"lbl_TotalPreis"), reckoned(u"journal|span"_s)[0].section(u'|', 1));
    find<QTabWidget>(u"Ansicht").setCurrentIndex(2);
    QStringList counts;
    for (int day = 0; day < 7; ++day) {
        choose(u"combo_Wochentag", day + 1);
        const auto hours = find<platform::ChartView>(u"StundenBild").chart().series.at(0).values;
        for (size_t hour = 0; hour < 24; ++hour)
            if (hours[hour] > 0)
                counts << u"%1-%2|%3"_s.arg(day).arg(hour).arg(hours[hour]);
    }
    expectSame(counts, reckoned(u"peak"_s));
}

TEST_F(ReckoningTest, CloseOfTheDayOfADayAndASpan) {
    open<frmAuswertungenTagesabschluss>();
    for (const auto& [name, first] : {std::pair{u"day"_s, today() - 1}, std::pair{u"span"_s, today() - 40}}) {
        setSpan(first, today() - 1);
        click(u"cmdShow");
        const QString close = u"close|"_s + name;
        const auto overview = [this](int row, int column) {
            return shown(grid(u"UebersichtGrid").value(row, column));
        };
        expectSame(overview(0, 1), reckoned(close + u"|orders"_s)[0]);
        expectSame(overview(1, 0).section(u"Nr. "_s, 1).remove(u','), reckoned(close + u"|cancelled"_s)[0]);
        expectSame(overview(2, 2), reckoned(close + u"|turnover"_s)[0]);
        expectSame(overview(3, 2), reckoned(close + u"|discount"_s)[0]);
        QStringList taxes = rows(grid(u"MWStGrid"), {0, 1, 2, 3});
        for (QString& row : taxes)
            row.remove(row.indexOf(u'|') - 1, 1); // "8.10"
        expectSame(taxes, reckoned(u"close-vat|"_s + name));
        QStringList terms = reckoned(u"close-terms|"_s + name);
        terms.sort(Qt::CaseInsensitive);
        expectSame(rows(grid(u"KonditionenGrid"), {0, 1, 2}).filter(QRegularExpression(u"\\|[1-9]\\d*\\|"_s)),
                   terms);
        QStringList couriers = reckoned(u"close-courier|"_s + name);
        couriers.sort(Qt::CaseInsensitive);
        expectSame(rows(grid(u"KuriereGrid"), {0, 1, 2, 3}), couriers);
    }
}

TEST_F(ReckoningTest, JournalByDayAndCourier) {
    open<frmAuswertungenBuchungsjournal>();
    setSpan(today() - 40, today() - 1);
    find<QComboBox>(u"combo_Kurier").setCurrentIndex(courierAt(true));
    const auto set = [this](const char16_t* box, bool on) {
        if (find<QCheckBox>(box).isChecked() != on)
            click(box);
    };
    for (const auto& [name, days, courier] :
         {std::tuple{u"all"_s, false, false}, std::tuple{u"span"_s, true, false},
          std::tuple{u"courier"_s, false, true}, std::tuple{u"both"_s, true, true}}) {
        set(u"check_Datum", days);
        set(u"check_Kurier", courier);
        click(u"cmdShow");
        expectSame(u"%1|%2"_s.arg(grid(u"JournalGrid").rowCount()).arg(label(u"lbl_TotalPreis")),
                   reckoned(u"journal|"_s + name)[0]);
    }
}

TEST_F(ReckoningTest, TurnoverByProductAndCategory) {
    open<frmAuswertungenUmsatzProdukte>();
    setSpan(today() - 40, today() - 1);
    find<QLineEdit>(u"txt_TimeTo").setText(u"00:00"_s);
    for (const auto& [name, courier, fictive] :
         {std::tuple{u"span"_s, 0, false}, std::tuple{u"courier"_s, 1, false},
          std::tuple{u"fictive"_s, 0, true}}) {
        find<QComboBox>(u"combo_Kurier").setCurrentIndex(courierAt(courier));
        find<QCheckBox>(u"check_FiktivesDatum").setChecked(fictive);
        find<QAbstractButton>(u"opt_Produkte").setChecked(true);
        click(u"cmdShow");
        expectSame(withAmounts(u"ArtikelGruppenDetailsGrid", {1, 3, 4}), reckoned(u"product|"_s + name));
        expectSame(label(u"lbl_UmsatzTotalPreis") + u'|' + label(u"lbl_MwstTotalPreis"),
                   reckoned(u"products|"_s + name)[0].section(u'|', 2));
        find<QAbstractButton>(u"opt_Kategorien").setChecked(true);
        click(u"cmdShow");
        QStringList categories = withAmounts(u"ArtikelGruppenDetailsGrid", {1, 3, 4});
        categories.sort();
        expectSame(categories, reckoned(u"category|"_s + name));
    }
}

TEST_F(ReckoningTest, CustomersAndWhatTheyOrder) {
    open<frmAuswertungenBuchungsjournalPerKunde>();
    click(u"cmdTop20Clients");
    QStringList best = rows(grid(u"KundenStatsGrid"), {1, 4});
    expectSame(best[0], reckoned(u"top"_s)[0]);
    QStringList expected = reckoned(u"top"_s);
    best.sort();
    expected.sort();
    // With ties, whose order is the store's.
    expectSame(best, expected);
    expectSame(label(u"lbl_TotalPreis"), reckoned(u"top-total|"_s)[0]);
    const QString customer = reckoned(u"top"_s)[0].section(u'|', 0, 0);
    const auto load = [&] {
        find<QLineEdit>(u"txt_KundenID").setText(customer);
        click(u"cmdLoad");
    };
    load();
    click(u"cmdShow");
    expectSame(rows(grid(u"KundenStatsGrid"), {0, 4}), reckoned(u"customer|"_s + customer));
    expectSame(label(u"lbl_TotalPreis"), reckoned(u"customer-total|"_s + customer)[0]);
    open<frmAuswertungenUmsatzProduktePerKunde>();
    load();
    setSpan(common::dateSerial(2000, 1, 1), today());
    for (const auto& [button, section] : {std::pair{u"opt_Produkte", u"product|customer"_s},
                                          std::pair{u"opt_Kategorien", u"category|customer"_s}}) {
        find<QAbstractButton>(button).setChecked(true);
        click(u"cmdShow");
        QStringList shownRows = withAmounts(u"ArtikelGruppenDetailsGrid", {1, 3}), others;
        for (const QString& row : reckoned(section + customer))
            others << row.section(u'|', 0, 2);
        shownRows.sort();
        others.sort();
        expectSame(shownRows, others);
    }
}

TEST_F(ReckoningTest, ThreeRoadsLeadToTheSameMoneyAndNoneChangesTheStore) {
    SysFiktiverTag = 0;
    ConnMain.Execute(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
    const QByteArray before = storedBytes();
    open<frmAuswertungenTagesabschluss>();
    setSpan(today() - 40, today() - 1);
    click(u"cmdShow");
    const QString close = shown(grid(u"UebersichtGrid").value(2, 2));
    click(u"cmdPrint");
    expectSame(printed(u"SELECT Umsatz FROM PrintAbschluss"_s), close);
    expectSame(printed(u"SELECT Sum(Bar) AS Bar FROM PrintAbschlussKuriere"_s),
               shown(grid(u"UebersichtGrid").value(6, 2)));
    open<frmAuswertungenBuchungsjournal>();
    setSpan(today() - 40, today() - 1);
    find<QCheckBox>(u"check_Datum").setChecked(true);
    click(u"cmdShow");
    expectSame(label(u"lbl_TotalPreis"), close);
    click(u"cmdPrint");
    expectSame(printed(u"SELECT Sum(Betrag) AS Betrag FROM PrintBuchungsJournal"_s), close);
    open<frmAuswertungenUmsatzProdukte>();
    setSpan(today() - 40, today() - 1);
    find<QCheckBox>(u"check_FiktivesDatum").setChecked(true);
    click(u"cmdShow");
    expectSame(label(u"lbl_UmsatzTotalPreis"), close);
    click(u"cmdPrint");
    expectSame(printed(u"SELECT Sum(TotalUmsatz) AS Umsatz FROM PrintArtikelUmsatz"_s), close);
    const auto bars = find<platform::ChartView>(u"Bild").chart().arranged().series.at(0).values;
    expectSame(shown(std::accumulate(bars.begin(), bars.end(), 0.0)), close);
    open<frmAuswertungenUmsatz>();
    find<QTabWidget>(u"Ansicht").setCurrentIndex(2);
    click(u"cmdShow");
    click(u"cmdPrint");
    dialogs.savePath = folder.filePath(u"Umsatz.xlsx"_s);
    click(u"cmdExport");
    EXPECT_TRUE(QFile::exists(dialogs.savePath));
    open<frmAuswertungenBuchungsjournalPerKunde>();
    click(u"cmdTop20Clients");
    for (const char16_t* again : {u"cmdLoad", u"cmdShow", u"cmdPrint"}) {
        find<QLineEdit>(u"txt_KundenID").setText(u"12"_s);
        click(u"cmdLoad");
        click(again);
    }
    EXPECT_EQ(reports.runs.size(), 5);
    EXPECT_TRUE(storedBytes() == before) << "statistics only read";
}
