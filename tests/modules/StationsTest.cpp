#include "common/Clock.h"
#include "common/RunTimeError.h"
#include "masterdata/modProdukte.h"
#include "masterdata/modProdukteExtras.h"
#include "masterdata/modProdukteKategorien.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "modules/OrderFixture.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "shop/modInternetBestellungen.h"
#include "store/SystemSettings.h"
#include "support/OtherStation.h"
#include "support/ServerFirm.h"
#include "support/StatementLog.h"
#include "telephony/modTelefonie.h"
#include "telephony/modVerwaltungAnruferListe.h"
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using store::Topic;
using test::TestFirm;

namespace {

struct Stations : test::OrderTest {
    Stations() { store::stationNews().start(); }

    /// What is heard at the next look, in words.
    static QString heard() {
        const QSignalSpy spy(&store::stationNews(), &store::StationNews::heard);
        store::stationNews().look();
        QStringList topics;
        for (const auto& signal : spy)
            topics << QString::number(signal.at(0).toInt());
        return topics.join(u' ');
    }

    static QString of(Topic topic) { return QString::number(int(topic)); }

    qint64 storePreOrder(const QString& lieferzeit = u"18:00"_s) {
        takeOrder();
        order.setDetail(orders::Detail::Lieferung, u"15/05/2026"_s);
        order.setDetail(orders::Detail::Lieferzeit, lieferzeit);
        const qint64 number = modAuftragswesenVorbestellungen::SaveVorbestellung(order);
        order.ClearBestellungMaske();
        return number;
    }

