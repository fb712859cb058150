// An evening at the order desk: calls taken and missed, orders for later, users, and an end in mid-order.
#include "common/Clock.h"
#include "orders/OrderDraft.h"
#include "orders/frmAuftragswesenVorbestellungenAlarm.h"
#include "platform/form/DataGrid.h"
#include "program/Booker.h"
#include "shell/modEinstellungenBenutzer.h"
#include "store/SystemSettings.h"
#include "support/FullDisk.h"
#include "support/ProgramFixture.h"
#include "support/TestFirmServices.h"
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;
using orders::Col;
using platform::kAnswerNo;
using platform::kAnswerYes;
using test::TestFirm;

namespace {

/// A line that rings when the test says so.
class QuietLine : public platform::BasicCAPI32 {
  public:
    bool IsAvailable() override { return true; }

    void Start() override {}

    void Stop() override {}
};

class Evening : public test::ProgramTest {
  protected:
    void SetUp() override {
        line = std::make_unique<QuietLine>();
        ConnMain.Execute(u"UPDATE tbl_Einstellungen_System SET lng_VorbestellungBuchungStatus = 1, "
                         u"lng_VorbestellungBuchungZeit = 2, lng_VorbestellungAutomatischStatus = 1, "
                         u"lng_VorbestellungAutomatischZeit = 30, lng_EditierungBestellungen = 1"_s);
        // As an installation of an earlier program.
        for (const char16_t* later : {u"Auftragswesen_Erledigt", u"WebShop_Bestellungen_Verbucht",
                                      u"Stationen_Pacht", u"Stationen_Neues"})
            ConnMain.Execute(u"DROP TABLE tbl_"_s + QString::fromUtf16(later));
        ConnMain.Execute(u"DROP INDEX idx_Bestellungen_Kunde_Nummer"_s);
        ConnMain.Execute(u"CREATE INDEX idx_Bestellungen_Kunde ON "
                         u"tbl_Auftragswesen_Bestellungen_Master(lng_KundenID)"_s);
        ConnMain.Execute(u"PRAGMA user_version = 1"_s);
        modEinstellungenBenutzer::SaveAnmeldung(true);
        modEinstellungenBenutzer::SaveBenutzer({u"Anna"_s, u"Brot"_s, {}}, 0);
        modEinstellungenBenutzer::SaveBenutzer({u"Rosa"_s, u"Salz"_s, {true}}, 0);
    }

    void TearDown() override {
        ProgramTest::TearDown();
        SysAnmeldungBenutzer = UserAdministrator = 0;
    }

    void logIn(const QString& name, const QString& password) {
        inDialog([this, name, password](QWidget&) {
            key(name);
            key(password);
        });
    }

    /// A start of the program by Anna.
    void open() {
        // The watch of the log-in lives in the window, which the start makes.
        QTimer::singleShot(0, [this] { logIn(u"Anna"_s, u"Brot"_s); });
        ASSERT_TRUE(start(reports, printers));
    }

    void ring(const QString& number) { Q_EMIT line->IncomingCall(u"044"_s, number, u""_s); }

    QString status(const char* label) { return find<QLabel>(label)->text(); }

    /// F5 stands on the courier, Enter leads through it to time and day of the delivery.
    void keyDelivery(const QString& time, const QString& day) {
        press(Qt::Key_F5);
        press(Qt::Key_Return);
        press(Qt::Key_Return);
        key(time);
        key(day);
    }

    void book(std::initializer_list<int> answers) {
        for (const int answer : answers)
            dialogs.answer(answer);
        press(Qt::Key_F12);
        EXPECT_EQ(screen()->order().LastFilledRow(), -1) << dialogs.last().text.toStdString();
        EXPECT_EQ(dialogs.unexpected, 0);
    }

    QWidget* alarm() {
        auto* found = find<frmAuftragswesenVorbestellungenAlarm>("frmAuftragswesenVorbestellungenAlarm");
        return found && found->isVisible() ? found : nullptr;
    }

    /// The clock goes on and the minute's tick comes.
    void tickAt(int hour, int minute) {
        TestFirm::setTime(hour, minute);
        window().VorbestellungTimer_Timer();
    }

    /// Until what was keyed last is on disk.
    bool kept() {
        return QTest::qWaitFor([this] {
            orders::WorkingOrder found;
            return orders::OrderDraft::restore(draft, found) &&
                   test::fingerprint(found) == test::fingerprint(screen()->order());
        });
    }

