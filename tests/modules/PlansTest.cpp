// How what the program runs finds its rows in an installation.
#include "masterdata/modProdukte.h"
#include "masterdata/modProdukteExtras.h"
#include "masterdata/modProdukteKategorien.h"
#include "masterdata/modVerwaltungKunden.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "modules/OrderFixture.h"
#include "orders/WebOrderMemory.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "orders/modBestellNummern.h"
#include "orders/modLetzteBestellungen.h"
#include "reporting/modAuswertungenBuchungsjournal.h"
#include "reporting/modAuswertungenBuchungsjournalPerKunde.h"
#include "reporting/modAuswertungenUmsatzProdukte.h"
#include "reporting/modAuswertungenUmsatzProduktePerKunde.h"
#include "reporting/modProduktUmsatz.h"
#include "support/ServerFirm.h"
#include "support/StatementLog.h"
#include "telephony/modTelefonie.h"
#include "telephony/modVerwaltungAnruferListe.h"
#include "telephony/modVerwaltungTelefonbuch.h"

using namespace Qt::StringLiterals;
using namespace modAuftragswesenAuftragserfassung;
using namespace modAuftragswesenVorbestellungen;
using modVerwaltungKunden::Kunde;
using test::TestFirm;

namespace {

/// As a list opens it.
void list(const QString& sql, store::Connection& connection = ConnMain) {
    store::Recordset rows;
    rows.Open(sql, connection, store::adOpenStatic, store::adLockReadOnly);
    rows.prefetch(0, rows.RecordCount());
}

class Plans : public test::OrderTest {
  protected:
    Plans() {
        takeOrder();
        order.webBestellung = 7;
    }

    /// Goes the road and gives the steps in the plans of what it ran that walk a whole table to find rows by
    /// a condition.
    static QStringList walks(const std::function<void()>& road, store::Connection& connection = ConnMain) {
        QList<QByteArray> statements;
        {
            const test::StatementLog log(connection);
            road();
            statements = log.statements();
        }
        EXPECT_FALSE(statements.isEmpty());
        QStringList found;
        for (const QByteArray& sql : std::as_const(statements)) {
            // The engine's own catalogue has no index.
            if (!sql.contains("WHERE") || sql.contains("sqlite_"))
                continue;
            for (const QString& step : test::planOf(connection, sql))
                if (step.startsWith(u"SCAN"))
                    found << step + u" of "_s + QString::fromUtf8(sql);
        }
        return found;
    }
};

} // namespace

