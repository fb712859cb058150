// Two stations on one record: the second is told, and nothing of the first is overwritten unseen.
#include "ScreenTest.h"
#include "masterdata/frmProdukte.h"
#include "masterdata/frmProdukteExtras.h"
#include "masterdata/frmProdukteKategorien.h"
#include "masterdata/frmVerwaltungKunden.h"
#include "masterdata/frmVerwaltungKuriere.h"
#include "shell/frmEinstellungenBenutzer.h"
#include "shell/frmEinstellungenSystem.h"
#include "shop/frmOnlineShopSettingsBestellzeiten.h"
#include "shop/frmOnlineShopSettingsDokumente.h"
#include "shop/frmOnlineShopSettingsFonts.h"
#include "shop/frmOnlineShopSettingsLiefergebiete.h"
#include "store/SystemSettings.h"
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {

const QString kChanged = u"Dieser Datensatz wurde inzwischen an einer anderen Station geändert."_s;
const QString kGone = u"Dieser Datensatz wurde inzwischen an einer anderen Station gelöscht."_s;

/// What another station does is a statement behind the screen's back.
template <typename Screen> class Overtaken : public test::ScreenTest<Screen> {
  protected:
    /// The record of the first row: `elsewhere` changes what `named` tells, meanwhile `field` is typed into,
    /// whose column is `column`.
    void expectNotOverwritten(const QString& table, const QString& elsewhere, const QString& named,
                              const QString& field, const QString& column) {
        this->doubleClickRow(0);
        const qint64 key = this->screen->key();
        ASSERT_GT(key, 0);
        const QString row = u"SELECT * FROM %1 WHERE lng_ID = %2"_s.arg(table).arg(key);
        typeInto(field);
        ConnMain.Execute(elsewhere.arg(key));
        const QString others = this->stored(row);
        // However often: only who has seen the other one's state overwrites it.
        for (int time = 0; time < 2; ++time) {
            this->click(u"cmdSave");
            expectTold(kChanged + u"\n\nGeändert: "_s + named + u"\n\nIhre"_s);
            EXPECT_EQ(this->stored(row), others);
            EXPECT_EQ(this->text(field), u"getippt"_s) << "what was typed stays";
        }
        this->doubleClickRow(0);
        EXPECT_NE(this->text(field), u"getippt"_s);
        typeInto(field);
        this->click(u"cmdSave");
        EXPECT_TRUE(this->said().isEmpty());
        EXPECT_EQ(this->stored(u"SELECT %1 FROM %2 WHERE lng_ID = %3"_s.arg(column, table).arg(key)),
                  u"getippt"_s);
        expectTypedAnewWhenGone(table, field);
    }

    void expectTypedAnewWhenGone(const QString& table, const QString& field) {
        this->doubleClickRow(0);
        this->template find<QLineEdit>(field)->setText(u"noch einer"_s);
        ConnMain.Execute(u"DELETE FROM %1 WHERE lng_ID = %2"_s.arg(table).arg(this->screen->key()));
        const qint64 left = test::TestFirm::count(table);
        this->click(u"cmdSave");
        expectTold(kGone);
        EXPECT_EQ(test::TestFirm::count(table), left);
        this->click(u"cmdSave");
        EXPECT_TRUE(this->said().isEmpty());
        EXPECT_EQ(test::TestFirm::count(table), left + 1);
    }

    void typeInto(const QString& field) { this->template find<QLineEdit>(field)->setText(u"getippt"_s); }

    void expectTold(const QString& beginning) {
        const auto said = this->said();
        ASSERT_EQ(said.size(), 1);
        EXPECT_TRUE(said.first().text.startsWith(beginning)) << said.first().text.toStdString();
        EXPECT_EQ(said.first().style, platform::kInformation);
    }
};

#define SCREEN(name)                                                                                         \
    using name##Overtaken = Overtaken<frm##name>;                                                            \
    TEST_F(name##Overtaken, NothingIsOverwrittenUnseen)

} // namespace

SCREEN(VerwaltungKuriere) {
    open();
    expectNotOverwritten(
        u"tbl_Verwaltung_Kuriere"_s,
        u"UPDATE tbl_Verwaltung_Kuriere SET lng_Reihenfolge = 1, txt_Kurzzeichen = 'XY' WHERE lng_ID = %1"_s,
        u"Kurzzeichen"_s, u"txt_Bezeichnung"_s, u"txt_Bezeichnung"_s);
    // Nor deleted: the list shows what the other one has made of it.
    doubleClickRow(0);
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Kuriere SET txt_Bezeichnung = 'Otto'"_s);
    const qint64 left = test::TestFirm::count(u"tbl_Verwaltung_Kuriere"_s);
    click(u"cmdDelete");
    expectTold(kChanged);
    EXPECT_EQ(test::TestFirm::count(u"tbl_Verwaltung_Kuriere"_s), left);
    EXPECT_TRUE(rows().first().contains(u"Otto"_s));
}

SCREEN(ProdukteKategorien) {
    open();
    expectNotOverwritten(
        u"tbl_Verwaltung_ProdukteKategorien"_s,
        u"UPDATE tbl_Verwaltung_ProdukteKategorien SET flag_Internet = NOT flag_Internet, lng_Updated = 7 WHERE lng_ID = %1"_s,
        u"Internet"_s, u"txt_Gruppe"_s, u"txt_ProduktGruppe"_s);
}

SCREEN(ProdukteExtras) {
    open();
    expectNotOverwritten(
        u"tbl_Verwaltung_ProdukteExtras"_s,
        u"UPDATE tbl_Verwaltung_ProdukteExtras_Preise SET dbl_Preis = 99 WHERE lng_ExtraID = %1 AND lng_Gruppe = 3"_s,
        u"Preis"_s, u"txt_Extra"_s, u"txt_Extra"_s);
}

SCREEN(Produkte) {
    open();
    expectNotOverwritten(
        u"tbl_Verwaltung_Produkte"_s,
        u"UPDATE tbl_Verwaltung_Produkte_Preise SET lng_MWSt = 2 WHERE lng_ProduktID = %1 AND lng_Gruppe = 3"_s,
        u"MWSt"_s, u"txt_Produkt"_s, u"txt_Produkt"_s);
    // An offered extra of the other one stays, too, and what the transfer to the shop notes does not count.
    doubleClickRow(0);
    const qint64 key = screen->key();
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET flag_Updated = 0"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    doubleClickRow(0);
    ConnMain.Execute(
        u"INSERT INTO tbl_Verwaltung_Produkte_Extras(lng_ProduktID, lng_ProduktExtraID) VALUES(%1, 3)"_s.arg(
            key));
    click(u"cmdSave");
    expectTold(kChanged);
}

SCREEN(VerwaltungKunden) {
    test::TestPhoneBook phoneBook;
    open(phoneBook);
    click(u"cmdAllClients");
    expectNotOverwritten(
        u"tbl_Verwaltung_Kunden"_s,
        u"UPDATE tbl_Verwaltung_Kunden SET txt_Strasse = 'Neugasse 5', txt_PLZ = '9999' WHERE lng_ID = %1"_s,
        u"Strasse, PLZ"_s, u"txt_Vorname"_s, u"txt_Vorname"_s);
    screen.reset();
}

SCREEN(EinstellungenBenutzer) {
    ConnMain.Execute(
        u"INSERT INTO tbl_Einstellungen_Benutzer(txt_Username, txt_Passwort) VALUES('Eva', 'a')"_s);
    open();
    doubleClickRow(0);
    put({{u"txt_PWD", u"b"_s}, {u"txt_PWDConfirm", u"b"_s}});
    ConnMain.Execute(u"UPDATE tbl_Einstellungen_Benutzer SET lng_Administrator = -1"_s);
    click(u"cmdSave");
    expectTold(kChanged);
    const QString user = u"SELECT txt_Passwort, lng_Administrator FROM tbl_Einstellungen_Benutzer"_s;
    EXPECT_EQ(stored(user), u"a|-1"_s);
    doubleClickRow(0);
    put({{u"txt_PWD", u"b"_s}, {u"txt_PWDConfirm", u"b"_s}});
    click(u"cmdSave");
    EXPECT_EQ(stored(user), u"b|-1"_s);
    // The key stays after saving, and so its own change is none of another station.
    dialogs.answerInput(u"Evelyn"_s);
    click(u"cmdNewUser");
    click(u"cmdSave");
    EXPECT_EQ(said().size(), 1) << "the question for the name";
    EXPECT_EQ(test::TestFirm::count(u"tbl_Einstellungen_Benutzer"_s), 1);
}

SCREEN(OnlineShopSettingsLiefergebiete) {
    ConnMain.Execute(
        u"INSERT INTO tbl_PLZ_Verzeichnis(txt_Land, lng_PLZ, txt_Ort) VALUES('CH', 3000, 'Bern')"_s);
    open();
    expectNotOverwritten(u"tbl_PLZ_Verzeichnis"_s,
                         u"UPDATE tbl_PLZ_Verzeichnis SET txt_Kurier = 'CD' WHERE lng_ID = %1"_s, u"Kurier"_s,
                         u"txt_Ort"_s, u"txt_Ort"_s);
}

SCREEN(OnlineShopSettingsBestellzeiten) {
    open();
    const QString zeiten = u"SELECT lng_LastOrder, txt_EMailAdresse FROM tbl_OnlineShop_Lieferzeiten"_s;
    put({{u"txt_Abholzeit", u"15"_s}, {u"txt_LastOrder", u"15"_s}, {u"txt_EMailAdress", u"a@b.ch"_s}});
    click(u"cmdSave");
    click(u"cmdSave");
    EXPECT_EQ(said().size(), 2) << "saved twice, the second time upon its own";
    put({{u"txt_LastOrder", u"20"_s}});
    ConnMain.Execute(u"UPDATE tbl_OnlineShop_Lieferzeiten SET txt_EMailAdresse = 'x@y.ch'"_s);
    click(u"cmdSave");
    expectTold(kChanged);
    EXPECT_EQ(stored(zeiten), u"15|x@y.ch"_s);
}

SCREEN(OnlineShopSettingsFonts) {
    open();
    put({{u"inputShopTitel", u"getippt"_s}});
    ConnMain.Execute(
        u"UPDATE tbl_OnlineShop_CorporateIdentity SET txt_ShopTitel = 'anders' WHERE lng_ID = 1"_s);
    click(u"cmdSave");
    expectTold(kChanged);
    EXPECT_EQ(stored(u"SELECT txt_ShopTitel FROM tbl_OnlineShop_CorporateIdentity WHERE lng_ID = 1"_s),
              u"anders"_s);
}

SCREEN(OnlineShopSettingsDokumente) {
    open();
    auto* field = find<QPlainTextEdit>(u"DokumenteText");
    auto* tree = find<QTreeWidget>(u"TreeView");
    const QString contact = u"SELECT txt_DokumenteKontakt FROM tbl_OnlineShop_Dokumente WHERE lng_ID = 1"_s;
    field->setPlainText(u"getippt"_s);
    ConnMain.Execute(u"UPDATE tbl_OnlineShop_Dokumente SET txt_DokumenteAGB = 'anders' WHERE lng_ID = 1"_s);
    click(u"cmdSave");
    EXPECT_EQ(said().size(), 1) << "another document is another record";
    field->setPlainText(u"mehr"_s);
    ConnMain.Execute(
        u"UPDATE tbl_OnlineShop_Dokumente SET txt_DokumenteKontakt = 'anders' WHERE lng_ID = 1"_s);
    click(u"cmdSave");
    expectTold(kChanged);
    // Neither another node nor closing takes the text away that could not be saved.
    const QString chosen = tree->currentItem()->text(0);
    dialogs.answer(platform::kAnswerYes);
    tree->setCurrentItem(tree->itemBelow(tree->currentItem()));
    QApplication::processEvents();
    EXPECT_EQ(tree->currentItem()->text(0), chosen);
    dialogs.answer(platform::kAnswerYes);
    EXPECT_FALSE(screen->close());
    EXPECT_EQ(field->toPlainText(), u"mehr"_s);
    EXPECT_EQ(stored(contact), u"anders"_s);
    dialogs.answer(platform::kAnswerNo);
    EXPECT_TRUE(screen->close());
    EXPECT_EQ(stored(contact), u"anders"_s);
}

SCREEN(EinstellungenSystem) {
    open();
    find<QLineEdit>(u"txt_VATNummer"_s)->setText(u"getippt"_s);
    find<QPlainTextEdit>(u"txt_Werbetext"_s)->setPlainText(u"getippt"_s);
    ConnMain.Execute(
        u"UPDATE tbl_Einstellungen_System SET txt_VATNummer = 'anders', lng_StandardLieferzeit = 90"_s);
    screen->close();
    expectTold(kChanged);
    EXPECT_EQ(
        stored(
            u"SELECT txt_VATNummer, txt_Werbetext, lng_StandardLieferzeit FROM tbl_Einstellungen_System"_s),
        u"anders|getippt|90"_s)
        << "different settings both win";
    EXPECT_EQ(SysVATNummer + SysWerbetext, u"andersgetippt"_s);
}
