// The booking journal.
#include "ScreenTest.h"
#include "menus/frmPopUpMenu.h"
#include "platform/form/Contrast.h"
#include "reporting/frmAuswertungenBuchungsjournal.h"
#include <QAction>

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

/// Bookings of yesterday (1000), of today (1001 to 1004) and of tomorrow (1005).
class JournalTest : public test::ScreenTest<frmAuswertungenBuchungsjournal> {
  protected:
    JournalTest() {
        ConnMain.Execute(
            u"UPDATE tbl_Verwaltung_Kunden SET txt_Name = '', txt_Firma = ' Storniert ' WHERE lng_ID = 3"_s);
        for (const char16_t* row : {u"1000, 1, 1, 46156, 46156, 40.05", u"1001, 2, 2, 46157, 46157, 12.5",
                                    u"1002, -1, -1, 46157, 46157, 0", u"1003, 99, 77, 46157, 46157, 1234",
                                    u"1004, 3, 1, 46157, 46157, 3", u"1005, 1, 1, 46158, 46158, 4"})
            ConnMain.Execute(
                u"INSERT INTO tbl_Auftragswesen_Bestellungen_Master(lng_TrxNr, lng_KundenID, lng_KurierID, "
                "lng_BestellDatum, date_BestellDatum, dbl_TotalMitMWSt) VALUES (%1)"_s.arg(
                    QString::fromUtf16(row)));
        open();
    }

    /// Numbers of the rows on show, and the total.
    QString shown() {
        const QStringList lines = rows();
        QStringList numbers;
        for (const QString& line : lines)
            numbers << line.section(u'|', 1, 1);
        return numbers.join(u' ') + u" = "_s + find<QLabel>(u"lbl_TotalPreis")->text();
    }

    QString show(bool datum, bool kurier) {
        find<QCheckBox>(u"check_Datum")->setChecked(datum);
        find<QCheckBox>(u"check_Kurier")->setChecked(kurier);
        click(u"cmdShow");
        return shown();
    }

    QString printedHeading() {
        click(u"cmdPrint");
        return TestFirm::value(u"SELECT BuchungsJournalVonBis FROM PrintSettings"_s, ConnPrint);
    }
};

} // namespace

TEST_F(JournalTest, OpensOnTodayAndSetsCancelledOnesApart) {
    EXPECT_EQ(rows(),
              (QStringList{u"15/05/2026|1001|Bruno|CD|12.50 "_s, u"15/05/2026|1002|STORNIERT||0.00 "_s,
                           u"15/05/2026|1003|||1234.00 "_s, u"15/05/2026|1004| Storniert |AB|3.00 "_s}));
    EXPECT_EQ(shown().section(u'=', 1), u" "_s) << "added up when it is asked for";
    EXPECT_EQ(printedHeading(), u"15/05/2026 - 15/05/2026"_s);
    expectReachable();
    QPalette dark(QColor(u"#404040"_s));
    grid()->setPalette(dark);
    for (int row = 0; row < 4; ++row) {
        const QModelIndex cell = grid()->model()->index(row, 2);
        EXPECT_EQ(cell.data(Qt::FontRole).value<QFont>().italic(), row % 2 == 1);
        if (row % 2 == 1) {
            const auto ink = cell.data(Qt::ForegroundRole).value<QColor>();
            EXPECT_GE(platform::contrast(ink, dark.color(QPalette::Base)), platform::kReadable);
            EXPECT_GE(platform::contrast(ink, dark.color(QPalette::AlternateBase)), platform::kReadable);
        }
        doubleClickRow(row);
    }
    EXPECT_EQ(navigation.shown.size(), 2) << "a cancelled one opens nothing";
    EXPECT_EQ(navigation.openedBestellung, 1003);
}

TEST_F(JournalTest, TheBoxesExcludeEachOther) {
    const std::pair<const char16_t*, const char16_t*> clicks[] = {
        {u"check_Kurier", u" Datum Kurier"}, {u"check_AlleBuchungen", u" Alle"},
        {u"check_AlleBuchungen", u" Alle"},  {u"check_Kurier", u" Kurier"},
        {u"check_Datum", u" Datum Kurier"},  {u"check_Kurier", u" Datum"},
        {u"check_Datum", u" Alle"}};
    for (const auto& [box, boxes] : clicks) {
        tick(box);
        QString now = ticked(u"check_AlleBuchungen") ? u" Alle"_s : QString();
        now += ticked(u"check_Datum") ? u" Datum"_s : QString();
        now += ticked(u"check_Kurier") ? u" Kurier"_s : QString();
        EXPECT_EQ(now, QString::fromUtf16(boxes));
    }
}