TEST_F(Plans, EveryLookupHasItsIndex) {
    if (test::stand() == test::Stand::Server)
        GTEST_SKIP() << "of the file";

    struct Road {
        const char* name;
        std::function<void()> go;
    };

    const Road roads[] = {
        {"call", [&] { order.SucheTelefonNummer(u"0799999999"_s); }},
        {"call recorded",
         [] {
             modTelefonie::RecordCall(u"0791234567"_s, 100);
             modTelefonie::MarkCallTaken(u"0791234567"_s);
             modVerwaltungAnruferListe::MarkCallReceived(46000.5);
         }},
        {"code", [&] { order.BestellungGrid.endEdit(4, orders::Col::Kurzzeichen, u"W"_s); }},
        {"beginning of a code", [&] { order.BestellungGrid.endEdit(5, orders::Col::Kurzzeichen, u"O"_s); }},
        {"product's name", [&] { order.BestellungGrid.endEdit(6, orders::Col::Bezeichnung, u"Pizza"_s); }},
        {"extra's name", [&] { order.BestellungGrid.endEdit(7, orders::Col::Bezeichnung, u"Knob"_s); }},
        {"category", [] { list(ProdukteSql(2, 1)); }},
        {"extras of a product", [] { list(ExtrasSql(TestFirm::kMargherita)); }},
        {"booking", [&] { SaveBestellung(order, dialogs, navigation); }},
        {"loading", [&] { LoadBestellung(order, 1000); }},
        {"changing", [&] { UpdateBestellung(order, 1000); }},
        {"stepping",
         [] {
             modBestellNummern::GetFollowingTrxNr(999);
             modBestellNummern::GetPrecedingTrxNr(1001);
         }},
        {"last orders", [] { modLetzteBestellungen::LoadLetzteBestellungen(TestFirm::kAnna, 5); }},
        {"an order once more", [&] { modLetzteBestellungen::UebernehmeBestellung(order, 1000); }},
        {"web order",
         [] {
             orders::WebOrderOf({1000, false});
             orders::BookedWebOrder({7, u"044 heute"_s});
         }},
        {"deletion", [&] { DeleteBestellung(1000, order.Kennung()); }},
        {"pre-order", [&] { OpenVorbestellung(order, SaveVorbestellung(order)); }},
        {"pre-orders of a day", [] { list(ListeAmTag(46000)); }},
        {"pre-order deleted", [] { DeleteVorbestellung(1); }},
        {"customer",
         [] {
             const auto kunde = *modVerwaltungKunden::LoadKunde(TestFirm::kAnna);
             const qint64 key = modVerwaltungKunden::SaveKunde(kunde, -1);
             if (modVerwaltungKunden::CanDeleteKunde(key))
                 modVerwaltungKunden::DeleteKunde(key);
         }},
        {"product",
         [] {
             const auto produkt = *modProdukte::LoadProdukt(TestFirm::kHawaii);
             modProdukte::SaveProdukt(produkt, TestFirm::kHawaii);
             modProdukte::FindKurzzeichen(u"10"_s, -1, 2);
             modProdukte::CanDeleteProdukt(TestFirm::kHawaii);
             modProdukte::DeleteProdukt(TestFirm::kGutschein);
         }},
        {"extra",
         [] {
             modProdukteExtras::SaveExtra(*modProdukteExtras::LoadExtra(TestFirm::kKaese), TestFirm::kKaese);
             modProdukteExtras::FindExtra(u"Käse"_s, -1);
             modProdukteExtras::HasExtraProdukte(TestFirm::kKaese, true);
             modProdukteExtras::CanDeleteExtra(4711);
             modProdukteExtras::DeleteExtra(TestFirm::kKnoblauch);
         }},
        {"category deleted",
         [] {
             modProdukteKategorien::FindProduktGruppe(u"Pizza"_s, -1);
             modProdukteKategorien::CanDeleteProduktGruppe(2);
         }},
        {"courier",
         [] {
             modVerwaltungKuriere::FindKurier(u"AB"_s, -1);
             modVerwaltungKuriere::FindKurierByKurzzeichen(u"AB"_s);
             modVerwaltungKuriere::CanDeleteKurier(4711);
         }},
        {"journal",
         [] {
             using namespace modAuswertungenBuchungsjournal;
             const Zeitraum woche{46000, 46006};
             for (const Auswahl& auswahl : {Auswahl{woche}, Auswahl{{}, 1}, Auswahl{woche, 1}}) {
                 list(Buchungen(auswahl));
                 TotalBetrag(TotalBuchungen(auswahl));
             }
         }},
        {"turnover by product",
         [] {
             using namespace modProduktUmsatz;
             for (const QString& orders :
                  {modAuswertungenUmsatzProdukte::BestellungenSql({.von = 46000, .bis = 46001}),
                   modAuswertungenUmsatzProdukte::BestellungenSql(
                       {.von = 46000, .bis = 46365, .fiktiv = true, .lng_KurierID = 1}),
                   modAuswertungenUmsatzProduktePerKunde::BestellungenSql(TestFirm::kAnna, 46000, 46365)})
                 LoadProduktUmsatz(orders, Gliederung::Kategorien, platform::unwatched);
         }},
        {"a customer's journal",
         [] {
             using namespace modAuswertungenBuchungsjournalPerKunde;
             list(KundenStatistikSql(TestFirm::kAnna));
             TotalKunde(TestFirm::kAnna, platform::unwatched);
             list(TopKundenSql());
         }},
    };
    for (const Road& road : roads)
        EXPECT_EQ(walks(road.go).join(u'\n').toStdString(), "") << road.name;
    for (const auto& [field, text] : {std::pair{&Kunde::txt_Firma, u"Mu%"},
                                      {&Kunde::txt_Name, u"Meier"},
                                      {&Kunde::txt_Vorname, u"A%"},
                                      {&Kunde::txt_Strasse, u"See%"},
                                      {&Kunde::txt_PLZ, u"8000"},
                                      {&Kunde::txt_Telefon, u"0791234567"},
                                      {&Kunde::txt_Natel, u"0799999999"},
                                      {&Kunde::txt_EMail, u"a@b.ch"}}) {
        Kunde mask;
        mask.*field = QString::fromUtf16(text);
        EXPECT_EQ(walks([&] { list(modVerwaltungKunden::SucheKunden(mask)); }).join(u'\n').toStdString(), "");
    }
}

TEST_F(Plans, TheDirectoryIsSearchedByEveryField) {
    using namespace modVerwaltungTelefonbuch;
    for (const QString& sql :
         {FindPhoneBookEntrySql(u"0400000001"_s), SearchPhoneBookSql({.name = u"Meier"_s}),
          SearchPhoneBookSql({.street = u"Dorf%"_s}), SearchPhoneBookSql({.postcode = u"8600"_s}),
          SearchPhoneBookSql({.name = u"M%"_s, .town = u"Z%"_s})})
        EXPECT_EQ(walks([&] { list(sql, ConnPhone); }, ConnPhone).join(u'\n').toStdString(), "");
}
