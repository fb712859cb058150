// Colours, title picture and title of the web shop.
#include "ScreenTest.h"
#include "shop/frmOnlineShopSettingsFonts.h"
#include "support/FullDisk.h"
#include <QFile>
#include <QImage>

using namespace Qt::StringLiterals;
using test::Said;

namespace {

class ShopLookTest : public test::ScreenTest<frmOnlineShopSettingsFonts> {
  protected:
    ShopLookTest() { open(); }

    QString internet(const QString& name) { return firm.folder() + u"/Internet/"_s + name; }

    QString picture(const QString& name, QSize size, QRgb color, const char* format = "jpg") {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(firm.folder() + u'/' + name, format));
        return firm.folder() + u'/' + name;
    }

    static QByteArray bytes(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    void choosePicture(const QString& path) {
        dialogs.answerFile(path);
        click(u"cmdHintergrundbild");
    }

    QString tag(QStringView label) { return find(label)->property("Tag").toString(); }

    QColor ground(QStringView label) { return find(label)->palette().color(QPalette::Window); }

    QColor ink(QStringView label) { return find(label)->palette().color(QPalette::WindowText); }

    static QString row() {
        return stored(u"SELECT * FROM tbl_OnlineShop_CorporateIdentity WHERE lng_ID = 1"_s);
    }
};

} // namespace

TEST_F(ShopLookTest, KeepsColoursInBothFormsAndTheTitleWithoutQuotes) {
    expectReachable();
    EXPECT_EQ(ground(u"inputBalkenfarbe"), QColor(0xa3, 0x26, 0x38));
    EXPECT_EQ(ink(u"inputSchriftfarbe"), QColor(Qt::white));
    dialogs.color = 0x0a0b05;
    click(u"cmdBalkenfarbe");
    dialogs.color = 0x10ff;
    click(u"cmdSchriftfarbe");
    EXPECT_EQ(tag(u"inputBalkenfarbe") + tag(u"inputSchriftfarbe"), u"050B0AFF1000"_s);
    for (const QStringView label : {u"inputSchriftfarbe", u"lbl_VorschauBalken"}) {
        EXPECT_EQ(ground(label), QColor(5, 11, 10));
        EXPECT_EQ(ink(label), QColor(255, 16, 0));
    }
    dialogs.color = {};
    click(u"cmdBalkenfarbe");
    EXPECT_EQ(tag(u"inputBalkenfarbe"), u"050B0A"_s) << "cancelled";
    enter(u"inputShopTitel", u"Da 'Toni' \"Chur\""_s);
    EXPECT_EQ(find<QLabel>(u"lbl_VorschauTitel")->text(), u"Da 'Toni' \"Chur\""_s);
    press(Qt::Key_Return);
    EXPECT_EQ(focusName(), u"cmdSave"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(row(), u"1|658181|050B0A|4351|FF1000|logo_kurier.jpg|Da Toni Chur"_s);
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(ShopLookTest, TakesAPictureOfTheOneSizeAndPutsItIntoForceWhenSaved) {
    const QByteArray before = bytes(internet(u"logo_kurier.jpg"_s));
    const QString refused = picture(u"a.jpg"_s, {900, 81}, 0xff0000);
    const QString huge = picture(u"b.jpg"_s, {30000, 1000}, 0);
    const QString text = firm.folder() + u"/c.jpg"_s;
    QFile broken(text);
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly) && broken.write("GIF89a no picture") > 0);
    broken.close();
    const std::pair<QString, QString> files[] = {
        {refused, u"Das Bild muss Höhe: 900 x Breite: 80 Pixel sein."_s},
        {huge, u"Das Bild muss Höhe: 900 x Breite: 80 Pixel sein."_s},
        {picture(u"d.jpg"_s, {900, 80}, 0, "png"), u"Diese Datei ist kein Bild (nur GIF / JPG)."_s},
        {text, {}},
        {firm.folder() + u"/gone.jpg"_s, u"Die Datei \"gone.jpg\" kann nicht gelesen werden."_s}};
    for (const auto& [path, faulty] : files) {
        choosePicture(path);
        ASSERT_EQ(dialogs.said.size(), 1) << path.toStdString();
        EXPECT_EQ(dialogs.last().title, u"Ungültiges Bild"_s);
        EXPECT_TRUE(faulty.isEmpty() || dialogs.last().text == faulty) << dialogs.last().text.toStdString();
        dialogs.said.clear();
    }
    EXPECT_EQ(bytes(internet(u"temp_logo_kurier.jpg"_s)), "missing");
    const QString own = picture(u"Titel.JPEG"_s, {900, 80}, 0x00ff00);
    {
        const test::FullDisk full(100);
        choosePicture(own);
        EXPECT_EQ(said().size(), 1);
        EXPECT_EQ(bytes(internet(u"temp_logo_kurier.jpg"_s)), "missing");
    }
    choosePicture(own);
    EXPECT_EQ(tag(u"inputHintergrundbild"), u"jpg"_s);
    EXPECT_EQ(bytes(internet(u"logo_kurier.jpg"_s)), before) << "not before it is saved";
    {
        const test::FullDisk full(100);
        enter(u"inputShopTitel", u"lost"_s);
        click(u"cmdSave");
        EXPECT_EQ(said().size(), 1);
        EXPECT_FALSE(row().endsWith(u"lost"_s)) << "the picture and the row, or none of them";
        EXPECT_EQ(bytes(internet(u"logo_kurier.jpg"_s)), before);
    }
    click(u"cmdSave");
    EXPECT_EQ(bytes(internet(u"logo_kurier.jpg"_s)), bytes(own));
    // What is chosen and not saved does not come with the next title.
    choosePicture(picture(u"other.jpg"_s, {900, 80}, 0x0000ff));
    screen->close();
    open();
    click(u"cmdSave");
    EXPECT_EQ(bytes(internet(u"logo_kurier.jpg"_s)), bytes(own));
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(ShopLookTest, GoesBackToTheDefaultAndFallsBackToItWithoutAWorkingCopy) {
    const QByteArray standard = bytes(internet(u"logo_demokurier.jpg"_s));
    const QString inForce = internet(u"logo_kurier.jpg"_s);
    QFile::remove(inForce);
    ASSERT_TRUE(QFile::copy(picture(u"own.jpg"_s, {900, 80}, 0xff), inForce));
    click(u"cmdSave");
    EXPECT_EQ(bytes(inForce), standard);
    ConnMain.Execute(u"UPDATE tbl_OnlineShop_CorporateIdentity SET txt_ShopTitel = 'own', "
                     u"txt_Hintergrundbild = 'logo_kurier.gif' WHERE lng_ID = 1"_s);
    open();
    click(u"cmdSave");
    EXPECT_EQ(said().size(), 1) << "neither a picture nor a default of that kind";
    click(u"cmdDefault");
    EXPECT_EQ(text(u"inputShopTitel"), u"Online Shop"_s);
    EXPECT_EQ(bytes(internet(u"temp_logo_kurier.jpg"_s)), standard);
    EXPECT_TRUE(row().endsWith(u"logo_kurier.gif|own"_s)) << "only the next save makes it the firm's";
    click(u"cmdSave");
    EXPECT_TRUE(row().endsWith(u"logo_kurier.jpg|Online Shop"_s));
}
