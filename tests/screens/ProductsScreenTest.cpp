// What the products' screen does in its own way: the offered extras, the pictures, the order of its checks.
#include "ScreenTest.h"
#include "common/Guard.h"
#include "masterdata/frmProdukte.h"
#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QListWidget>

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

/// One red pixel.
const QByteArray kGif =
    QByteArray::fromHex("47494638396101000100800000ff0000ffffff2c00000000010001000002024401003b");

class ProductsScreenTest : public test::MasterDataTest<frmProdukte> {
  protected:
    static QString columns(const QString& names, qint64 key) {
        return stored(u"SELECT %1 FROM tbl_Verwaltung_Produkte WHERE lng_ID = %2"_s.arg(names).arg(key));
    }

    static QString pictures(qint64 key) {
        return columns(u"txt_BildKlein, txt_BildGross, flag_UpdatedPicSmall, flag_UpdatedPicLarge"_s, key);
    }

    QString extras(bool selectedOnly) {
        QStringList texts;
        auto* list = find<QListWidget>(u"list_Extras");
        for (int i = 0; i < list->count(); ++i)
            if (!selectedOnly || list->item(i)->isSelected())
                texts << list->item(i)->text();
        return texts.join(u' ');
    }

    QString file(const QString& name, const QByteArray& content) {
        QFile out(pickedFrom.filePath(name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
        return out.fileName();
    }

    QString image(const QString& name, int width, int height, const char* format = "jpg") {
        QImage picture(width, height, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        EXPECT_TRUE(picture.save(pickedFrom.filePath(name), format));
        return pickedFrom.filePath(name);
    }

    void pick(QStringView button, const QString& path) {
        dialogs.answerFile(path);
        click(button);
    }

    QString internet(const QString& path) { return firm.folder() + u"/Internet/"_s + path; }

    bool previewIsEmpty(QStringView box) { return find<QLabel>(box)->pixmap().isNull(); }

    QTemporaryDir pickedFrom;
};

const QString kTooBigSmall = u"Das Bild muss max. Höhe: 150 x Breite: 150 Pixel sein."_s;
const QString kTooBigLarge = u"Das Bild muss max. Höhe: 900 x Breite: 900 Pixel sein."_s;
const QString kNoPicture = u"Diese Datei ist kein Bild (nur GIF / JPG)."_s;

} // namespace

TEST_F(ProductsScreenTest, ShowsOneCategoryPriceGroupAndStatusAtATime) {
    expectReachable();
    EXPECT_EQ(find<QComboBox>(u"combo_ProduktGruppe")->currentIndex(), -1);
    EXPECT_EQ(chosen(u"combo_Sort_Kategorie"), u"Pizza"_s);
    EXPECT_EQ(rows(), (QStringList{u"10|Pizza Hawaii|Stk.|1|1|16.50|1|1|Nein|Aktiv"_s,
                                   u"1|Pizza|Stk.|1|1|14.00|1|2|Nein|Aktiv"_s}));
    choose(u"combo_Sort_Gruppe", u"10"_s);
    EXPECT_EQ(rows().first(), u"10|Pizza Hawaii|Stk.|1|10|25.50|1|1|Nein|Aktiv"_s);
    choose(u"combo_Sort_Kategorie", u"Getränke"_s);
    EXPECT_EQ(rows().size(), 3);
    tick(u"check_Sort_Status");
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(extras(false), u"Knoblauch Käse Käsesauce"_s);
    for (const auto& [place, code] : {std::pair{0, u"0 (8.10%)"_s}, {1, u"1 (2.60%)"_s}, {2, u"2 (0.00%)"_s}})
        EXPECT_EQ(find<QComboBox>(u"combo_MWSt_1")->itemText(place), code);
}

TEST_F(ProductsScreenTest, LeadsByEnterAndLeavesTheDescriptionAlone) {
    auto* description = find<QPlainTextEdit>(u"txt_Beschreibung");
    description->setPlainText(u"scharf"_s);
    EXPECT_EQ(enterWay(u"combo_ProduktGruppe", 7),
              u"combo_ProduktGruppe txt_Kurzzeichen txt_Produkt combo_Stückelung combo_Einheit "
              u"combo_Reihenfolge txt_Beschreibung cmdSave"_s);
    EXPECT_EQ(description->toPlainText(), u"scharf"_s);
    description->setFocus();
    description->moveCursor(QTextCursor::End);
    press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(description->toPlainText(), u"scharf\n"_s) << "a new line of its own";
}

TEST_F(ProductsScreenTest, RefusesInTheGivenOrder) {
    const QString faulty = u"Fehlerhafte Eingabe"_s;
    find<QPushButton>(u"cmdSave")->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(said(), (Said{{u"Bitte wählen Sie eine Produkt Gruppe aus."_s, 0, faulty}}));
    choose(u"combo_ProduktGruppe", u"Pizza"_s);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte geben Sie ein eindeutiges Kurzzeichen ein."_s, 0, faulty}}));
    enter(u"txt_Kurzzeichen", u"\"10\""_s);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte geben Sie eine Produkt Bezeichnung ein."_s, 0, faulty}}));
    enter(u"txt_Produkt", u"Pizza 'Speciale'"_s);
    find<QPlainTextEdit>(u"txt_Beschreibung")->setPlainText(u"mit \"allem\""_s);
    for (const char16_t* wrong : {u"1,5", u"1e308", u"-1000000.05"}) {
        put({{u"txt_Preis_4", QString::fromUtf16(wrong)}});
        click(u"cmdSave");
        EXPECT_EQ(said(), (Said{{u"Bitte geben Sie überall einen gültigen Preis ein."_s, 0,
                                 u"Ungültige Eingabe"_s}}));
    }
    EXPECT_EQ(focusName(), u"txt_Preis_4"_s);
    EXPECT_EQ(text(u"txt_Produkt"), u"Pizza 'Speciale'"_s);
    put({{u"txt_Preis_4", u"1.5"_s}});

    // Refused also when the other one is inactive; allowed in another category.
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET flag_Status = True"_s);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Dieses Kurzzeichen existiert bereits."_s, 4, u"Fehlende Eingabe"_s}}));
    EXPECT_EQ(text(u"txt_Kurzzeichen") + text(u"txt_Produkt") +
                  find<QPlainTextEdit>(u"txt_Beschreibung")->toPlainText(),
              u"10Pizza Specialemit allem"_s);
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Produkte"_s), 5);
    choose(u"combo_ProduktGruppe", u"Getränke"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Produkte"_s), 6);
}

