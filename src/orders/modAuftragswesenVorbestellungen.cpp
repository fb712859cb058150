#include "orders/modAuftragswesenVorbestellungen.h"
#include "store/StoreGlobals.h"

namespace modAuftragswesenVorbestellungen {

void UpdateVorbestellungCount(platform::Navigation& navigation) {
    qint64 count = 0;
    {
        store::OpenRecordset rows(
            RsMain,
            QStringLiteral(
                "SELECT Count(*) As TotalVorbestellungen FROM tbl_Auftragswesen_Vorbestellungen_Master ;"),
            ConnMain);
        count = rows->Fields(u"TotalVorbestellungen").toLong();
    }
    navigation.showVorbestellungCount(count);
}

} // namespace modAuftragswesenVorbestellungen
