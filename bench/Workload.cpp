#include "Workload.h"
#include <random>

namespace bench {
namespace {

constexpr int kDrawn = 4000;
constexpr int kWebProducts = 20;
constexpr int kSeed = 7;

qint64 numberOf(RawStore& store, const char* sql) {
    RawStatement statement(store, sql);
    statement.step();
    return statement.integer(0);
}

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

Workload::Code codeOf(const QString& code) {
    const QByteArray utf8 = code.toUtf8();
    return {code, utf8, utf8 + QString::fromUcs4(U"\U0010FFFF", 1).toUtf8(), utf8 + '%'};
}

} // namespace

Workload drawWorkload(RawStore& store) {
    std::mt19937 random(kSeed);
    const auto draw = [&](const char* sql, qint64 from = 1) {
        return std::uniform_int_distribution<qint64>(from, numberOf(store, sql))(random);
    };
    RawStatement customer(store,
                          "SELECT txt_Telefon, dbl_Telefon FROM tbl_Verwaltung_Kunden WHERE lng_ID >= ? "
                          "AND dbl_Telefon > 0 LIMIT 1");
    RawStatement product(store,
                         "SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Produkte WHERE lng_ID >= ? LIMIT 1");
    const qint64 firstOrder =
        numberOf(store, "SELECT min(lng_TrxNr) FROM tbl_Auftragswesen_Bestellungen_Master");
    Workload work;
    for (int i = 0; i < kDrawn; ++i) {
        customer.bind(1, draw("SELECT max(lng_ID) FROM tbl_Verwaltung_Kunden"));
        if (customer.step())
            work.callers.push_back({toQString(customer.text(0)), customer.real(1)});
        customer.reset();
        product.bind(1, draw("SELECT max(lng_ID) FROM tbl_Verwaltung_Produkte"));
        if (product.step())
            work.codes.push_back(codeOf(toQString(product.text(0))));
        product.reset();
        work.orders.push_back(
            draw("SELECT max(lng_TrxNr) - 1 FROM tbl_Auftragswesen_Bestellungen_Master", firstOrder));
    }
    const auto keyFrom = [&](const char* sql, qint64 from) {
        RawStatement article(store, sql);
        article.bind(1, from);
        article.step();
        return article.integer(0);
    };
    for (int i = 0; i < kWebProducts; ++i) {
        const qint64 produkt = keyFrom("SELECT lng_ID FROM tbl_Verwaltung_Produkte WHERE lng_ID >= ? LIMIT 1",
                                       draw("SELECT max(lng_ID) FROM tbl_Verwaltung_Produkte"));
        const qint64 extra =
            keyFrom("SELECT lng_ID FROM tbl_Verwaltung_ProdukteExtras WHERE lng_ID >= ? LIMIT 1",
                    draw("SELECT max(lng_ID) FROM tbl_Verwaltung_ProdukteExtras"));
        work.webOrder.lines.push_back({true, produkt, QString::number(1 + i % 3), {}});
        work.webOrder.lines.push_back({false, extra, QStringLiteral("1"), QStringLiteral("Extra")});
    }
    return work;
}

} // namespace bench
