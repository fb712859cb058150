#include "install/Catalogue.h"
#include "common/modFunctions.h"
#include "install/Bulk.h"
#include "install/Random.h"
#include "install/Resources.h"

namespace install {
namespace {

using namespace Qt::StringLiterals;

std::array<double, kPriceGroups> pricesFrom(double standard) {
    static const QVector<QStringList> groups = resourceTable(u"demo/pricegroups.csv"_s);
    std::array<double, kPriceGroups> prices{};
    for (int group = 0; group < kPriceGroups; ++group) {
        double price = standard * (1 + groups[group][1].toInt() * 0.01);
        prices[size_t(group)] = modFunctions::RoundRappen(price).toDouble();
    }
    return prices;
}

/// Extras of the sets that `letters` names; `sets` holds each extra's letters.
std::vector<int> extrasOf(const QString& letters, const QVector<QStringList>& sets) {
    std::vector<int> extras;
    for (int i = 0; i < sets.size(); ++i) {
        if (!letters.isEmpty() && sets[i][5].contains(letters))
            extras.push_back(i);
    }
    return extras;
}

void writePrices(Inserter& prices, const Item& item) {
    for (int group = 0; group < kPriceGroups; ++group)
        prices.add(item.id, group + 1, item.prices[size_t(group)], item.vatCode);
}

void writeProducts(sqlite3* handle, const Catalogue& catalogue) {
    Inserter products(
        handle, "tbl_Verwaltung_Produkte",
        "lng_ID, lng_ProduktGruppe, txt_Kurzzeichen, txt_Produkt, txt_Beschreibung, txt_Stückelung, "
        "lng_Einheit, flag_InternetPreis, lng_Reihenfolge, flag_Updated");
    Inserter prices(handle, "tbl_Verwaltung_Produkte_Preise",
                    "lng_ProduktID, lng_Gruppe, dbl_Preis, lng_MWSt");
    Inserter relations(handle, "tbl_Verwaltung_Produkte_Extras", "lng_ProduktID, lng_ProduktExtraID");
    std::vector<int> positions(catalogue.categories.size());
    for (const Product& product : catalogue.products) {
        products.add(product.id, product.category + 1, product.code, product.name, product.description,
                     product.portion, product.unit, -1, ++positions[size_t(product.category)], -1);
        writePrices(prices, product);
        for (const int extra : product.extras)
            relations.add(product.id, catalogue.extras[size_t(extra)].id);
    }
}

void writeExtras(sqlite3* handle, const Catalogue& catalogue) {
    Inserter extras(
        handle, "tbl_Verwaltung_ProdukteExtras",
        "lng_ID, txt_Extra, txt_Stückelung, lng_Einheit, lng_Reihenfolge, flag_Internet, flag_Updated");
    Inserter prices(handle, "tbl_Verwaltung_ProdukteExtras_Preise",
                    "lng_ExtraID, lng_Gruppe, dbl_Preis, lng_MWSt");
    for (const Item& extra : catalogue.extras) {
        extras.add(extra.id, extra.name, extra.portion, extra.unit, extra.id, -1, -1);
        writePrices(prices, extra);
    }
}

} // namespace

void Catalogue::addCategory(const QString& name, bool internet) {
    categories.push_back({name, internet, {}});
}

void Catalogue::addProduct(Product product, double standardPrice) {
    categories[size_t(product.category)].products.push_back(int(products.size()));
    product.id = qint64(products.size()) + 1;
    product.prices = pricesFrom(standardPrice);
    products.push_back(std::move(product));
}

void Catalogue::addExtra(Item extra, double standardPrice) {
    extra.id = qint64(extras.size()) + 1;
    extra.prices = pricesFrom(standardPrice);
    extras.push_back(std::move(extra));
}

Catalogue demoCatalogue() {
    Catalogue catalogue;
    const QVector<QStringList> extras = resourceTable(u"demo/extras.csv"_s);
    for (const QStringList& row : resourceTable(u"demo/categories.csv"_s))
        catalogue.addCategory(row[0], row[1] == u"1");
    for (const QStringList& row : extras)
        catalogue.addExtra({0, row[0], row[1].toUtf8(), row[2].toInt(), {}, row[4].toInt()},
                           row[3].toDouble());
    for (const QStringList& row : resourceTable(u"demo/products.csv"_s)) {
        Product product{{0, row[2], row[4].toUtf8(), row[5].toInt(), {}, row[7].toInt()},
                        row[0].toInt() - 1,
                        row[1],
                        row[3],
                        extrasOf(row[8], extras)};
        catalogue.addProduct(std::move(product), row[6].toDouble());
    }
    return catalogue;
}

Catalogue largeCatalogue() {
    static const char16_t* const kinds[] = {u"Pizza", u"Pasta",   u"Burger", u"Curry",  u"Salat",
                                            u"Suppe", u"Wok",     u"Sushi",  u"Kebab",  u"Rösti",
                                            u"Wrap",  u"Fisch",   u"Grill",  u"Gemüse", u"Snack",
                                            u"Menü",  u"Dessert", u"Gebäck", u"Saft",   u"Bier"};
    static const char16_t* const places[] = {u"Toskana", u"Sizilien", u"Tessin", u"Wallis",  u"Bangkok",
                                             u"Athen",   u"Istanbul", u"Jura",   u"Engadin", u"Bombay"};
    static const char16_t* const styles[] = {u"mild",  u"scharf", u"rustikal", u"fein",       u"klassisch",
                                             u"gross", u"klein",  u"mit Ei",   u"mit Pilzen", u"mit Käse"};
    Random random(2000);
    Catalogue catalogue;
    for (const char16_t* kind : kinds)
        catalogue.addCategory(QString::fromUtf16(kind), true);
    for (int i = 0; i < 100; ++i)
        catalogue.addExtra({0, u"Zutat %1"_s.arg(i + 1, 2, 10, QChar(u'0')), "Stk.", 1, {}, 1},
                           random.below(11) * 0.5);
    for (int i = 0; i < 2000; ++i) {
        const int category = i / 100;
        const QString name = QString::fromUtf16(kinds[category]) + u' ' +
                             QString::fromUtf16(places[i / 10 % 10]) + u' ' +
                             QString::fromUtf16(styles[i % 10]);
        Product product{
            {0, name, "Stk.", 1, {}, category == 19 ? 0 : 1}, category, {}, name + u", frisch"_s, {}};
        product.code = QChar(u'A' + category) + u"%1"_s.arg(i % 100, 2, 10, QChar(u'0'));
        for (int extra = 0; extra < 6; ++extra)
            product.extras.push_back((i * 7 + extra * 13) % 100);
        catalogue.addProduct(std::move(product), 8 + random.below(50) * 0.5);
    }
    return catalogue;
}

void writeCatalogue(sqlite3* handle, const Catalogue& catalogue) {
    Inserter categories(handle, "tbl_Verwaltung_ProdukteKategorien",
                        "txt_ProduktGruppe, lng_Reihenfolge, flag_Internet, lng_Updated");
    for (size_t i = 0; i < catalogue.categories.size(); ++i)
        categories.add(catalogue.categories[i].name, int(i) + 1, catalogue.categories[i].internet ? -1 : 0,
                       1);
    writeProducts(handle, catalogue);
    writeExtras(handle, catalogue);
}

} // namespace install
