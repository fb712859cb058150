// The texts of the web shop.
#include "ScreenTest.h"
#include "shop/frmOnlineShopSettingsDokumente.h"
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using test::Said;
using test::TestDialogs;

namespace {

class ShopDocumentsTest : public test::ScreenTest<frmOnlineShopSettingsDokumente> {
  protected:
    ShopDocumentsTest() { open(); }

    QPlainTextEdit* field() { return find<QPlainTextEdit>(u"DokumenteText"); }

    void clickNode(const QString& text) {
        auto* tree = find<QTreeWidget>(u"TreeView");
        const auto found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1) << text.toStdString();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(found.first()).center());
        QApplication::processEvents();
    }

    void write(const QString& text) {
        field()->selectAll();
        field()->insertPlainText(text);
    }

    static QString document(const QString& column, int row = 1) {
        return stored(u"SELECT %1 FROM tbl_OnlineShop_Dokumente WHERE lng_ID = %2"_s.arg(column).arg(row));
    }
};

const TestDialogs::Said kSaved{u"Das Dokument wurde gespeichert."_s, 0, u"Speichern"_s};
const TestDialogs::Said kUnsaved{u"Möchten Sie die Änderungen speichern?"_s, 4, u"Speichern"_s};

} // namespace

TEST_F(ShopDocumentsTest, LoadsAndSavesEachNodeInItsColumnAndForm) {
    expectReachable();

    const struct {
        QString node, column;
        bool encoded;
    } nodes[] = {{u"Kontakt"_s, u"txt_DokumenteKontakt"_s, true},
                 {u"AGB"_s, u"txt_DokumenteAGB"_s, true},
                 {u"FAQ"_s, u"txt_DokumenteFAQ"_s, true},
                 {u"Widerspruch"_s, u"txt_DokumenteWiderspruch"_s, true},
                 {u"Datenschutz"_s, u"txt_DokumenteDatenschutz"_s, true},
                 {u"Informationen"_s, u"txt_News"_s, true},
                 {u"Betreff"_s, u"txt_EMailConfoBetreff"_s, false},
                 {u"Bestätigungstext"_s, u"txt_EMailConfoBody"_s, false}};

    for (const auto& node : nodes) {
        clickNode(node.node);
        EXPECT_FALSE(field()->toPlainText().contains(u"&"_s)) << node.node.toStdString();
        const QString text = node.node + u" ä & \"<b>\"\n'"_s;
        write(text);
        click(u"cmdSave");
        EXPECT_EQ(said(), Said{kSaved});
        QString html = node.node + u" &auml; &amp; &quot;<b>&quot;<br />'"_s;
        html.replace(u"Bestä"_s, u"Best&auml;"_s);
        EXPECT_EQ(document(node.column), node.encoded ? html : QString(text).replace(u"\n"_s, u"\r\n"_s));
        clickNode(u"News"_s);
        EXPECT_FALSE(field()->isEnabled() || find(u"cmdSave")->isEnabled());
        clickNode(node.node);
        EXPECT_EQ(field()->toPlainText(), text);
    }
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(ShopDocumentsTest, AsksBeforeAnUnsavedTextGoes) {
    EXPECT_EQ(field()->toPlainText(), u"Bei Fragen zu Ihrer Bestellung rufen Sie uns bitte während der "
                                      u"Bestellzeiten an."_s);
    const QString column = u"txt_DokumenteKontakt"_s;
    const QString standard = document(column, 0);
    write(u"eins"_s);
    dialogs.answer(platform::kAnswerYes);
    clickNode(u"AGB"_s);
    EXPECT_EQ(said(), (Said{kUnsaved, kSaved}));
    EXPECT_EQ(document(column), u"eins"_s);
    EXPECT_TRUE(field()->toPlainText().startsWith(u"Alle Preise"_s));
    clickNode(u"Kontakt"_s);
    write(u"zwei"_s);
    dialogs.answer(platform::kAnswerNo);
    click(u"cmdDefault");
    EXPECT_EQ(said(), Said{kUnsaved});
    EXPECT_EQ(document(column), u"eins"_s) << "the default waits to be saved";
    click(u"cmdDefault");
    EXPECT_TRUE(said().isEmpty()) << "the default is what stands there";
    click(u"cmdSave");
    EXPECT_EQ(said(), Said{kSaved});
    EXPECT_EQ(document(column), standard);
    write(u"drei"_s);
    dialogs.answer(platform::kAnswerNo);
    click(u"cmdClose");
    EXPECT_EQ(said(), Said{kUnsaved});
    EXPECT_EQ(document(column), standard);
    EXPECT_EQ(dialogs.unexpected, 0);
}
