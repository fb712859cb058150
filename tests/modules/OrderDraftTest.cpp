#include "orders/OrderDraft.h"
#include "modules/OrderFixture.h"
#include "orders/OrderStorage.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "support/FullDisk.h"
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <functional>

using namespace Qt::StringLiterals;
using orders::OrderDraft;
using orders::WorkingOrder;
using test::TestFirm;

namespace {

class OrderDraftTest : public test::OrderTest {
  protected:
    OrderDraftTest() { key(); }

    /// What a user does, each time the same.
    void key() {
        callAnna();
        order.webBestellung = {4711, u"044 heute"_s};
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
                     << QString::number(shown.lng_KurierID) << QString::number(shown.PreisGruppe)
                     << QString::number(shown.webBestellung.value_or(-1).number)
                     << shown.webBestellung.value_or(-1).merkmal;
    }

    static void finish(const QString& kennung) {
        orders::FinishOrder(kennung, orders::BookedOrders(), [](const auto&) { return std::optional(1000); });
    }

    const QString file = OrderDraft::defaultFile();
    OrderDraft draft{order, file};
};

TEST_F(OrderDraftTest, BringsBackExactlyTheCells) {
    draft.flush();
    ASSERT_TRUE(QFile::copy(file, file + u".aB3dEf"_s))
        << "as a process leaves it that is killed while writing";
    EXPECT_EQ(QFileInfo(file).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther), 0);
    ASSERT_TRUE(OrderDraft::look(file).order);
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
    callAnna();
    draft.flush();
    EXPECT_TRUE(QFile::exists(file));
    draft.giveUp();
    EXPECT_FALSE(OrderDraft::look(file).order);
}

TEST_F(OrderDraftTest, WhatWasStoredInTheLastMomentIsNotOfferedAgain) {
    using namespace modAuftragswesenAuftragserfassung;
    qint64 number = 0;
    const std::function<void()> roads[] = {[&] { SaveBestellung(order, dialogs, navigation); },
                                           [&] { modAuftragswesenVorbestellungen::SaveVorbestellung(order); },
                                           [&] { UpdateBestellung(order, number); },
                                           [&] { DeleteBestellung(number, order.Kennung()); }};
    for (const auto& store : roads) {
        draft.flush();
        EXPECT_TRUE(OrderDraft::look(file).order) << "it equals what was booked in the same minute";
        store();
        EXPECT_FALSE(OrderDraft::look(file).order);
        EXPECT_FALSE(QFile::exists(file));
        number = 1000;
        order.ClearBestellungMaske();
        key();
    }
    draft.finish();
    order.ChooseKonditionen(u"Rechnung"_s);
    draft.flush();
    EXPECT_FALSE(QFile::exists(file)) << "nothing is kept of it any more";

    finish(u"A"_s);
    EXPECT_FALSE(orders::IsFinished(u"B"_s));
    EXPECT_TRUE(orders::IsFinished(u"A"_s)) << "asking for one forgets no other";
}

TEST_F(OrderDraftTest, WhatIsOnlyLookedAtIsNotOfferedButAChangeIs) {
    using namespace modAuftragswesenAuftragserfassung;
    const qint64 number = *orders::WriteOrder(order, orders::BookedOrders(), orders::OrderNumber::Next());
    order.setKennung({});
    const qint64 later = modAuftragswesenVorbestellungen::SaveVorbestellung(order);
    const std::function<void()> roads[] = {
        [&] { LoadBestellung(order, number); },
        [&] { modAuftragswesenVorbestellungen::OpenVorbestellung(order, later); }};
    for (const auto& load : roads) {
        load();
        draft.flush();
        EXPECT_FALSE(OrderDraft::look(file).order);
        order.BestellungDetailsGrid.endEdit(1, 5, u"Rechnung"_s);
        draft.flush();
        EXPECT_TRUE(OrderDraft::look(file).order);
    }
}

