// The program while no database server answers: the order on the screen, lookups, calls, booking and the
// start.
#include "common/RunTimeError.h"
#include "orders/OrderDraft.h"
#include "program/Booker.h"
#include "store/ConnectionString.h"
#include "store/ServerState.h"
#include "support/ProgramFixture.h"
#include "support/TestFirmServices.h"
#include <QFile>
#include <QLabel>

using namespace Qt::StringLiterals;
using platform::kAnswerCancel;
using platform::kAnswerNo;
using platform::kAnswerRetry;
using platform::kAnswerYes;
using test::TestFirm;

namespace {

class Away : public test::ProgramTest {
  protected:
    void SetUp() override {
        procedures.askServer = [this] { return bool(answers); };
        ConnMain.Execute(u"UPDATE tbl_Einstellungen_System SET lng_VorbestellungAutomatischStatus = 1"_s);
    }

    void TearDown() override {
        store::setServerBack();
        store::setServer({}, false);
        ProgramTest::TearDown();
    }

    void open() {
        ASSERT_TRUE(start(reports, printers));
        beside.Open(store::mainConnectionString() + u' ');
    }

    static void gone() {
        store::setServerAway(common::RunTimeError(common::kServerGone,
                                                  u"Der Datenbankserver ist nicht erreichbar."_s, u"test"_s));
    }

    void goAway() {
        answers = false;
        gone();
        EXPECT_TRUE(find<QLabel>("MDIServer")->isVisible());
    }

    QString looks() { return test::fingerprint(screen()->order()); }

    void call(const QString& number) { window().BasicCAPI32_IncomingCall({}, number, {}); }

    QString stored(const QString& sql) { return TestFirm::value(sql, beside); }

    /// As where a user's action leads to it.
    static std::function<void()> byHand(std::function<void()> act) {
        return [act = std::move(act)] { common::guarded(common::Origin::User, act); };
    }

    /// Does what needs the server, which is told in one box; the order on the screen stays.
    void expectOneBox(const char* what, const std::function<void()>& act) {
        const QString before = looks();
        const auto said = dialogs.said.size();
        act();
        EXPECT_EQ(dialogs.said.size(), said + 1) << what;
        EXPECT_TRUE(dialogs.last().text.contains(u"nicht erreichbar"_s)) << what;
        EXPECT_EQ(looks(), before) << what;
    }

