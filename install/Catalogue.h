#pragma once
#include <QByteArray>
#include <QString>
#include <array>
#include <vector>

struct sqlite3;

namespace install {

inline constexpr int kPriceGroups = 10;

/// What can stand on an order line; `id` is its key in the store.
struct Item {
    qint64 id = 0;
    QString name;
    QByteArray portion;
    int unit = 1;
    /// Including VAT, by price group.
    std::array<double, kPriceGroups> prices{};
    int vatCode = 0;
};

struct Product : Item {
    /// Position in Catalogue::categories.
    int category = 0;
    QString code;
    QString description;
    /// Positions in Catalogue::extras.
    std::vector<int> extras;
};

struct Category {
    QString name;
    bool internet = true;
    /// Positions in Catalogue::products.
    std::vector<int> products;
};

struct Catalogue {
    std::vector<Category> categories;
    std::vector<Product> products;
    std::vector<Item> extras;

    void addCategory(const QString& name, bool internet);
    void addProduct(Product product, double standardPrice);
    void addExtra(Item extra, double standardPrice);
};

/// 8 categories, 80 products and 20 extras of install/demo/.
Catalogue demoCatalogue();
/// 20 categories of 100 products with codes "A00" to "T99", 100 extras.
Catalogue largeCatalogue();

void writeCatalogue(sqlite3* handle, const Catalogue& catalogue);

} // namespace install
