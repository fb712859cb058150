#pragma once
#include "common/Convert.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <gtest/gtest.h>

namespace test {

/// An order on the small firm, keyed as the screen would.
class OrderTest : public testing::Test {
  protected:
    OrderTest() { order.SetUp(); }

    void callAnna() { order.SucheTelefonNummer(QStringLiteral("0791234567")); }

    void pickWein(double anzahl = 1) { order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), anzahl); }

    void pickPizza() { order.PickProdukt(TestFirm::kMargherita, QStringLiteral("1"), 1); }

    void pickKaese() { order.PickExtra(TestFirm::kKaese, QStringLiteral(u"Käse"), 1); }

    /// Anna's order of two wines (24) and a pizza (14) with cheese (2).
    void takeOrder() {
        callAnna();
        pickWein(2);
        pickPizza();
        pickKaese();
    }

    /// Gives the number.
    qint64 book() {
        const auto number = modAuftragswesenAuftragserfassung::SaveBestellung(order, dialogs, navigation);
        EXPECT_TRUE(number);
        order.ClearBestellungMaske();
        return number.value_or(-1);
    }

    QString text(int row, int col) const { return order.BestellungGrid.text(row, col); }

    double number(int row, int col) const { return order.BestellungGrid.number(row, col); }

    /// Cells of a line, divided by "|".
    QString line(int row, std::initializer_list<int> columns) const {
        QStringList texts;
        for (const int column : columns)
            texts << text(row, column);
        return texts.join(QLatin1Char('|'));
    }

    /// The names of the first rows.
    QString names(int rows) const {
        QStringList list;
        for (int row = 0; row < rows; ++row)
            list << text(row, orders::Col::Bezeichnung);
        return list.join(QLatin1Char('|'));
    }

    /// Cells of the head, divided by "|".
    QString head(std::initializer_list<orders::DetailCell> cells) const {
        QStringList texts;
        for (const orders::DetailCell& cell : cells)
            texts << order.detail(cell);
        return texts.join(QLatin1Char('|'));
    }

    double total(int row = orders::TotalRow::Total) const { return order.total(row); }

    TestFirm firm;
    TestDialogs dialogs;
    TestNavigation navigation;
    orders::WorkingOrder order;
};

} // namespace test
