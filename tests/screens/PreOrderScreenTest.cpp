#include "ScreenTest.h"
#include "ShellFixture.h"
#include "common/Clock.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "orders/frmAuftragswesenVorbestellungen.h"
#include "orders/frmAuftragswesenVorbestellungenAlarm.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "platform/form/FieldHelpers.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;
using platform::DataGrid;
using test::ShellTest;
using test::TestFirm;

namespace {

/// The list of pre-orders on the small firm.
class PreOrderListTest : public test::ScreenTest<frmAuftragswesenVorbestellungen> {
  protected:
    static QString store(const char16_t* lieferung) {
        orders::WorkingOrder order;
        order.SetUp();
        order.SucheTelefonNummer(u"0791234567"_s);
        order.PickProdukt(TestFirm::kWein, u"W"_s, 1);
        order.setDetail(orders::Detail::Lieferung, QString::fromUtf16(lieferung));
        order.setDetail(orders::Detail::Lieferzeit, u"18:05"_s);
        return QString::number(modAuftragswesenVorbestellungen::SaveVorbestellung(order));
    }

    QComboBox* dates() { return screen->findChild<QComboBox*>(); }

    static qint64 lines() { return TestFirm::count(u"tbl_Auftragswesen_Vorbestellungen_Details"_s); }
};

TEST_F(PreOrderListTest, ListsByDayAllAndOne) {
    const QString today = store(u"15/05/2026");
    const QString later = store(u"06/06/2026");
    const QString far = store(u"24/12/2026");
    open();
    ASSERT_EQ(dates()->count(), 33);
    EXPECT_EQ(dates()->itemText(0) + dates()->currentText() + dates()->itemText(32),
              u"05/05/202615/05/202606/06/2026"_s);
    EXPECT_EQ(rows(), QStringList{today + u"|15/05/2026|18:05|1"_s});
    for (const auto& [date, numbers] : {std::pair{u"06/06/2026"_s, later},
                                        {u"16/05/2026"_s, QString()},
                                        {u"24.12.26"_s, far},
                                        {u"kein Datum"_s, far},
                                        {u"31/02/2026"_s, far}}) {
        dates()->setEditText(date);
        click(u"cmdLoad");
        EXPECT_EQ(keys(), numbers) << date.toStdString();
    }
    click(u"cmdShowAll");
    EXPECT_EQ(grid()->rowCount(), 3);
    screen->ShowVorbestellung(later.toLongLong());
    ASSERT_EQ(grid()->rowCount(), 1);
    const QString anna = modVerwaltungKunden::GetKundeName(TestFirm::kAnna);
    EXPECT_EQ(find<QLabel>(u"lbl_Kunde")->text(), anna);
    EXPECT_EQ(grid()->model()->index(0, 3).data(Qt::ToolTipRole).toString(), platform::toolTipOf(anna));
    press(Qt::Key_Return);
    EXPECT_EQ(QString::number(navigation.openedVorbestellung), later) << "Enter leads on from the alarm";
}

TEST_F(PreOrderListTest, DoubleClickOpensAndDeleteAsks) {
    open();
    QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, QPoint(20, 10));
    click(u"cmdDelete");
    EXPECT_EQ(navigation.openedVorbestellung, -1);
    const QString first = store(u"15/05/2026");
    const QString second = store(u"15/05/2026");
    click(u"cmdLoad");
    click(u"cmdDelete");
    EXPECT_TRUE(said().isEmpty())
        << "neither an empty list nor one without a chosen row has what to ask about";
    doubleClickRow(1);
    EXPECT_EQ(QString::number(navigation.openedVorbestellung), second);
    for (const auto& [answer, left] : {std::pair{platform::kAnswerNo, 2}, {platform::kAnswerYes, 1}}) {
        dialogs.answer(answer);
        click(u"cmdDelete");
        EXPECT_EQ(said(), (test::Said{{u"Möchten Sie diese Vorbestellung löschen?"_s, platform::kYesNo,
                                       u"Vorbestellung Löschen"_s}}));
        EXPECT_EQ(lines(), left);
    }
    EXPECT_EQ(keys(), first);

    // One whose delivery is damaged is opened and deleted like another.
    const QString table = u"tbl_Auftragswesen_Vorbestellungen_Master"_s;
    ConnMain.Execute(u"UPDATE "_s + table + u" SET txt_LieferDatum = 'kaputt', time_Lieferzeit = 'bald'"_s);
    click(u"cmdShowAll");
    EXPECT_EQ(grid()->model()->index(0, 2).data().toString(), u"bald"_s);
    doubleClickRow(0);
    EXPECT_EQ(QString::number(navigation.openedVorbestellung), first);
    ConnMain.Execute(u"UPDATE "_s + table + u" SET txt_LieferDatum = NULL, lng_LieferDatum = NULL"_s);
    click(u"cmdShowAll");
    doubleClickRow(0);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdDelete");
    EXPECT_EQ(grid()->rowCount() + lines(), 0);
    EXPECT_EQ(navigation.messages.last(), u"Vorbestellung %1 gelöscht"_s.arg(first));
    EXPECT_EQ(dialogs.unexpected, 0);
}

