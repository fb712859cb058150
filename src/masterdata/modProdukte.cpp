#include "masterdata/modProdukte.h"
#include "store/StoreGlobals.h"

namespace modProdukte {
namespace {

QString productText(const QString& column, qint64 produktId) {
    store::OpenRecordset rows(RsMain,
                              QStringLiteral("SELECT ") + column +
                                  QStringLiteral(" FROM tbl_Verwaltung_Produkte WHERE lng_ID = ") +
                                  QString::number(produktId),
                              ConnMain);
    return rows->Eof() ? QString() : rows->Fields(column).text();
}

} // namespace

QString GetProduktKurzzeichen(qint64 produktId) {
    return productText(QStringLiteral("txt_Kurzzeichen"), produktId);
}

QString GetProduktName(qint64 produktId) {
    return productText(QStringLiteral("txt_Produkt"), produktId);
}

} // namespace modProdukte
