#include "common/Clock.h"
#include "common/Convert.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "orders/frmAuftragswesenVorbestellungen.h"
#include "orders/frmAuftragswesenVorbestellungenAlarm.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "platform/form/DataGrid.h"
#include "platform/form/FieldHelpers.h"
#include "store/SystemSettings.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include "tests/screens/ShellFixture.h"
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::DataGrid;
using test::ShellTest;
using test::TestFirm;

namespace {

/// The list of pre-orders on the small firm.
class PreOrderListTest : public testing::Test {
  protected:
    PreOrderListTest() : m_services{dialogs, navigation, registry, reports, printers} { order.SetUp(); }

    qint64 store(const char16_t* lieferung) {
        order.SucheTelefonNummer(u"0791234567"_s);
        order.PickProdukt(TestFirm::kWein, u"W"_s, 1);
        order.setDetail(orders::Detail::Lieferung, QString::fromUtf16(lieferung));
        order.setDetail(orders::Detail::Lieferzeit, u"18:05"_s);
        return modAuftragswesenVorbestellungen::SaveVorbestellung(order);
    }

    void open() {
        screen = std::make_unique<frmAuftragswesenVorbestellungen>(m_services);
        screen->show();
        screen->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    }

    DataGrid* grid() { return screen->findChild<DataGrid*>(); }

    QComboBox* dates() { return screen->findChild<QComboBox*>(); }

    void click(const char* button) {
        QTest::mouseClick(screen->findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
    }

    void doubleClick(int row) {
        const QPoint place = grid()->visualRect(grid()->model()->index(row, 0)).center();
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, place);
    }

    TestFirm firm;
    test::TestDialogs dialogs;
    test::TestNavigation navigation;
    test::TestRegistry registry;
    test::TestReports reports;
    test::TestPrinters printers;
    orders::WorkingOrder order;
    std::unique_ptr<frmAuftragswesenVorbestellungen> screen;

  private:
    platform::Services m_services;
};

TEST_F(PreOrderListTest, ListsByDayAllAndOne) {
    const qint64 today = store(u"15/05/2026");
    const qint64 later = store(u"06/06/2026");
    const qint64 far = store(u"24/12/2026");
    open();
    ASSERT_EQ(dates()->count(), 33);
    EXPECT_EQ(dates()->itemText(0), u"05/05/2026"_s);
    EXPECT_EQ(dates()->itemText(32), u"06/06/2026"_s);
    EXPECT_EQ(dates()->currentText(), u"15/05/2026"_s);
    const char16_t* captions[] = {u"Auftrags-Nr.", u"Lieferdatum", u"Lieferzeit", u"Kunden-Nr."};
    const QString shown[] = {QString::number(today), u"15/05/2026"_s, u"18:05"_s, u"1"_s};
    for (int column = 0; column < 4; ++column) {
        EXPECT_EQ(grid()->model()->headerData(column, Qt::Horizontal).toString(), captions[column]);
        EXPECT_EQ(grid()->model()->index(0, column).data().toString(), shown[column]);
    }
    ASSERT_EQ(grid()->rowCount(), 1);

    struct Case {
        const char16_t* date;
        QList<qint64> numbers;
    };

    for (const Case& c : {Case{u"06/06/2026", {later}}, Case{u"16/05/2026", {}}, Case{u"24.12.26", {far}},
                          Case{u"kein Datum", {far}}, Case{u"31/02/2026", {far}}}) {
        dates()->setEditText(QString::fromUtf16(c.date));
        click("cmdLoad");
        ASSERT_EQ(grid()->rowCount(), c.numbers.size()) << QString::fromUtf16(c.date).toStdString();
        for (int row = 0; row < grid()->rowCount(); ++row)
            EXPECT_EQ(grid()->value(row, 0).toLong(), c.numbers[row]);
    }
    click("cmdShowAll");
    EXPECT_EQ(grid()->rowCount(), 3);
    screen->ShowVorbestellung(later);
    ASSERT_EQ(grid()->rowCount(), 1);
    const QString anna = modVerwaltungKunden::GetKundeName(TestFirm::kAnna);
    EXPECT_EQ(screen->findChild<QLabel*>(u"lbl_Kunde"_s)->text(), anna);
    EXPECT_EQ(grid()->model()->index(0, 3).data(Qt::ToolTipRole).toString(), platform::toolTipOf(anna));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(navigation.openedVorbestellung, later) << "Enter leads on from the alarm";
}

TEST_F(PreOrderListTest, DoubleClickOpensAndDeleteAsks) {
    open();
    QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, QPoint(20, 10));
    click("cmdDelete");
    EXPECT_EQ(navigation.openedVorbestellung, -1);
    EXPECT_TRUE(dialogs.said.isEmpty()) << "an empty list has nothing to ask about";