    std::atomic<bool> answers = true;
    test::TestReports reports;
    test::TestPrinters printers;
    /// Goes on while the server is away for the program.
    store::Connection beside;
    const QString booked = u"SELECT Count(*) AS N FROM tbl_Auftragswesen_Bestellungen_Master"_s;
};

TEST_F(Away, TheOrderStaysAndIsBookedOnceItIsBack) {
    open();
    call(u"0791234567"_s);
    press(Qt::Key_F9);
    key(u"10"_s);
    key(u"2"_s);
    dialogs.answer(kAnswerNo);
    press(Qt::Key_F12);
    ASSERT_EQ(stored(booked), u"1"_s);
    call(u"0791234567"_s);
    press(Qt::Key_F9);
    key(u"W"_s);
    key(u"1"_s);
    const QString before = looks();

    goAway();
    dialogs.giveUp = true;
    press(Qt::Key_F12);
    EXPECT_TRUE(dialogs.waitedWith.contains(u"Der Auftrag ist noch nicht verbucht."_s));
    EXPECT_EQ(looks(), before) << "given up";
    EXPECT_TRUE(reports.runs.isEmpty());
    expectOneBox("code", [this] {
        press(Qt::Key_F6);
        key(u"G"_s);
    });
    press(Qt::Key_Escape);
    EXPECT_EQ(looks(), before);
    expectOneBox("stored order", [this] { press(Qt::Key_Left, Qt::AltModifier); });
    expectOneBox("search", byHand([this] { screen()->searchNumber(u"0799999999"_s); }));
    expectOneBox("same again", [this] { press(Qt::Key_F4); });

    const auto said = dialogs.said.size();
    window().VorbestellungTimer_Timer();
    call(u"0799999999"_s);
    EXPECT_TRUE(window().callWaits());
    EXPECT_EQ(dialogs.said.size(), said) << "what comes by itself opens no box";
    expectOneBox("call taken", [this] { press(Qt::Key_F9); });
    EXPECT_TRUE(window().callWaits());

    dialogs.giveUp = false;
    dialogs.duringWait = [this] { answers = true; };
    dialogs.answer(kAnswerYes);
    press(Qt::Key_F12);
    EXPECT_EQ(stored(booked), u"2"_s);
    EXPECT_EQ(reports.runs.size(), 1);
    EXPECT_FALSE(QFile::exists(orders::OrderDraft::defaultFile()));
    EXPECT_TRUE(find<QLabel>("MDIServer")->isHidden());
    EXPECT_TRUE(QTest::qWaitFor([this] { return find<QLabel>("ISDNAnrufer")->isVisible(); }))
        << "who calls is found now";
    EXPECT_EQ(dialogs.unexpected, 0);
    EXPECT_TRUE(ended.isEmpty());
}

/// It goes in the middle of an act of many lookups: nothing half done stays.
TEST_F(Away, WhatIsCutOffIsPutBack) {
    open();
    call(u"0791234567"_s);
    press(Qt::Key_F9);
    for (const char16_t* code : {u"10", u"1", u"W"}) {
        key(QString::fromUtf16(code));
        key(u"2"_s);
    }
    dialogs.answer(kAnswerNo);
    press(Qt::Key_F12);
    screen()->searchNumber(u"0791234567"_s);
    key(u"G"_s);
    key(u"1"_s);
    const QString last = u"nicht erreichbar"_s;
    const std::pair<const char*, std::function<void()>> acts[] = {
        {"same again", [this] { press(Qt::Key_F4); }},
        {"stored order", byHand([this] { screen()->loadBooking(1000); })},
        {"web order", byHand([this] {
             screen()->keyWebOrder({{7}, {{true, 1, u"1"_s, {}}, {true, 2, u"1"_s, {}}}});
         })},
        {"pick", byHand([this] { screen()->order().PickProdukt(TestFirm::kHawaii, u"10"_s, 1); })}};
    for (const auto& [what, act] : acts) {
        const QString before = looks();
        const QString kennung = screen()->order().Kennung();
        const auto cut = QObject::connect(&screen()->order().BestellungGrid, &QAbstractItemModel::dataChanged,
                                          screen(), [] { gone(); });
        const auto said = dialogs.said.size();
        act();
        QObject::disconnect(cut);
        EXPECT_TRUE(store::isServerAway()) << what;
        EXPECT_EQ(dialogs.said.size(), said + 1) << what;
        EXPECT_EQ(looks(), before) << what;
        EXPECT_EQ(screen()->order().Kennung(), kennung) << what;
        EXPECT_EQ(screen()->order().suche, orders::SucheModus::Keyed) << what;
        store::setServerBack();
    }
    dialogs.answer(kAnswerNo);
    press(Qt::Key_F12);
    EXPECT_EQ(stored(u"SELECT dbl_TotalMitMWSt AS T FROM tbl_Auftragswesen_Bestellungen_Master WHERE "
                     u"lng_TrxNr = 1001"_s),
              u"20"_s);
}

TEST_F(Away, ACrashMeanwhileIsTakenUpOnceTheServerIsThere) {
    open();
    call(u"0791234567"_s);
    press(Qt::Key_F9);
    key(u"10"_s);
    goAway();
    press(Qt::Key_F5);
    screen()->order().ChooseKonditionen(u"Karte"_s);
    const QString before = looks();
    ASSERT_TRUE(QTest::qWaitFor([&] {
        orders::WorkingOrder found;
        return orders::OrderDraft::restore(orders::OrderDraft::defaultFile(), found) &&
               test::fingerprint(found) == before;
    }));
    beside.Close();
    program.reset();
    store::setServerBack();
    dialogs.answer(kAnswerYes);
    open();
    EXPECT_EQ(looks(), before);
}

/// Nobody listens on port 1.
TEST_F(Away, TheStartAsksAgainUntilTheServerIsThere) {
    QFile ini(folder + u"/tavolino.ini"_s);
    ASSERT_TRUE(ini.open(QIODevice::ReadWrite));
    const QByteArray files = ini.readAll();
    const auto write = [&](const QByteArray& text) {
        ini.resize(0);
        ini.seek(0);
        ini.write(text);
        ini.flush();
    };
    write(QByteArray(files).replace("Motor=datei", "Motor=mariadb\nServer=127.0.0.1:1"));
    dialogs.answer(kAnswerCancel);
    EXPECT_FALSE(start(reports, printers));
    EXPECT_EQ(ended, QList<int>{1});
    EXPECT_TRUE(dialogs.last().text.contains(u"nicht erreichbar"_s)) << dialogs.last().text.toStdString();
    dialogs.answer(kAnswerRetry, [&] { write(files); });
    EXPECT_TRUE(start(reports, printers));
    EXPECT_EQ(dialogs.unexpected, 0);
}

} // namespace
