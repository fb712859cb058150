#pragma once
#include <QStringList>
#include <array>
#include <optional>

/// What products and extras share: ten price groups, the VAT codes, the words of the packaging.
namespace masterdata {

constexpr int kPriceGroups = 10;

/// A price group has a VAT code of its own, so that one product may be taxed differently by group.
struct GruppenPreis {
    double dbl_Preis = 0;
    int lng_MWSt = 0;
};

/// Price group 1 first; it is the web shop's.
using GruppenPreise = std::array<GruppenPreis, kPriceGroups>;

/// A table of price rows and its column that holds the key of the row they belong to.
struct PriceTable {
    QString name;
    QString keyColumn;
};

/// A group without a row has the price 0. Nothing when there is no row at all.
std::optional<GruppenPreise> loadPrices(const PriceTable& table, qint64 key);
/// Overwrites the rows in the order of their groups and adds those that are missing.
void savePrices(const PriceTable& table, qint64 key, const GruppenPreise& prices);
void deletePrices(const PriceTable& table, qint64 key);

/// The three VAT codes with their present rates, such as "0 (8.10%)"; the index is the code. Code 2 has a
/// rate that no setting fills: it is the tax-free code.
QStringList mwstTexts();

QStringList packagingWords();

} // namespace masterdata