    test::TestReports reports;
    test::TestPrinters printers;
    const QString draft = orders::OrderDraft::defaultFile();
};

TEST_F(Evening, CallsPreOrdersAlarmAndUsers) {
    open();
    EXPECT_FALSE(window().menuAction(u"mnEinstellungenBenutzer"_s)->isEnabled());

    // Bruno is taken at once, for Sunday; Anna rang meanwhile, nobody took her call.
    ring(u"0799999999"_s);
    press(Qt::Key_F9);
    TestFirm::setTime(18, 1);
    ring(u"0791234567"_s);
    TestFirm::setTime(18, 2);
    ring(u"0440000000"_s);
    key(u"10"_s);
    key(u"2"_s);
    keyDelivery(u"12:00"_s, u"17/05/2026"_s);
    book({kAnswerYes});
    EXPECT_EQ(status("MDIVorbestellung"), u"1"_s);

    // Anna's call is found in the list: for tonight, in three hours.
    TestFirm::setTime(18, 5);
    inDialog([this](QWidget& list) {
        auto* calls = list.findChild<platform::DataGrid*>();
        ASSERT_EQ(calls->rowCount(), 3);
        int row = 0;
        while (calls->text(row, 1) != u"0791234567"_s)
            ++row;
        calls->setRow(row);
        press(Qt::Key_Return);
    });
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(screen()->order().lng_KundenID, TestFirm::kAnna);
    key(u"W"_s);
    press(Qt::Key_Return);
    keyDelivery(u"21:00"_s, u"15/05/2026"_s);
    book({kAnswerYes});
    EXPECT_EQ(status("MDIVorbestellung"), u"2"_s);
    EXPECT_EQ(
        TestFirm::value(u"SELECT Count(*) AS N FROM tbl_Verwaltung_AnruferListe WHERE flag_Kunde = True"_s),
        u"2"_s);

    // It falls due while Bruno's next order is being typed.
    ring(u"0799999999"_s);
    press(Qt::Key_F9);
    test::typeText(u"1"_s);
    tickAt(20, 29);
    EXPECT_FALSE(alarm());
    tickAt(20, 30);
    ASSERT_TRUE(alarm());
    key(u"0"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(screen()->order().BestellungGrid.text(0, Col::Bezeichnung), u"Pizza Hawaii"_s);
    book({kAnswerNo});
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Master"_s), 1);

    // Over the alarm and the list onto the screen, booked, and deleted by hand.
    press(Qt::Key_F10);
    EXPECT_FALSE(alarm());
    press(Qt::Key_Return);
    EXPECT_EQ(screen()->order().BestellungGrid.text(0, Col::Bezeichnung), u"Wein"_s);
    book({kAnswerNo});
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Master"_s), 2);
    tickAt(20, 31);
    ASSERT_TRUE(alarm()) << "booking leaves it standing";
    alarm()->findChild<QPushButton*>(u"txt_AuftragsNr"_s)->click();
    dialogs.answer(kAnswerYes);
    find<QPushButton>("cmdDelete")->click();
    tickAt(20, 32);
    EXPECT_FALSE(alarm());
    EXPECT_EQ(status("MDIVorbestellung"), u"1"_s) << "Sunday's is left";

    // The owner relieves Anna.
    EXPECT_TRUE(screen()->findChild<QPushButton*>(u"cmdVerwaltungSave"_s)->isHidden());
    logIn(u"Rosa"_s, u"Salz"_s);
    window().menuAction(u"mnEinstellungenAnmeldung"_s)->trigger();
    EXPECT_FALSE(screen());
    EXPECT_TRUE(window().menuAction(u"mnEinstellungenBenutzer"_s)->isEnabled());
    press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_FALSE(screen()->findChild<QPushButton*>(u"cmdVerwaltungSave"_s)->isHidden());
    EXPECT_EQ(dialogs.unexpected, 0);
    EXPECT_TRUE(ended.isEmpty());
}

TEST_F(Evening, AnEndInMidOrderIsTakenUpAtTheNextStart) {
    const QString question = u"Ein angefangener Auftrag wurde gefunden. Möchten Sie ihn weiter bearbeiten?"_s;
    open();
    EXPECT_TRUE(dialogs.said.isEmpty());
    EXPECT_EQ(QDir(folder + u"/Data/Sicherungen"_s).entryList({u"Vor_der_Aktualisierung_*.mdb"_s}).size(), 1);
    EXPECT_EQ(TestFirm::value(u"SELECT name FROM sqlite_master WHERE name LIKE 'idx_Bestellungen_Kunde%'"_s),
              u"idx_Bestellungen_Kunde_Nummer"_s);
    ring(u"0791234567"_s);
    press(Qt::Key_F9);
    key(u"10"_s);
    key(u"3"_s);
    press(Qt::Key_F8);
    press(Qt::Key_Return);
    keyDelivery(u"19:15"_s, u"15/05/2026"_s);
    ASSERT_TRUE(kept());
    const QString before = test::fingerprint(screen()->order());
    window().close();
    EXPECT_EQ(ended, QList<int>{0});

    dialogs.answer(kAnswerYes);
    open();
    EXPECT_EQ(dialogs.last().text, question);
    ASSERT_TRUE(screen());
    EXPECT_EQ(test::fingerprint(screen()->order()), before);
    press(Qt::Key_F6);
    key(u"W"_s);
    press(Qt::Key_Return);
    book({kAnswerNo});
    EXPECT_EQ(TestFirm::value(u"SELECT dbl_TotalMitMWSt AS T FROM tbl_Auftragswesen_Bestellungen_Master"_s),
              u"63"_s);
    EXPECT_FALSE(QFile::exists(draft));

    ring(u"0799999999"_s);
    press(Qt::Key_F9);
    key(u"G"_s);
    ASSERT_TRUE(kept());
    window().close();
    dialogs.answer(kAnswerNo);
    open();
    EXPECT_EQ(dialogs.last().text, question);
    EXPECT_FALSE(screen());
    EXPECT_FALSE(QFile::exists(draft));
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Master"_s), 1);
    window().close();

    QFile damaged(draft);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly) && damaged.write("{") == 1);
    damaged.close();
    open();
    EXPECT_TRUE(dialogs.last().text.contains(u"lässt sich aber nicht lesen"_s));
    EXPECT_TRUE(dialogs.last().text.endsWith(u"Auftrag.entwurf.defekt"_s));
    EXPECT_EQ(dialogs.last().style, platform::kInformation);
    EXPECT_FALSE(screen());
    EXPECT_EQ(dialogs.unexpected, 0);
}