TEST_F(OrderDraftTest, AnOrderThatIsGivenUpCanBeTakenBackUntilItIsStored) {
    const QStringList first = cells(order);
    const auto second = [&] {
        order.SucheTelefonNummer(u"0799999999"_s);
        pickWein();
    };
    second();
    const QStringList other = cells(order);
    EXPECT_TRUE(draft.canTakeBack());
    ASSERT_TRUE(draft.takeBack());
    EXPECT_EQ(cells(order), first);
    EXPECT_TRUE(OrderDraft::look(file).order) << "it has its draft again";
    ASSERT_TRUE(QFile::rename(file, file + u".zurueck"_s));
    EXPECT_TRUE(OrderDraft::look(file).order) << "the end came while it was taken back";
    ASSERT_TRUE(draft.takeBack()) << "the other one was given up for it";
    EXPECT_EQ(cells(order), other);

    // Neither a stored one, nor one without lines, nor one that was only looked at comes into its place.
    const qint64 number = *orders::WriteOrder(order, orders::BookedOrders(), orders::OrderNumber::Next());
    draft.finish();
    order.ClearBestellungMaske();
    order.SucheTelefonNummer(u"0799999999"_s);
    modAuftragswesenAuftragserfassung::LoadBestellung(order, number);
    order.ClearBestellungMaske();
    modAuftragswesenAuftragserfassung::LoadBestellung(order, number);
    pickWein(); // a change of a booked one
    order.ClearBestellungMaske();
    ASSERT_TRUE(draft.takeBack());
    EXPECT_EQ(order.lng_KundenID, TestFirm::kAnna);
    EXPECT_FALSE(draft.canTakeBack());

    // Cut off between its storing and its draft's end.
    order.ClearBestellungMaske();
    ASSERT_TRUE(draft.takeBack());
    const QString kennung = order.Kennung();
    order.ClearBestellungMaske();
    finish(kennung);
    EXPECT_FALSE(draft.takeBack());
    EXPECT_FALSE(draft.canTakeBack());

    key();
    order.ClearBestellungMaske();
    for (const auto& [hours, stays] : {std::pair{11, true}, {13, false}}) {
        QFile old(file + u".verworfen"_s);
        const QDateTime since = QDateTime::currentDateTime().addSecs(-3600 * hours);
        ASSERT_TRUE(old.open(QFile::Append) && old.setFileTime(since, QFile::FileModificationTime));
        old.close();
        OrderDraft::look(file);
        EXPECT_EQ(draft.canTakeBack(), stays) << hours;
    }
}

TEST_F(OrderDraftTest, AFullDiskLeavesTheLastWholeDraftAndIsTold) {
    QStringList told;
    QObject::connect(&draft, &OrderDraft::failed, [&](const QString& sentence) { told << sentence; });
    QObject::connect(&draft, &OrderDraft::mended, [&] { told << u"mended"_s; });
    draft.flush();
    const QStringList whole = cells(order);
    {
        const test::FullDisk full(2000);
        for (int line = 0; line < 2; ++line) {
            pickWein();
            draft.flush();
        }
    }
    WorkingOrder next;
    next.SetUp();
    ASSERT_TRUE(OrderDraft::restore(file, next));
    EXPECT_EQ(cells(next), whole);
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.first().contains(u"lässt sich nicht schreiben"_s));
    pickWein();
    draft.flush();
    EXPECT_EQ(told.last(), u"mended"_s);
    order.ClearBestellungMaske();
    const test::FullDisk full(2000);
    draft.takeBack();
    EXPECT_TRUE(draft.canTakeBack()) << "nothing else on the disk holds it";
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
    QStringList aside;
    for (const QByteArray& content : bad) {
        ASSERT_NE(content, good);
        QFile damaged(file);
        ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
        damaged.write(content);
        damaged.close();
        const OrderDraft::Found found = OrderDraft::look(file);
        EXPECT_FALSE(found.order) << content.left(40).toStdString();
        EXPECT_FALSE(QFile::exists(file));
        QFile kept(found.putAside);
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), content);
        EXPECT_FALSE(aside.contains(found.putAside)) << "one that was put aside before stays";
        aside << found.putAside;
    }
}

} // namespace