TEST_F(ProductsScreenTest, StoresHeadTenPricesAndExtras) {
    choose(u"combo_ProduktGruppe", u"Pizza"_s);
    enter(u"txt_Kurzzeichen", u"Q"_s);
    enter(u"txt_Produkt", u"Quattro"_s);
    find<QPlainTextEdit>(u"txt_Beschreibung")->setPlainText(u"Zeile 1\nZeile 2"_s);
    choose(u"combo_Stückelung", u"Pack"_s);
    choose(u"combo_Einheit", u"25"_s);
    choose(u"combo_Reihenfolge", u"500"_s);
    tick(u"check_InternetBilder");
    for (int i = 1; i <= 10; ++i)
        put({{u"txt_Preis_%1"_s.arg(i), QString::number(i)}});
    find<QComboBox>(u"combo_MWSt_3")->setCurrentIndex(1);
    for (const int extra : {1, 2})
        find<QListWidget>(u"list_Extras")->item(extra)->setSelected(true);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    const QString key = stored(u"SELECT lng_ID FROM tbl_Verwaltung_Produkte WHERE txt_Kurzzeichen = 'Q'"_s);
    EXPECT_EQ(
        columns(u"lng_ProduktGruppe, txt_Produkt, txt_Beschreibung, txt_Stückelung, lng_Einheit, "
                u"lng_Reihenfolge, flag_InternetPreis, flag_InternetBilder, flag_Status, flag_Updated"_s,
                key.toLongLong()),
        u"2|Quattro|Zeile 1\nZeile 2|Pack|25|500|-1|-1|0|-1"_s);
    EXPECT_EQ(pictures(key.toLongLong()), u"||0|0"_s);
    EXPECT_EQ(stored(u"SELECT Sum(lng_Gruppe * 100 * dbl_Preis) AS P, Sum(lng_MWSt * lng_Gruppe) AS M FROM "
                     u"tbl_Verwaltung_Produkte_Preise WHERE lng_ProduktID = "_s +
                     key),
              u"38500|3"_s);
    EXPECT_EQ(TestFirm::rows(u"SELECT lng_ProduktExtraID FROM tbl_Verwaltung_Produkte_Extras WHERE "
                             u"lng_ProduktID = "_s +
                             key),
              (QStringList{u"1"_s, u"2"_s}));
    // Category and position carry over, the rest is fresh.
    EXPECT_EQ(chosen(u"combo_ProduktGruppe") + chosen(u"combo_Reihenfolge") + chosen(u"combo_Stückelung"),
              u"Pizza500Stk."_s);
    EXPECT_EQ(extras(true) + text(u"txt_Preis_7") + focusName(), u"0.00txt_Kurzzeichen"_s);
}

