#include "masterdata/modProdukteExtras.h"
#include "store/StoreGlobals.h"

namespace modProdukteExtras {

QString GetExtraName(qint64 extraId) {
    store::OpenRecordset rows(
        RsMain,
        QStringLiteral("SELECT txt_Extra FROM tbl_Verwaltung_ProdukteExtras WHERE lng_ID = ") +
            QString::number(extraId),
        ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Extra").text();
}

} // namespace modProdukteExtras
