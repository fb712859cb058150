#include "program/Booker.h"
#include "common/Convert.h"
#include "orders/WorkingOrder.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "orders/modBestellNummern.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <cstdio>

namespace test {
namespace {

void acknowledge(qint64 number, int lines, double total, const char* kind = "") {
    std::printf("%s%lld %d %s\n", kind, static_cast<long long>(number), lines,
                qPrintable(common::formatNumber(total, u"0.00")));
    std::fflush(stdout);
}

/// An order whose number of lines changes from one to the next.
void fill(orders::WorkingOrder& order, int lines) {
    order.SucheTelefonNummer(QStringLiteral("0791234567"));
    for (int line = 0; line < lines; ++line)
        order.PickProdukt(1 + line % 4, {}, 1 + line % 3);
}

} // namespace

int bookUntilKilled(const QString& installation) {
    store::setAppPath(installation);
    store::OpenDatabases();
    store::LoadSystemSettings();
    TestDialogs dialogs;
    TestNavigation navigation;
    orders::WorkingOrder order;
    order.SetUp();
    for (int round = 0;; ++round) {
        const int lines = 1 + round % 8;
        fill(order, lines);
        if (!modAuftragswesenAuftragserfassung::SaveBestellung(order, dialogs, navigation))
            return 1;
        const qint64 number = modBestellNummern::GetLastTrxNr();
        acknowledge(number, lines, order.total(orders::TotalRow::Total));
        if (round % 2 == 0) {
            const qint64 preOrder = modAuftragswesenVorbestellungen::SaveVorbestellung(order);
            acknowledge(preOrder, lines, order.total(orders::TotalRow::Total), "V");
        }
        if (round % 3 != 0)
            continue;
        modAuftragswesenAuftragserfassung::LoadBestellung(order, number);
        order.PickProdukt(TestFirm::kWein, {}, 1);
        modAuftragswesenAuftragserfassung::UpdateBestellung(order, number);
        acknowledge(number, lines + 1, order.total(orders::TotalRow::Total));
    }
}

} // namespace test
