#include "install/OrderMaker.h"

namespace install {
namespace {

constexpr size_t kMostLines = 8;

/// Positions of the demo firm's categories.
enum DemoCategory { kPizza, kPasta, kBurger, kAsia, kSalads, kSnacks, kDesserts, kDrinks };

int mainCategory(Random& random) {
    const int share = random.below(100);
    return share < 50 ? kPizza : share < 68 ? kPasta : share < 82 ? kBurger : kAsia;
}

} // namespace

void OrderMaker::addMeal(Order& order) {
    const int share = m_random.below(100);
    const int heads = share < 35 ? 1 : share < 72 ? 2 : share < 88 ? 3 : 4;
    for (int head = 0; head < heads; ++head)
        addDish(order);
    if (m_random.percent(30))
        addFrom(order, m_random.percent(50) ? kSalads : kSnacks);
    if (m_random.percent(18))
        addFrom(order, kDesserts);
    if (m_random.percent(45))
        addFrom(order, kDrinks);
}

void OrderMaker::addDish(Order& order) {
    const Product* dish = addFrom(order, mainCategory(m_random));
    for (int chance = 25; dish && m_random.percent(chance); chance /= 3)
        addExtra(order, *dish);
}

const Product* OrderMaker::addFrom(Order& order, int category) {
    const std::vector<int>& offered = m_catalogue.categories[size_t(category)].products;
    const Product& product =
        m_catalogue.products[size_t(offered[size_t(m_random.favouring(int(offered.size())))])];
    return addProduct(order, product, m_random.percent(15) ? 2 : 1);
}

const Product* OrderMaker::addProduct(Order& order, const Product& product, int quantity) {
    if (order.lines.size() >= kMostLines)
        return nullptr;
    order.lines.push_back(m_book.productLine(product, order.priceGroup, quantity * product.unit));
    return &product;
}

void OrderMaker::addExtra(Order& order, const Product& product) {
    if (product.extras.empty() || order.lines.size() >= kMostLines)
        return;
    const int position = product.extras[size_t(m_random.below(int(product.extras.size())))];
    const double quantity = order.lines.back().quantity;
    order.lines.push_back(
        m_book.extraLine(product, m_catalogue.extras[size_t(position)], order.priceGroup, quantity));
}

void OrderMaker::addLines(Order& order, int count) {
    const Product* last = nullptr;
    for (int i = 0; i < count; ++i) {
        if (last && !last->extras.empty() && m_random.percent(20)) {
            const int position = last->extras[size_t(m_random.below(int(last->extras.size())))];
            order.lines.push_back(
                m_book.extraLine(*last, m_catalogue.extras[size_t(position)], order.priceGroup, 1));
        } else {
            last = &m_catalogue.products[size_t(m_random.favouring(int(m_catalogue.products.size())))];
            order.lines.push_back(m_book.productLine(*last, order.priceGroup, m_random.percent(15) ? 2 : 1));
        }
    }
}

} // namespace install
