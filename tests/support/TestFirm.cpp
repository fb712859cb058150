#include "support/TestFirm.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "install/Installer.h"
#include "store/SystemSettings.h"
#include <QDir>
#include <QFileInfo>

namespace test {
namespace {

void run(const char16_t* sql) {
    ConnMain.Execute(QString::fromUtf16(sql));
}

void addProdukt(qint64 id, qint64 kategorie, const QString& code, const QString& name, int einheit,
                double preis, int mwst) {
    const QString key = QString::number(id);
    ConnMain.Execute(
        QStringLiteral(u"INSERT INTO tbl_Verwaltung_Produkte(lng_ID, lng_ProduktGruppe, txt_Kurzzeichen, "
                       u"txt_Produkt, txt_Stückelung, lng_Einheit, lng_Reihenfolge) VALUES(%1, %2, %3, %4, "
                       u"'Stk.', %5, %1)")
            .arg(key, QString::number(kategorie), store::sqlText(code), store::sqlText(name),
                 QString::number(einheit)));
    for (int gruppe = 1; gruppe <= 10; ++gruppe)
        ConnMain.Execute(
            QStringLiteral("INSERT INTO tbl_Verwaltung_Produkte_Preise(lng_ProduktID, lng_Gruppe, dbl_Preis, "
                           "lng_MWSt) VALUES(%1, %2, %3, %4)")
                .arg(key, QString::number(gruppe), common::numberToText(preis + gruppe - 1),
                     QString::number(mwst)));
}

void addExtra(qint64 id, const QString& name, double preis, bool inactive = false) {
    const QString key = QString::number(id);
    ConnMain.Execute(
        QStringLiteral(u"INSERT INTO tbl_Verwaltung_ProdukteExtras(lng_ID, txt_Extra, txt_Stückelung, "
                       u"lng_Einheit, lng_Reihenfolge, flag_Status) VALUES(%1, %2, 'Stk.', 1, %3, %4)")
            .arg(key, store::sqlText(name), QString::number(10 - id),
                 inactive ? QStringLiteral("True") : QStringLiteral("False")));
    for (int gruppe = 1; gruppe <= 10; ++gruppe)
        ConnMain.Execute(
            QStringLiteral("INSERT INTO tbl_Verwaltung_ProdukteExtras_Preise(lng_ExtraID, lng_Gruppe, "
                           "dbl_Preis, lng_MWSt) VALUES(%1, %2, %3, 1)")
                .arg(key, QString::number(gruppe),
                     common::numberToText(preis == 0 ? 0 : preis + gruppe - 1)));
}

void addCatalogue() {
    run(u"INSERT INTO tbl_Verwaltung_ProdukteKategorien(lng_ID, txt_ProduktGruppe, lng_Reihenfolge) "
        u"VALUES(1, 'Getränke', 2)");
    run(u"INSERT INTO tbl_Verwaltung_ProdukteKategorien(lng_ID, txt_ProduktGruppe, lng_Reihenfolge) "
        u"VALUES(2, 'Pizza', 1)");
    addProdukt(TestFirm::kHawaii, 2, QStringLiteral("10"), QStringLiteral("Pizza Hawaii"), 1, 16.5, 1);
    addProdukt(TestFirm::kMargherita, 2, QStringLiteral("1"), QStringLiteral("Pizza"), 1, 14, 1);
    addProdukt(TestFirm::kWein, 1, QStringLiteral("W"), QStringLiteral("Wein"), 1, 12, 0);
    addProdukt(TestFirm::kGutschein, 1, QStringLiteral("G"), QStringLiteral("Gutschein"), 1, 20, 2);
    addProdukt(TestFirm::kBier, 1, QStringLiteral("O'N5%"), QStringLiteral("O'Neill's"), 6, 18, 0);
    addExtra(TestFirm::kKaesesauce, QStringLiteral(u"Käsesauce"), 1.5);
    addExtra(TestFirm::kKaese, QStringLiteral(u"Käse"), 2);
    addExtra(TestFirm::kKnoblauch, QStringLiteral("Knoblauch"), 0);
    addExtra(4, QStringLiteral("Trüffel"), 9, true);
    for (const auto& [produkt, extra] : {std::pair<qint64, qint64>{TestFirm::kHawaii, TestFirm::kKaesesauce},
                                         {TestFirm::kMargherita, TestFirm::kKaese},
                                         {TestFirm::kMargherita, TestFirm::kKnoblauch},
                                         {TestFirm::kMargherita, 4}})
        ConnMain.Execute(QStringLiteral("INSERT INTO tbl_Verwaltung_Produkte_Extras(lng_ProduktID, "
                                        "lng_ProduktExtraID) VALUES(%1, %2)")
                             .arg(produkt)
                             .arg(extra));
}

void addPeople() {
    run(u"INSERT INTO tbl_Verwaltung_Kuriere(lng_ID, txt_Kurzzeichen, txt_Bezeichnung, lng_Reihenfolge) "
        u"VALUES(1, 'AB', "
        u"'Anton', 2)");
    run(u"INSERT INTO tbl_Verwaltung_Kuriere(lng_ID, txt_Kurzzeichen, txt_Bezeichnung, lng_Reihenfolge) "
        u"VALUES(2, 'CD', "
        u"'Carla', 1)");
    run(u"INSERT INTO tbl_Verwaltung_Kunden(lng_ID, txt_Firma, txt_Name, txt_Vorname, txt_Strasse, "
        u"txt_Etage, txt_PLZ, "
        u"txt_Ort, txt_Telefon, dbl_Telefon, flag_Zusatzinfo, txt_Zusatzinfo) VALUES(1, 'Muster AG', "
        u"'Meier', 'Anna', "
        u"'Seestrasse 1', '2. Stock', '8000', 'Zürich', '0791234567', 791234567, 1, 'Klingel defekt')");
    run(u"INSERT INTO tbl_Verwaltung_Kunden(lng_ID, txt_Name, txt_PLZ, txt_Ort, txt_Natel, dbl_Natel, "
        u"flag_Zusatzinfo, "
        u"txt_Zusatzinfo) VALUES(2, 'Bruno', '8001', 'Zürich', '0799999999', 799999999, 0, 'Hund')");
    run(u"INSERT INTO tbl_Verwaltung_Kunden(lng_ID, txt_Name, txt_Telefon) VALUES(3, 'Clara', '044 111 22 "
        u"33')");
}

/// In memory where the system has such a folder: what a test does to the store would otherwise wait for the
/// disk.
QString folderTemplate() {
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
           QStringLiteral("/tavolino-test-XXXXXX");
}

} // namespace

TestFirm::TestFirm() : m_folder(folderTemplate()) {
    setTime(18, 0);
    install::installDatabases(folder());
    store::setAppPath(folder());
    store::OpenDatabases();
    run(u"UPDATE tbl_Einstellungen_System SET dbl_MWStSatz1 = 8.1, dbl_MWStSatz3 = 2.6, lng_InitTrxNr = "
        u"1000, "
        u"lng_StandardLieferzeit = 30, txt_VATNummer = 'CHE-1', txt_Werbetext = 'Danke', txt_Currency = "
        u"'CHF', "
        u"lng_VorbestellungBuchungStatus = 0, lng_VorbestellungBuchungZeit = 2, txt_Printer1_Name = 'Kasse', "
        u"txt_Printer2_Name = 'Küche', lng_Printer1_Copies = 1, lng_Printer2_Copies = 1, lng_Printer1_Status "
        u"= 1, "
        u"lng_Printer2_Status = 0");
    store::Transaction seed(ConnMain);
    addCatalogue();
    addPeople();
    seed.commit();
    store::LoadSystemSettings();
}

TestFirm::~TestFirm() {
    store::CloseDatabases();
    common::clock::release();
}

double TestFirm::day() {
    return common::dateSerial(2026, 5, 15);
}

void TestFirm::setTime(int hour, int minute) {
    common::clock::set(day() + common::timeSerial(hour, minute));
}

QString TestFirm::value(const QString& sql, store::Connection& connection) {
    store::Recordset rows;
    rows.Open(sql, connection, store::adOpenForwardOnly, store::adLockReadOnly);
    return rows.Eof() ? QString() : rows.Fields(rows.Columns().front().name).text();
}

} // namespace test
