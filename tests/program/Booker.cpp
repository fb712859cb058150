#include "program/Booker.h"
#include "common/Convert.h"
#include "orders/OrderDraft.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "orders/modBestellNummern.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QUuid>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace test {
namespace {

void say(const QString& line) {
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

/// The order, its draft and what both have told.
struct Desk {
    orders::WorkingOrder order;
    orders::OrderDraft draft{order, orders::OrderDraft::defaultFile()};

    void keep() {
        const QString what = u"%1 %2 %3"_s.arg(fingerprint(order), order.detail(orders::Detail::Konditionen),
                                               QString::number(order.LastFilledRow() + 1));
        say(u"K "_s + what);
        draft.flush();
        say(u"D "_s + what);
    }

    void pick(qint64 produkt, int anzahl) {
        order.PickProdukt(produkt, {}, anzahl);
        keep();
    }

    void fill(int lines) {
        order.SucheTelefonNummer(u"0791234567"_s);
        order.ChooseKonditionen(QUuid::createUuid().toString(QUuid::Id128));
        order.webBestellung = QRandomGenerator::global()->generate();
        keep();
        for (int line = 0; line < lines; ++line)
            pick(1 + line % 4, 1 + line % 3);
    }

    void change(qint64 number) {
        modAuftragswesenAuftragserfassung::LoadBestellung(order, number);
        pick(TestFirm::kWein, 1);
    }

    void remove(qint64 number) {
        change(number);
        say(u"X %1"_s.arg(number));
        modAuftragswesenAuftragserfassung::DeleteBestellung(number, order.Kennung());
        clean();
    }

    void clean() {
        say(u"C"_s);
        draft.finish();
        order.ClearBestellungMaske();
        draft.flush();
    }

    void stored(const char* kind, qint64 number) {
        say(u"%1 %2 %3 %4"_s.arg(QLatin1String(kind))
                .arg(number)
                .arg(order.LastFilledRow() + 1)
                .arg(common::formatNumber(order.total(orders::TotalRow::Total), u"0.00")));
    }
};

} // namespace

QString fingerprint(const orders::WorkingOrder& order) {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const platform::CellTable* table : {&order.BestellungDetailsGrid, &order.BestellungGrid})
        for (int row = 0; row < table->rows(); ++row)
            for (int column = 0; column < table->columnCount(); ++column)
                hash.addData(table->text(row, column).toUtf8() + '\n');
    hash.addData(u"%1 %2 %3 %4"_s.arg(order.lng_KundenID)
                     .arg(order.lng_KurierID)
                     .arg(order.KundenAdresse())
                     .arg(order.webBestellung.value_or(-1).number)
                     .toUtf8());
    return QString::fromLatin1(hash.result().toHex());
}

int bookUntilKilled(const QString& installation) {
    store::setAppPath(installation);
    store::OpenDatabases();
    store::LoadSystemSettings();
    TestDialogs dialogs;
    TestNavigation navigation;
    Desk desk;
    desk.order.SetUp();
    for (int round = 0;; ++round) {
        desk.fill(1 + round % 8);
        if (round % 2 == 1) {
            desk.stored("V", modAuftragswesenVorbestellungen::SaveVorbestellung(desk.order));
            desk.clean();
            continue;
        }
        if (!modAuftragswesenAuftragserfassung::SaveBestellung(desk.order, dialogs, navigation))
            return 1;
        const qint64 number = modBestellNummern::GetLastTrxNr();
        desk.stored("B", number);
        desk.clean();
        desk.change(number);
        modAuftragswesenAuftragserfassung::UpdateBestellung(desk.order, number);
        desk.stored("B", number);
        desk.clean();
        if (round % 4 == 0)
            desk.remove(number);
    }
}

} // namespace test