TEST_F(ProductsScreenTest, DropsAnExtraThatBecameInactiveMeanwhile) {
    clickRowOf(u"1"_s);
    EXPECT_EQ(extras(true), u"Knoblauch Käse"_s);
    EXPECT_EQ(text(u"txt_Preis_2") + chosen(u"combo_MWSt_2"), u"15.001 (2.60%)"_s);
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_ProdukteExtras SET flag_Status = True WHERE lng_ID = 2"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(stored(u"SELECT Count(*) AS N FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktID = 2"_s),
              u"1"_s);
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Produkte_Preise"_s), 50);
    EXPECT_EQ(extras(false), u"Knoblauch Käsesauce"_s) << "the cleaned mask offers what is active now";
}

TEST_F(ProductsScreenTest, InactiveLeavesTheWebUntilItIsTickedAgain) {
    clickRowOf(u"1"_s);
    find<QCheckBox>(u"check_InternetPreise")->setChecked(true);
    tick(u"check_Status");
    EXPECT_FALSE(ticked(u"check_InternetPreise"));
    tick(u"check_InternetPreise");
    click(u"cmdSave");
    EXPECT_EQ(columns(u"flag_InternetPreis, flag_Status"_s, 2), u"-1|-1"_s);
    EXPECT_EQ(rows().size(), 1);
    // Loading an inactive product shows its web flag as it is stored.
    tick(u"check_Sort_Status");
    clickRowOf(u"1"_s);
    EXPECT_TRUE(ticked(u"check_InternetPreise") && ticked(u"check_Status"));
}