TEST_F(Evening, WhatIsGivenUpComesBackAndTheSlipTellsTheTruth) {
    printers.printers = {{u"Kasse"_s, {}, {}}};
    open();
    const auto keyed = [this](const QString& number, const QString& code) {
        ring(number);
        press(Qt::Key_F9);
        key(code);
        key(u"1"_s);
        return test::fingerprint(screen()->order());
    };
    const auto takenBack = [this] {
        press(Qt::Key_F11, Qt::ShiftModifier);
        return test::fingerprint(screen()->order());
    };
    const QString first = keyed(u"0791234567"_s, u"10"_s);
    keyed(u"0799999999"_s, u"W"_s);
    EXPECT_TRUE(takenBack() == first) << "the next call had replaced it";
    find<QPushButton>("cmdCleanMask")->click();
    EXPECT_TRUE(takenBack() == first) << "cleaned";
    ASSERT_TRUE(kept());
    screen()->findChild<QPushButton*>(u"cmdClose"_s)->click();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !screen(); }));
    EXPECT_FALSE(QFile::exists(draft));
    press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(takenBack() == first) << "its screen closed";

    {
        const test::FullDisk full(1000);
        press(Qt::Key_F6);
        key(u"W"_s);
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return status("MDIMeldung").contains(u"nicht festgehalten"_s); }));
    }
    EXPECT_TRUE(QFile::exists(draft));

    book({kAnswerYes});
    EXPECT_EQ(reports.runs.last().note, u"Der Auftrag ist bereits gespeichert."_s);
    EXPECT_FALSE(takenBack() == first) << "booked";
    press(Qt::Key_Left, Qt::AltModifier);
    find<QPushButton>("cmdPrint")->click();
    ASSERT_EQ(reports.runs.size(), 2);
    EXPECT_EQ(reports.runs.last().destination, int(platform::ReportJob::kToWindow));
    dialogs.answer(kAnswerYes);
    dialogs.answer(kAnswerYes);
    UserAdministrator = 1;
    screen()->findChild<QPushButton*>(u"cmdVerwaltungSave"_s)->click();
    EXPECT_EQ(reports.runs.size(), 3);
    EXPECT_EQ(reports.runs.last().note, u"Die Änderung wird nach dem Drucken gespeichert."_s);
}

} // namespace
