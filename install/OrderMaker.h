#pragma once
#include "install/OrderBook.h"
#include "install/Random.h"

namespace install {

/// Thinks up what people order: households with their dishes, extras, salads and drinks.
class OrderMaker {
  public:
    OrderMaker(const OrderBook& book, const Catalogue& catalogue, Random& random) :
        m_book(book), m_catalogue(catalogue), m_random(random) {}

    /// One dish a head with what goes along; at most 8 lines.
    void addMeal(Order& order);
    /// Exactly `count` lines, products and extras of the whole catalogue.
    void addLines(Order& order, int count);

  private:
    void addDish(Order& order);
    /// Gives the product added, or null when the order is full.
    const Product* addFrom(Order& order, int category);
    const Product* addProduct(Order& order, const Product& product, int quantity);
    void addExtra(Order& order, const Product& product);

    const OrderBook& m_book;
    const Catalogue& m_catalogue;
    Random& m_random;
};

} // namespace install