TEST_F(JournalTest, ListsAndPrintsWhatTheBoxesSay) {
    EXPECT_EQ(show(false, false), u"1000 1001 1002 1003 1004 1005 = 1'293.55"_s);
    EXPECT_EQ(show(true, true), u"1000 1001 1002 1003 1004 1005 = 1'293.55"_s);
    EXPECT_EQ(said(), (Said{{u"Sie müssen zuerst einen Kurier auswählen."_s, 64, u"Kurier"_s}}));
    EXPECT_EQ(printedHeading(), u"15/05/2026 - 15/05/2026 / Kurier: "_s) << "the states came first";
    choose(u"combo_Kurier", u"AB"_s);
    EXPECT_EQ(show(false, true), u"1000 1004 1005 = 47.05"_s);
    EXPECT_EQ(printedHeading(), u"Alle Buchungen / Kurier: AB"_s);
    click(u"cmdDatumVonBack");
    EXPECT_EQ(show(true, true), u"1000 1004 = 43.05"_s);
    EXPECT_EQ(show(true, false), u"1000 1001 1002 1003 1004 = 1'289.55"_s);

    const QString sorted = u"1002 1004 1001 1000 1003 = 1'289.55"_s;
    screen->findChild<QAction*>(u"mnBuchungJournalBetrag"_s)->trigger();
    EXPECT_EQ(shown(), sorted);
    // Given up between the total and the list.
    dialogs.duringWork = [&, total = shown()] { dialogs.giveUp = shown() != total; };
    EXPECT_EQ(show(false, true), sorted) << "given up, all is as before";
    EXPECT_TRUE(std::exchange(dialogs.giveUp, true));
    dialogs.duringWork = {};
    screen->findChild<QAction*>(u"mnBuchungJournalDatum"_s)->trigger();
    EXPECT_EQ(shown(), sorted);
    dialogs.giveUp = false;
    click(u"cmdDatumBisFwd");
    EXPECT_EQ(printedHeading(), u"14/05/2026 - 16/05/2026"_s) << "old filters, new dates";
    EXPECT_EQ(
        TestFirm::rows(u"SELECT * FROM PrintBuchungsJournal"_s, ConnPrint).join(u' '),
        u"14/05/2026|1000|Meier Anna|AB|40.05 15/05/2026|1001|Bruno|CD|12.5 15/05/2026|1002|STORNIERT||0 "
        "15/05/2026|1003|||1234 15/05/2026|1004| Storniert |AB|3"_s);

    enter(u"txt_DatumVon", u"17.5.26"_s);
    EXPECT_EQ(show(true, false), u" = 0.00"_s) << "the end comes first";
    enter(u"txt_DatumVon", u"31/02/2026"_s);
    press(Qt::Key_Z, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return shown() == u"1001 1002 1003 1004 1005 = 1'253.50"_s; }))
        << "repaired, although the key left the focus in the field";
}

TEST_F(JournalTest, EachEntryOfTheMenuSortsByItsColumn) {
    ConnMain.Execute(
        u"UPDATE tbl_Auftragswesen_Bestellungen_Master SET lng_BestellDatum = 46160 WHERE lng_TrxNr = 1000"_s);
    show(false, false);
    for (const auto& [entry, order] : {std::pair{u"Datum"_s, u"1001 1002 1003 1004 1005 1000"_s},
                                       {u"AuftragsNr"_s, u"1000 1001 1002 1003 1004 1005"_s},
                                       {u"Buchung"_s, u"1003 1004 1001 1000 1005 1002"_s},
                                       {u"Kurier"_s, u"1002 1003 1000 1004 1005 1001"_s},
                                       {u"Betrag"_s, u"1002 1004 1005 1001 1000 1003"_s}}) {
        screen->findChild<QAction*>(u"mnBuchungJournal"_s + entry)->trigger();
        EXPECT_EQ(shown().section(u" ="_s, 0, 0), order) << entry.toStdString();
    }
}

TEST_F(JournalTest, TheCouriersMenuIsFilledOnceThereAreSome) {
    frmPopUpMenu menus(screen.get());
    for (const auto& [statement, entry] :
         {std::pair(u"DELETE FROM tbl_Verwaltung_Kuriere"_s, QString()),
          std::pair(u"INSERT INTO tbl_Verwaltung_Kuriere(txt_Kurzzeichen) VALUES('E&F')"_s, u"E&&F"_s)}) {
        ConnMain.Execute(statement);
        menus.FillKurierMenuOnce();
        ASSERT_EQ(menus.mnKurier.actions().size(), 1);
        EXPECT_EQ(menus.mnKurier.actions().constFirst()->text(), entry);
    }
}
