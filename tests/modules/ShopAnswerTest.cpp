#include "common/RunTimeError.h"
#include "shop/modInternetBestellungen.h"
#include "support/TestFirm.h"
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace modInternetBestellungen;
using test::TestFirm;

namespace {

QString order(int id, const QString& etage = u"<ETAGE>%1. Stock</ETAGE>"_s,
              const QString& total = u"38.50"_s) {
    return u"<RECORD><ID>%1</ID><FIRMA></FIRMA><NAME>N%1</NAME><VORNAME>V</VORNAME><STRASSE>S 1</STRASSE>%2"
           u"<PLZORT>8000 Zürich</PLZORT><TELEFON>079 123 45 67</TELEFON><EMAIL>a@b.ch</EMAIL>"
           u"<VERSANDART>Lieferung</VERSANDART><VERSANDZEIT>15. Mai 2026</VERSANDZEIT>"
           u"<ANMERKUNG> <b>'; &amp;\u0001 </ANMERKUNG><TOTAL>%3</TOTAL></RECORD>"_s.arg(id)
               .arg(etage.contains(u'%') ? etage.arg(id) : etage, total);
}

QString answer(const QString& records) {
    return u"<BESTELLUNGEN>"_s + records + u"</BESTELLUNGEN>"_s;
}

QStringList stored(const QString& columns = u"lng_ID, txt_Etage, dbl_Total"_s) {
    return TestFirm::rows(u"SELECT "_s + columns +
                          u" FROM tbl_WebShop_Bestellungen_Master ORDER BY lng_ID"_s);
}

/// The count, or the number of the error.
qint64 parsed(const QString& text) {
    try {
        return ParseWebShopBestellungen(text);
    } catch (const common::RunTimeError& error) {
        return -error.number();
    }
}

struct ShopAnswers : testing::Test {
    TestFirm firm;
};

TEST_F(ShopAnswers, tagsAreSearchedFromTheRecordsBeginningOn) {
    struct Case {
        QString text;
        QStringList rows;
    };

    const QString noName = QString(order(1)).remove(u"<NAME>"_s);
    const Case cases[] = {
        {answer({}), {}},
        {u"<html>Fehler 500</html>"_s, {}},
        {{}, {}},
        {answer(order(1) + order(2)), {u"1|1. Stock|38.5"_s, u"2|2. Stock|38.5"_s}},
        {answer(order(1)).toLower(), {u"1|1. stock|38.5"_s}},
        {answer(order(1, {}) + order(2, {}) + order(3)),
         {u"1|3. Stock|38.5"_s, u"2|3. Stock|38.5"_s, u"3|3. Stock|38.5"_s}},
        {answer(order(7, {}, u" 1e9 "_s) + u"<ETAGE>Nach allem</ETAGE>"_s), {u"7|Nach allem|1000000000"_s}},
        {u"vor <TOTAL>9</TOTAL>"_s + answer(order(1)), {u"1|1. Stock|38.5"_s}},
        {answer(order(1, u"<ETAGE><ETAGE>x</ETAGE>"_s)), {u"1|<ETAGE>x|38.5"_s}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(parsed(c.text), c.rows.size()) << c.text.toStdString();
        EXPECT_EQ(stored(), c.rows) << c.text.toStdString();
    }
    parsed(answer(order(1)));
    EXPECT_EQ(stored(u"txt_Firma, txt_PLZOrt, txt_Anmerkungen"_s),
              QStringList{u"|8000 Zürich| <b>'; &amp;\u0001 "_s});
    // Without its opening tag a value begins where the tag would end, stood it at the text's beginning.
    parsed(answer(noName));
    EXPECT_EQ(stored(u"txt_Name"_s).value(0), answer(noName).section(u"</NAME>"_s, 0, 0).mid(5));
}

TEST_F(ShopAnswers, whatCannotBeReadLeavesTheOrdersAsTheyWere) {
    ASSERT_EQ(parsed(answer(order(1))), 1);
    QStringList broken{QString(order(2)).remove(u"</RECORD>"_s), QString(order(2)).remove(u"</EMAIL>"_s),
                       QString(order(2)).replace(u"<NAME>N2</NAME>"_s, u"</NAME>N2<NAME>"_s)};
    for (const char16_t* total : {u"", u"12,50", u"12.50.1", u"Fr. 12", u"1e999", u"NaN"})
        broken << order(2, {}, QString::fromUtf16(total)) + u"<ETAGE></ETAGE>"_s;
    for (const char16_t* id : {u"", u"x", u"2.5", u"2147483648", u"2,0"})
        broken << QString(order(2)).replace(u"<ID>2<"_s, u"<ID>%1<"_s.arg(QString::fromUtf16(id)));
    for (const QString& record : broken) {
        EXPECT_EQ(parsed(answer(order(5) + record)), -common::kTypeMismatch) << record.toStdString();
        EXPECT_EQ(stored(u"lng_ID"_s), QStringList{u"1"_s}) << record.toStdString();
    }
    EXPECT_EQ(parsed(answer(order(5) + order(5))), -common::kDuplicateKey);
    EXPECT_EQ(stored(u"lng_ID"_s), QStringList{u"1"_s});

    // An answer cut anywhere: whole orders, or the last state.
    const QString whole = answer(order(2) + order(3));
    const QStringList last{u"1"_s}, first{u"2"_s}, both{u"2"_s, u"3"_s};
    for (qsizetype cut = 0; cut <= whole.size(); ++cut) {
        parsed(answer(order(1)));
        const qint64 count = parsed(whole.left(cut));
        const QStringList& expected = count < 0 ? last : count == 1 ? first : both;
        EXPECT_EQ(stored(u"lng_ID"_s), count == 0 ? QStringList() : expected) << cut;
        EXPECT_EQ(count == 0, cut < u"<BESTELLUNGEN><RECORD>"_s.size()) << cut;
        ASSERT_FALSE(ConnMain.InTransaction() || RsMain.IsOpen()) << cut;
    }
}

TEST_F(ShopAnswers, timeGrowsWithTheTextAlone) {
    QString records, bare;
    for (int i = 1; i <= 20'000; ++i) {
        records += order(i, {});
        bare += u"<RECORD></RECORD>"_s;
    }
    // One floor for all of them, at the end. Searched for anew in every record it would take minutes.
    EXPECT_EQ(parsed(answer(records + u"<ETAGE>9</ETAGE>"_s)), 20'000);
    EXPECT_EQ(stored(u"DISTINCT txt_Etage, 0 AS lng_ID"_s), QStringList{u"9|0"_s});
    EXPECT_EQ(parsed(answer(records)), -common::kTypeMismatch);
    EXPECT_EQ(parsed(answer(bare)), -common::kTypeMismatch);
    // Each would take all that stands before it.
    EXPECT_EQ(parsed(answer(records.remove(u"<NAME>"_s) + u"<ETAGE>9</ETAGE>"_s)), -common::kTypeMismatch);
    const QString note(4'000'000, u'<');
    EXPECT_EQ(parsed(answer(order(1, u"<ETAGE>"_s + note + u"</ETAGE>"_s))), 1);
    EXPECT_EQ(stored(u"txt_Etage"_s), QStringList{note});
}

TEST_F(ShopAnswers, linesOfAnOrder) {
    const auto line = [](const QString& isProdukt, const QString& id, const QString& rest) {
        return u"<Record><IsProdukt>%1</IsProdukt><ProduktID>%2</ProduktID>%3</Record>"_s.arg(isProdukt, id,
                                                                                              rest);
    };
    const auto told = [](const QString& text) {
        QStringList lines;
        for (const desks::WebLine& read : ParseWebShopBestellungDetails(text))
            lines << u"%1|%2|%3|%4"_s.arg(read.isProdukt).arg(read.id).arg(read.anzahl, read.bezeichnung);
        return lines;
    };
    EXPECT_EQ(told(answer(line(u" 1"_s, u"3"_s, u"<ANZAHL>-2,5</ANZAHL>"_s) +
                          line(u"0"_s, u"2"_s, u"<ANZAHL>1</ANZAHL><BEZEICHNUNG>Käse</BEZEICHNUNG>"_s) +
                          line({}, u"7"_s, u"<ANZAHL></ANZAHL><BEZEICHNUNG></BEZEICHNUNG>"_s))),
              (QStringList{u"1|3|-2,5|"_s, u"0|2|1|Käse"_s, u"0|7||"_s}));
    EXPECT_EQ(told({}), QStringList());
    for (const char16_t* id : {u"", u"W", u"3.5", u"1e10"})
        EXPECT_THROW(told(answer(line(u"1"_s, QString::fromUtf16(id), u"<ANZAHL>1</ANZAHL>"_s))),
                     common::RunTimeError);
    EXPECT_THROW(told(answer(line(u"1"_s, u"3"_s, {}))), common::RunTimeError);
}

} // namespace
