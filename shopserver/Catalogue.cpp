#include "shopserver/Catalogue.h"
#include "store/Collation.h"
#include <algorithm>

namespace shop {

const Product* Catalogue::product(qint64 id) const {
    const auto found = std::ranges::find(products, id, &Product::id);
    return found == products.end() ? nullptr : &*found;
}

const DeliveryArea* Catalogue::area(qint64 postcode, const QString& town) const {
    const DeliveryArea* dearest = nullptr;
    for (const DeliveryArea& area : areas) {
        if (area.postcode != postcode)
            continue;
        if (store::compareTexts(area.town.trimmed(), town.trimmed()) == 0)
            return &area;
        if (!dearest || area.minimum > dearest->minimum)
            dearest = &area;
    }
    return dearest;
}

} // namespace shop