    const qint64 first = store(u"15/05/2026");
    const qint64 second = store(u"15/05/2026");
    click("cmdLoad");
    click("cmdDelete");
    EXPECT_TRUE(dialogs.said.isEmpty()) << "no row was chosen";
    doubleClick(1);
    EXPECT_EQ(navigation.openedVorbestellung, second);

    dialogs.answer(platform::kAnswerNo);
    click("cmdDelete");
    EXPECT_EQ(dialogs.last().text, u"Möchten Sie diese Vorbestellung löschen?"_s);
    EXPECT_EQ(dialogs.last().title, u"Vorbestellung Löschen"_s);
    EXPECT_EQ(dialogs.last().style, platform::kYesNo);
    EXPECT_EQ(grid()->rowCount(), 2);
    dialogs.answer(platform::kAnswerYes);
    click("cmdDelete");
    ASSERT_EQ(grid()->rowCount(), 1);
    EXPECT_EQ(grid()->value(0, 0).toLong(), first);
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Vorbestellungen_Details"_s), 1);
    EXPECT_EQ(dialogs.unexpected, 0);
}

TEST_F(PreOrderListTest, OneWithADamagedDeliveryDateIsOpenedAndDeletedLikeAnother) {
    const qint64 damaged = store(u"15/05/2026");
    ConnMain.Execute(u"UPDATE tbl_Auftragswesen_Vorbestellungen_Master SET txt_LieferDatum = 'kaputt', "
                     u"time_Lieferzeit = 'bald'"_s);
    open();
    ASSERT_EQ(grid()->rowCount(), 1);
    EXPECT_EQ(grid()->model()->index(0, 2).data().toString(), u"bald"_s);
    doubleClick(0);
    EXPECT_EQ(navigation.openedVorbestellung, damaged);
    ConnMain.Execute(u"UPDATE tbl_Auftragswesen_Vorbestellungen_Master SET txt_LieferDatum = NULL, "
                     u"lng_LieferDatum = NULL"_s);
    click("cmdShowAll");
    doubleClick(0);
    dialogs.answer(platform::kAnswerYes);
    click("cmdDelete");
    EXPECT_EQ(dialogs.last().text, u"Möchten Sie diese Vorbestellung löschen?"_s);
    EXPECT_EQ(grid()->rowCount(), 0);
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Vorbestellungen_Details"_s), 0);
    EXPECT_EQ(navigation.messages, QStringList{u"Vorbestellung %1 gelöscht"_s.arg(damaged)});
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

    void type(const char* keys) {
        for (; *keys; ++keys)
            QTest::keyClick(QApplication::focusWidget(), *keys);
    }
};

TEST_F(PreOrderAlarmTest, TheKeysStayInTheOrderBeingTyped) {
    startWithDuePreOrder();
    app->mainWindow().screens().show(u"frmAuftragswesenAuftragserfassung"_s);
    auto* number = find<QLineEdit>("txt_SucheTelefonNummer");
    number->setFocus();
    type("079");
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
    type("12");
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

TEST_F(PreOrderAlarmTest, LeadsOverTheListToTheOrder) {
    startWithDuePreOrder();
    EXPECT_TRUE(app->mainWindow().menuAction(u"mnAuftragswesenVorbestellungen"_s)->isEnabled());
    EXPECT_TRUE(find<QToolButton>("ToolBarVorbestellung")->isEnabled());
    tick();
    ASSERT_TRUE(alarm());
    QTest::mouseClick(alarm()->findChild<QPushButton*>(u"txt_AuftragsNr"_s), Qt::LeftButton);
    EXPECT_FALSE(alarm());
    auto* grid = find<DataGrid>("VorbestellungGrid");
    ASSERT_TRUE(grid);
    ASSERT_EQ(grid->rowCount(), 1);
    EXPECT_EQ(QApplication::focusWidget(), grid);
    QTest::keyClick(grid, Qt::Key_Return);
    auto* orders = dynamic_cast<frmAuftragswesenAuftragserfassung*>(
        app->mainWindow().screens().open(u"frmAuftragswesenAuftragserfassung"_s));
    ASSERT_TRUE(orders);
    EXPECT_EQ(orders->order().lng_KundenID, 7);
    EXPECT_EQ(orders->order().detail(orders::Detail::Konditionen), u"Rechnung"_s);
    EXPECT_EQ(orders->order().detail(orders::Detail::Lieferung), u"15/05/2026"_s);
    EXPECT_TRUE(orders->isAncestorOf(QApplication::focusWidget()));
    EXPECT_TRUE(ended.isEmpty());
    EXPECT_TRUE(dialogs.said.isEmpty());
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
