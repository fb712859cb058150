#include "orders/OrderDraft.h"
#include "orders/OrderStorage.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using orders::OrderDraft;
using orders::WorkingOrder;
using test::TestFirm;

namespace {

class OrderDraftTest : public testing::Test {
  protected:
    OrderDraftTest() : file(OrderDraft::defaultFile()), draft(order, file) {
        order.SetUp();
        order.SucheTelefonNummer(u"0791234567"_s);
        order.PreisGruppe = 2;
        order.PickProdukt(TestFirm::kHawaii, u"10"_s, 3);
        order.PickExtra(TestFirm::kKaesesauce, u"Käsesauce"_s, 1);
        order.SetRabattBestellung(7);
        order.BestellungGrid.endEdit(4, orders::Col::Kurzzeichen, u"O'N\"5%"_s);
        order.ChooseKurier(TestFirm::kKurierCD, u"CD"_s);
        order.BestellungDetailsGrid.endEdit(1, 5, u"Quittung 😀"_s);
    }

    static QStringList cells(const WorkingOrder& shown) {
        QStringList texts;
        for (const platform::CellTable* table :
             {&shown.BestellungDetailsGrid, &shown.BestellungTotalGrid, &shown.BestellungGrid})
            for (int row = 0; row < table->rows(); ++row)
                for (int column = 0; column < table->columnCount(); ++column)
                    texts << table->text(row, column);
        return texts << shown.KundenAdresse() << QString::number(shown.lng_KundenID)
                     << QString::number(shown.lng_KurierID) << QString::number(shown.PreisGruppe);
    }

    TestFirm firm;
    QString file;
    WorkingOrder order;
    OrderDraft draft;
};

TEST_F(OrderDraftTest, BringsBackExactlyTheCells) {
    draft.flush();
    ASSERT_TRUE(QFile::copy(file, file + u".aB3dEf"_s))
        << "as a process leaves it that is killed while writing";
    EXPECT_EQ(QFileInfo(file).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther), 0);
    ASSERT_TRUE(OrderDraft::waits(file));
    EXPECT_FALSE(QFile::exists(file + u".aB3dEf"_s));
    WorkingOrder next;
    next.SetUp();
    ASSERT_TRUE(OrderDraft::restore(file, next));
    EXPECT_EQ(cells(next), cells(order));
    EXPECT_EQ(next.buttons(), order.buttons());
    EXPECT_TRUE(next.KundenAdresseShown());
}

TEST_F(OrderDraftTest, IsGoneOnceTheOrderIsCleanedOrDeclined) {
    draft.flush();
    order.ClearBestellungMaske();
    draft.flush();
    EXPECT_FALSE(QFile::exists(file));
    order.SucheTelefonNummer(u"0791234567"_s);
    draft.flush();
    EXPECT_TRUE(QFile::exists(file));
    draft.forget();
    EXPECT_FALSE(OrderDraft::waits(file));
}

TEST_F(OrderDraftTest, AnOrderBookedInTheLastMomentIsNotOfferedAgain) {
    draft.flush();
    test::TestDialogs dialogs;
    test::TestNavigation navigation;
    ASSERT_TRUE(modAuftragswesenAuftragserfassung::SaveBestellung(order, dialogs, navigation));
    EXPECT_FALSE(OrderDraft::waits(file));
    EXPECT_FALSE(QFile::exists(file));
    order.PickProdukt(TestFirm::kWein, u"W"_s, 1);
    draft.flush();
    EXPECT_TRUE(OrderDraft::waits(file)) << "one line more is another order";
    orders::WriteOrder(order, orders::PreOrders(), orders::OrderNumber::Counter());
    EXPECT_FALSE(OrderDraft::waits(file)) << "stored as a pre-order";
}

TEST_F(OrderDraftTest, AChangeIsOfferedUntilItStands) {
    using namespace modAuftragswesenAuftragserfassung;
    const qint64 number = orders::WriteOrder(order, orders::BookedOrders(), orders::OrderNumber::New(1000));
    LoadBestellung(order, number);
    draft.flush();
    EXPECT_FALSE(OrderDraft::waits(file)) << "only looked at";
    order.BestellungDetailsGrid.endEdit(1, 5, u"Rechnung"_s);
    draft.flush();
    ASSERT_TRUE(OrderDraft::waits(file)) << "the amounts are the same, the conditions are not";
    WorkingOrder next;
    next.SetUp();
    ASSERT_TRUE(OrderDraft::restore(file, next));
    EXPECT_TRUE(MayUpdate(next));
    UpdateBestellung(next, next.detail(orders::Detail::AuftragsNr).toLongLong());
    EXPECT_FALSE(OrderDraft::waits(file));
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Master"_s), 1);
    DeleteBestellung(number);
    LoadBestellung(order, number);
    draft.flush();
    EXPECT_FALSE(OrderDraft::waits(file)) << "a deleted order has nothing to go on with";
}

TEST_F(OrderDraftTest, ADamagedOrForeignFileIsPutAside) {
    draft.flush();
    QFile whole(file);
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray good = whole.readAll();
    whole.close();
    const QByteArray bad[] = {"",
                              "{",
                              "[]",
                              "{}",
                              good.left(good.size() / 2),
                              QByteArray(good).replace("\"version\":1", "\"version\":2"),
                              QByteArray(good).replace("\"kunde\":1", "\"kunde\":\"Anna\""),
                              QByteArray(good).replace(",52.5,", ",\"teuer\","),
                              QByteArray(good).replace("\"Pizza Hawaii\"", "12"),
                              good + QByteArray(1'000'000, ' '),
                              QByteArray(100000, '\0')};
    for (const QByteArray& content : bad) {
        ASSERT_NE(content, good);
        QFile damaged(file);
        ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
        damaged.write(content);
        damaged.close();
        EXPECT_FALSE(OrderDraft::waits(file)) << content.left(40).toStdString();
        EXPECT_FALSE(QFile::exists(file));
        EXPECT_TRUE(QFile::exists(file + u".defekt"_s));
    }
}

} // namespace