    test::OtherStation other;
};

TEST_F(Stations, ATaskIsOneStationsUntilItGivesItUpOrGoesAway) {
    EXPECT_TRUE(store::claim(u"Aufgabe"_s, 60));
    EXPECT_TRUE(store::claim(u"Aufgabe"_s, 60)) << "taken for longer";
    EXPECT_EQ(store::holderOf(u"Aufgabe"_s), u""_s) << "no other's";
    other.has(u"O'Aufgabe"_s);
    EXPECT_FALSE(store::claim(u"O'Aufgabe"_s, 60));
    EXPECT_EQ(store::holderOf(u"O'Aufgabe"_s), u"Küche"_s);
    store::release(u"O'Aufgabe"_s);
    EXPECT_FALSE(store::claim(u"O'Aufgabe"_s, 60)) << "given up by somebody else";
    EXPECT_EQ(store::tasksOfOthers(), (QHash<QString, QString>{{u"O'Aufgabe"_s, u"Küche"_s}}));
    store::releaseAll();
    EXPECT_EQ(TestFirm::value(u"SELECT txt_Aufgabe FROM tbl_Stationen_Pacht"_s), u"O'Aufgabe"_s);
    other.isGone();
    EXPECT_EQ(store::holderOf(u"O'Aufgabe"_s), u""_s);
    EXPECT_TRUE(store::claim(u"O'Aufgabe"_s, 60));
}

TEST_F(Stations, WhateverOthersHoldInMemoryIsToldWhenItChanges) {
    using namespace modInternetBestellungen;
    qint64 preOrder = 0;
    auto produkt = modProdukte::LoadProdukt(TestFirm::kWein).value();
    auto extra = modProdukteExtras::LoadExtra(TestFirm::kKaese).value();
    const QString none = u"<BESTELLUNGEN></BESTELLUNGEN>"_s;

    struct Case {
        const char* what;
        Topic topic;
        std::function<void()> act;
    };

    const Case cases[] = {
        {"product", Topic::Catalogue, [&] { modProdukte::SaveProdukt(produkt, TestFirm::kWein); }},
        {"product gone", Topic::Catalogue, [&] { modProdukte::DeleteProdukt(TestFirm::kGutschein); }},
        {"extra", Topic::Catalogue, [&] { modProdukteExtras::SaveExtra(extra, TestFirm::kKaese); }},
        {"category", Topic::Catalogue,
         [] {
             modProdukteKategorien::SaveProduktGruppe({u"X"_s, 9, true}, -1);
         }},
        {"category gone", Topic::Catalogue, [] { modProdukteKategorien::DeleteProduktGruppe(99); }},
        {"courier", Topic::Catalogue,
         [] {
             modVerwaltungKuriere::SaveKurier({u"XY"_s, u"X"_s, 9}, -1);
         }},
        {"courier gone", Topic::Catalogue, [] { modVerwaltungKuriere::DeleteKurier(99); }},
        {"call", Topic::Calls, [] { modTelefonie::RecordCall(u"044"_s); }},
        {"call taken", Topic::Calls, [] { modTelefonie::TellCallTaken(u"044"_s); }},
        {"calls gone", Topic::Calls, [] { modVerwaltungAnruferListe::DeleteAnruferListe(); }},
        {"pre-order", Topic::PreOrders, [&] { preOrder = storePreOrder(); }},
        {"pre-order gone", Topic::PreOrders,
         [&] { modAuftragswesenVorbestellungen::DeleteVorbestellung(preOrder); }},
        {"web orders", Topic::WebOrders, [&] { ParseWebShopBestellungen(none); }},
    };
    for (const Case& c : cases) {
        c.act();
        EXPECT_EQ(heard(), of(c.topic)) << c.what;
        EXPECT_EQ(heard(), u""_s) << c.what << ": once";
    }
    ParseWebShopBestellungen(none);
    EXPECT_EQ(heard(), u""_s) << "the same answer is no news";
    EXPECT_THROW(store::transact(ConnMain,
                                 [] {
                                     store::tellNews(Topic::Users);
                                     throw common::RunTimeError(common::kStoreFailure, {});
                                 }),
                 common::RunTimeError);
    EXPECT_EQ(heard(), u""_s) << "nothing has changed";
    takeOrder();
    order.ChooseKurier(TestFirm::kKurierAB, u"AB"_s);
    book();
    EXPECT_EQ(heard(), u""_s) << "an order is nobody's memory";
}

TEST_F(Stations, InAFileNothingIsAsked) {
    if (test::stand() != test::Stand::File)
        GTEST_SKIP() << "of the file";
    store::shareFiles(false);
    const test::StatementLog log(ConnMain);
    EXPECT_TRUE(store::claim(u"Aufgabe"_s, 60));
    store::tellNews(Topic::Catalogue);
    store::stationNews().look();
    store::release(u"Aufgabe"_s);
    store::releaseAll();
    EXPECT_TRUE(store::tasksOfOthers().isEmpty() && store::holderOf(u"Aufgabe"_s).isEmpty());
    EXPECT_TRUE(log.statements().isEmpty());
}

TEST_F(Stations, ACallIsRecordedOnceAndTakenByTheFirst) {
    const auto calls = [] { return TestFirm::count(u"tbl_Verwaltung_AnruferListe"_s); };
    other.has(u"Anruf 0441234567"_s);
    modTelefonie::RecordCall(u"0441234567"_s);
    EXPECT_EQ(calls(), 0) << "the other station has written it down";
    modTelefonie::RecordCall(u"0440000000"_s);
    other.isGone();
    modTelefonie::RecordCall(u"0441234567"_s);
    EXPECT_EQ(calls(), 2);

    EXPECT_TRUE(modTelefonie::MarkCallTaken(u"0441234567"_s));
    EXPECT_FALSE(modTelefonie::MarkCallTaken(u"0441234567"_s));
    modTelefonie::TellCallTaken(u"0441234567"_s);
    EXPECT_EQ(modTelefonie::CallTakenBy(u"0441234567"_s), u""_s);
    modTelefonie::CallRingsAgain(u"0441234567"_s);
    other.has(u"Annahme 0441234567"_s);
    EXPECT_EQ(modTelefonie::CallTakenBy(u"0441234567"_s), u"Küche"_s);
}

TEST_F(Stations, ADuePreOrderIsToldWhereNobodyHasItInHand) {
    using namespace modAuftragswesenVorbestellungen;
    SysVorbestellungAutomatischZeit = 30;
    const qint64 first = storePreOrder(u"10:00"_s), second = storePreOrder(u"11:00"_s);
    TestFirm::setTime(12, 0);
    EXPECT_EQ(FindFaelligeVorbestellung(), first);
    other.has(Aufgabe(first).name);
    EXPECT_EQ(FindFaelligeVorbestellung(), second);
    dialogs.answer(platform::kAnswerNo);
    EXPECT_FALSE(TakeOnVorbestellung(first, dialogs));
    EXPECT_EQ(dialogs.last().text, u"Küche bearbeitet die Vorbestellung %1 bereits. Möchten Sie sie trotzdem "
                                   "öffnen?"_s.arg(first));
    EXPECT_TRUE(TakeOnVorbestellung(second, dialogs));
    EXPECT_EQ(FindFaelligeVorbestellung(), second) << "one's own is told until it is dealt with";
    other.isGone();
    EXPECT_EQ(FindFaelligeVorbestellung(), first);
}

TEST_F(Stations, WebOrdersInOtherHandsAreCountedApart) {
    using namespace modInternetBestellungen;
    for (const char16_t* id : {u"7", u"8", u"9"})
        ConnMain.Execute(
            u"INSERT INTO tbl_WebShop_Bestellungen_Master(lng_ID) VALUES(%1)"_s.arg(QString::fromUtf16(id)));
    EXPECT_EQ(BeiAnderen(), 0);
    other.has(Aufgabe(8).name);
    other.has(Aufgabe(55).name);
    EXPECT_EQ(Offene(), 3);
    EXPECT_EQ(BeiAnderen(), 1) << "one that is gone does not count";
}

/// The tasks of two connections to one server, and what one of them tells.
TEST(StationsOnAServer, AgreeByTheServersClockInFewTrips) {
    if (test::stand() != test::Stand::File)
        GTEST_SKIP() << "goes over to the server by itself";
    auto* server = test::DatabaseServer::shared();
    if (!server)
        GTEST_SKIP() << test::DatabaseServer::whyNotShared().toStdString();
    const test::ServerDatabase database(*server);
    server->sql(u"CREATE DATABASE "_s + database.name());
    const TestFirm firm;
    ConnMain.Close();
    test::copyFirmTo(database.connection());
    store::setServer(database.connection(), false);
    ConnMain.Open(store::mainConnectionString());
    {
        test::OtherStation other;
        store::stationNews().start();
        const auto trips = [](const std::function<void()>& act) {
            const qint64 before = ConnMain.engine().roundTrips();
            act();
            return ConnMain.engine().roundTrips() - before;
        };
        EXPECT_EQ(trips([] { EXPECT_EQ(Stations::heard(), u""_s); }), 1);
        other.tells(u"Katalog"_s);
        EXPECT_EQ(Stations::heard(), Stations::of(Topic::Catalogue));
        store::tellNews(Topic::Users);
        store::tellNews(Topic::Users);
        EXPECT_EQ(Stations::heard(), Stations::of(Topic::Users));

        common::clock::set(1);
        EXPECT_TRUE(store::claim(u"Aufgabe"_s, 60)) << "the station's own clock does not count";
        EXPECT_LE(trips([] { EXPECT_TRUE(store::claim(u"Aufgabe"_s, 60)); }), 3);
        other.has(u"Aufgabe"_s, 1);
        EXPECT_FALSE(store::claim(u"Aufgabe"_s, 60));
        EXPECT_EQ(store::holderOf(u"Aufgabe"_s), u"Küche"_s);
        EXPECT_TRUE(QTest::qWaitFor([] { return store::claim(u"Aufgabe"_s, 60); }, 3000)) << "it went away";
        common::clock::release();

        modTelefonie::RecordCall(u"0441234567"_s);
        EXPECT_EQ(trips([] { EXPECT_TRUE(modTelefonie::MarkCallTaken(u"0441234567"_s)); }), 1);
        EXPECT_FALSE(modTelefonie::MarkCallTaken(u"0441234567"_s));
        store::releaseAll();
        EXPECT_EQ(TestFirm::count(u"tbl_Stationen_Pacht"_s), 0);
    }
    ConnMain.Close();
    store::setServer({}, false);
    ConnMain.Open(store::mainConnectionString());
}

} // namespace
