#pragma once
#include "store/RowMark.h"
#include <QString>
#include <optional>

namespace platform {
class Dialogs;
class Navigation;
} // namespace platform

/// The categories under which products are filed.
namespace modProdukteKategorien {

struct ProduktGruppe {
    QString txt_ProduktGruppe;
    /// 1 to 25, chosen by the user: never renumbered, not unique.
    qint64 lng_Reihenfolge = 1;
    /// The web shop shows the category.
    bool flag_Internet = true;
};

/// Query of the list: lng_ID, name, position, web flag.
QString ProduktGruppenListe();

/// Nothing for a missing row.
std::optional<ProduktGruppe> LoadProduktGruppe(qint64 key);
/// What LoadProduktGruppe reads.
store::RowMark MarkProduktGruppe(qint64 key);
/// Adds a row when the key is not there.
void SaveProduktGruppe(const ProduktGruppe& gruppe, qint64 key, const store::RowMark& mark = {});
/// Key of another category of that name, -1 without one.
qint64 FindProduktGruppe(const QString& name, qint64 key);
/// False as long as a product is filed under the category, an inactive one included.
bool CanDeleteProduktGruppe(qint64 key);
void DeleteProduktGruppe(qint64 key, const store::RowMark& mark = {});
/// Gate of the product screen: without a category it says so, opens the category screen and gives false.
bool CheckProduktGruppenDefined(platform::Dialogs& dialogs, platform::Navigation& navigation);

} // namespace modProdukteKategorien