TEST_F(ProductsScreenTest, PicturesGetTheirProductsNameWithTheSave) {
    clickRowOf(u"1"_s);
    pick(u"cmdHintergrundBildKlein", image(u"rand.jpg"_s, 150, 150));
    pick(u"cmdHintergrundBildGross", file(u"punkt.GIF"_s, kGif));
    EXPECT_TRUE(said().isEmpty());
    EXPECT_FALSE(previewIsEmpty(u"imgDisplayBildKlein"));
    EXPECT_TRUE(QFile::exists(internet(u"Pictures_Temp/SMALL_ProduktBild.jpg"_s)));
    EXPECT_EQ(pictures(2), u"||0|0"_s);
    click(u"cmdSave");
    EXPECT_EQ(pictures(2), u"2.jpg|2.GIF|-1|-1"_s);
    EXPECT_EQ(QImageReader(internet(u"Pictures_Small/2.jpg"_s)).size(), QSize(150, 150));
    EXPECT_TRUE(QFile::exists(internet(u"Pictures_Large/2.GIF"_s)));
    EXPECT_TRUE(previewIsEmpty(u"imgDisplayBildKlein"));

    // A save that does not touch the pictures takes the marks back and leaves the names.
    clickRowOf(u"1"_s);
    EXPECT_FALSE(previewIsEmpty(u"imgDisplayBildKlein"));
    EXPECT_FALSE(previewIsEmpty(u"imgDisplayBildGross"));
    click(u"cmdSave");
    EXPECT_EQ(pictures(2), u"2.jpg|2.GIF|0|0"_s);

    // Another extension leaves the older file where it is; the same extension replaces it.
    clickRowOf(u"1"_s);
    pick(u"cmdHintergrundBildKlein", file(u"neu.gif"_s, kGif));
    click(u"cmdSave");
    clickRowOf(u"1"_s);
    pick(u"cmdHintergrundBildKlein", image(u"schmal.jpg"_s, 100, 10));
    click(u"cmdSave");
    EXPECT_EQ(pictures(2), u"2.jpg|2.GIF|-1|0"_s);
    EXPECT_TRUE(QFile::exists(internet(u"Pictures_Small/2.gif"_s)));
    EXPECT_EQ(QImageReader(internet(u"Pictures_Small/2.jpg"_s)).size(), QSize(100, 10));

    // A deleted one leaves the key and a bare point; the file stays.
    clickRowOf(u"1"_s);
    click(u"cmdBildLöschenKlein");
    EXPECT_TRUE(previewIsEmpty(u"imgDisplayBildKlein"));
    click(u"cmdSave");
    EXPECT_EQ(pictures(2), u"2.|2.GIF|-1|0"_s);
    EXPECT_TRUE(QFile::exists(internet(u"Pictures_Small/2.jpg"_s)));
    clickRowOf(u"1"_s);
    EXPECT_TRUE(previewIsEmpty(u"imgDisplayBildKlein"));
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(ProductsScreenTest, RefusesWhatIsNoPictureOrTooBig) {
    QByteArray cut;
    {
        QFile whole(image(u"ganz.jpg"_s, 100, 100));
        ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
        cut = whole.readAll().left(20);
    }

    const std::tuple<const char16_t*, QString, QString> cases[] = {
        {u"cmdHintergrundBildKlein", image(u"breit.jpg"_s, 151, 10), kTooBigSmall},
        {u"cmdHintergrundBildKlein", image(u"hoch.jpg"_s, 10, 151), kTooBigSmall},
        {u"cmdHintergrundBildKlein", image(u"riese.jpg"_s, 20000, 20), kTooBigSmall},
        {u"cmdHintergrundBildGross", image(u"901.jpg"_s, 901, 900), kTooBigLarge},
        {u"cmdHintergrundBildKlein", file(u"leer.jpg"_s, {}), kNoPicture},
        {u"cmdHintergrundBildKlein", file(u"text.gif"_s, "GIF89a, sagt er"), kNoPicture},
        {u"cmdHintergrundBildKlein", file(u"halb.jpg"_s, cut), kNoPicture},
        {u"cmdHintergrundBildGross", image(u"verkleidet.jpg"_s, 10, 10, "png"), kNoPicture},
        {u"cmdHintergrundBildGross", image(u"bild.exe"_s, 10, 10), kNoPicture},
        {u"cmdHintergrundBildGross", pickedFrom.filePath(u"fort.jpg"_s), kNoPicture}};

    clickRowOf(u"1"_s);
    for (const auto& [button, path, message] : cases) {
        pick(button, path);
        EXPECT_EQ(said(), (Said{{message, 0, u"Ungültiges Bild"_s}})) << path.toStdString();
    }
    dialogs.answerFile(QString());
    click(u"cmdHintergrundBildKlein");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_TRUE(QDir(internet(u"Pictures_Temp"_s)).isEmpty());
    click(u"cmdSave");
    EXPECT_EQ(pictures(2), u"||0|0"_s);
}

TEST_F(ProductsScreenTest, APictureThatIsNotSavedStaysStagedOnly) {
    pick(u"cmdHintergrundBildKlein", image(u"a.jpg"_s, 20, 20));
    click(u"cmdClean");
    clickRowOf(u"1"_s);
    click(u"cmdSave");
    EXPECT_EQ(pictures(2), u"||0|0"_s);
    // The staged file itself can be picked.
    clickRowOf(u"1"_s);
    pick(u"cmdHintergrundBildKlein", internet(u"Pictures_Temp/SMALL_ProduktBild.jpg"_s));
    click(u"cmdSave");
    EXPECT_EQ(pictures(2), u"2.jpg||-1|0"_s);
    EXPECT_TRUE(QFile::exists(internet(u"Pictures_Small/2.jpg"_s)));
    // A stored picture that is gone leaves the box empty without a word.
    QFile::remove(internet(u"Pictures_Small/2.jpg"_s));
    clickRowOf(u"1"_s);
    EXPECT_TRUE(previewIsEmpty(u"imgDisplayBildKlein"));
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(ProductsScreenTest, ASaveIsWholeOrNotAtAll) {
    int errors = 0;
    common::setErrorHandler([&](common::Origin, std::exception_ptr) { ++errors; });
    clickRowOf(u"1"_s);
    pick(u"cmdHintergrundBildKlein", image(u"alt.jpg"_s, 10, 10));
    click(u"cmdSave");
    clickRowOf(u"1"_s);
    pick(u"cmdHintergrundBildKlein", image(u"neu.jpg"_s, 20, 20));
    pick(u"cmdHintergrundBildGross", image(u"gross.jpg"_s, 30, 30));
    QFile::remove(internet(u"Pictures_Temp/LARGE_ProduktBild.jpg"_s));
    enter(u"txt_Produkt", u"halb"_s);
    find<QListWidget>(u"list_Extras")->clearSelection();
    click(u"cmdSave");
    common::setErrorHandler({});
    EXPECT_EQ(errors, 1);
    EXPECT_EQ(columns(u"txt_Produkt"_s, 2), u"Pizza"_s);
    EXPECT_EQ(QImageReader(internet(u"Pictures_Small/2.jpg"_s)).size(), QSize(10, 10)) << "the old picture";
    EXPECT_EQ(QDir(internet(u"Pictures_Small"_s)).entryList(QDir::Files), QStringList{u"2.jpg"_s});
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Produkte_Extras"_s), 3);
    EXPECT_FALSE(ConnMain.InTransaction());
}

TEST_F(ProductsScreenTest, DeletesWhatNothingRefersTo) {
    const test::TestDialogs::Said refusal{
        u"Dieses Produkt kann nicht gelöscht werden, da bereits Buchungen bestehen."_s, 64,
        u"Löschen Produkt"_s};
    clickRowOf(u"10"_s);
    click(u"cmdDelete");
    EXPECT_EQ(said(), Said{refusal});
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte_Extras"_s);
    doubleClickRow(grid()->row());
    expectDeletion(u"tbl_Auftragswesen_%1_Details"_s, u"lng_ProduktID"_s, refusal,
                   {{u"Möchten Sie dieses Produkt wirklich löschen?"_s, 4, u"Löschen Gruppe"_s}});
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Produkte_Preise"_s), 40);
}