/// The alarm in the whole program, with the real order screen.
class PreOrderAlarmTest : public ShellTest {
  protected:
    PreOrderAlarmTest() {
        withFakeDesk = false;
        common::clock::set(TestFirm::day() + 0.75);
    }

    ~PreOrderAlarmTest() override { common::clock::release(); }

    void startWithDuePreOrder() {
        start();
        SysVorbestellungAutomatischStatus = 1;
        SysVorbestellungAutomatischZeit = 30;
        ConnMain.Execute(u"INSERT INTO tbl_Auftragswesen_Vorbestellungen_Master(lng_KundenID, lng_KurierID, "
                         u"lng_LieferDatum, txt_LieferDatum, time_Lieferzeit, txt_Konditionen) VALUES(7, 1, "
                         u"46157, '15/05/2026', 0.7708333333, 'Rechnung')"_s);
    }

    void tick() { app->mainWindow().VorbestellungTimer_Timer(); }

    QWidget* alarm() {
        auto* found = app->mainWindow().findChild<frmAuftragswesenVorbestellungenAlarm*>();
        return found && found->isVisible() ? found : nullptr;
    }
};

TEST_F(PreOrderAlarmTest, TheKeysStayInTheOrderBeingTyped) {
    startWithDuePreOrder();
    app->mainWindow().screens().show(u"frmAuftragswesenAuftragserfassung"_s);
    auto* number = find<QLineEdit>("txt_SucheTelefonNummer");
    number->setFocus();
    test::typeText(u"079"_s);
    tick();
    ASSERT_TRUE(alarm());
    EXPECT_EQ(alarm()->findChild<QPushButton*>(u"txt_AuftragsNr"_s)->text(), u"1"_s);
    EXPECT_EQ(QApplication::focusWidget(), number);
    EXPECT_EQ(QApplication::activeWindow(), &app->mainWindow());
    for (const QSize& size : {QSize(1366, 768), QSize(1000, 700)}) {
        app->mainWindow().showNormal();
        app->mainWindow().resize(size);
        QCoreApplication::processEvents();
        EXPECT_TRUE(app->mainWindow().rect().contains(alarm()->geometry())) << size.width();
    }
    test::typeText(u"12"_s);
    EXPECT_EQ(number->text(), u"07912"_s);
    // The mouse closes it without taking the keys either.
    QTest::mouseClick(alarm()->findChild<QPushButton*>(u"cmdClose"_s), Qt::LeftButton);
    EXPECT_FALSE(alarm());
    EXPECT_EQ(QApplication::focusWidget(), number);
    for (const bool closed : {true, false, true}) {
        tick();
        ASSERT_TRUE(alarm()) << "it comes again until the pre-order is deleted";
        if (closed)
            QTest::keyClick(number, Qt::Key_F10, Qt::ControlModifier);
    }
    EXPECT_EQ(app->mainWindow().findChildren<frmAuftragswesenVorbestellungenAlarm*>().size(), 1);
    EXPECT_EQ(QApplication::focusWidget(), number);
    modAuftragswesenVorbestellungen::DeleteVorbestellung(1);
    tick();
    EXPECT_FALSE(alarm());
    EXPECT_EQ(label("MDIVorbestellung"), u"0"_s);
}

TEST_F(PreOrderAlarmTest, ReachesAMinimisedWindowAndTellsWhoseItIs) {
    int beeps = 0;
    procedures.beep = [&] { ++beeps; };
    startWithDuePreOrder();
    ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kunden(lng_ID, txt_Firma, txt_Name, txt_Vorname) VALUES(7, "
                     u"'Bau AG', 'Meier', 'Anna')"_s);
    app->mainWindow().showMinimized();
    QApplication::setActiveWindow(nullptr);
    tick();
    EXPECT_FALSE(app->mainWindow().isMinimized());
    EXPECT_EQ(beeps, 1);
    ASSERT_TRUE(alarm());
    EXPECT_EQ(alarm()->findChild<QLabel*>(u"lbl_Kunde"_s)->text(), u"Bau AG, Meier Anna"_s);
}

TEST_F(PreOrderAlarmTest, SwitchedOffTheTimerDoesNothing) {
    startWithDuePreOrder();
    SysVorbestellungAutomatischStatus = 0;
    const QString before = label("MDIVorbestellung");
    tick();
    EXPECT_FALSE(alarm());
    EXPECT_EQ(label("MDIVorbestellung"), before);
    ConnMain.Execute(u"UPDATE tbl_Auftragswesen_Vorbestellungen_Master SET lng_LieferDatum = 'kaputt'"_s);
    SysVorbestellungAutomatischStatus = 1;
    tick();
    EXPECT_FALSE(alarm());
    EXPECT_EQ(label("MDIVorbestellung"), u"1"_s) << "the count is written all the same";
}

} // namespace
