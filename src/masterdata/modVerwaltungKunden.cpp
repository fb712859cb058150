#include "masterdata/modVerwaltungKunden.h"
#include "common/Convert.h"
#include "common/modFunctions.h"
#include "store/StoreGlobals.h"

using modFunctions::NullToEmpty;
using store::OpenRecordset;

namespace modVerwaltungKunden {
namespace {

QString numberCondition(double telefon) {
    const QString number = common::numberToText(telefon);
    return QStringLiteral(" FROM tbl_Verwaltung_Kunden WHERE dbl_Telefon = ") + number +
           QStringLiteral(" OR dbl_Natel = ") + number;
}

const QString kLineEnd = QStringLiteral("\r\n");

QString line(const QString& text) {
    return text.isEmpty() ? QString() : text + kLineEnd;
}

} // namespace

qint64 GetTotalKunden() {
    OpenRecordset rows(RsMain, QStringLiteral("SELECT Count(*) AS TotalKunden FROM tbl_Verwaltung_Kunden"),
                       ConnMain);
    return rows->Fields(u"TotalKunden").toLong();
}

bool KundeExistsByTelefon(double telefon) {
    OpenRecordset rows(RsMain, QStringLiteral("SELECT *") + numberCondition(telefon), ConnMain);
    return !rows->Eof();
}

qint64 FindKundeByTelefon(double telefon) {
    OpenRecordset rows(RsMain, QStringLiteral("SELECT lng_ID") + numberCondition(telefon), ConnMain);
    return rows->Eof() ? -1 : rows->Fields(u"lng_ID").toLong();
}

bool KundeExists(qint64 kundenId) {
    OpenRecordset rows(RsMain,
                       QStringLiteral("SELECT * FROM tbl_Verwaltung_Kunden WHERE lng_ID = ") +
                           QString::number(kundenId),
                       ConnMain);
    return !rows->Eof();
}

QString GetKundeTelefon(qint64 kundenId) {
    OpenRecordset rows(
        RsMain,
        QStringLiteral("SELECT txt_Telefon, txt_Natel FROM tbl_Verwaltung_Kunden WHERE lng_ID = ") +
            QString::number(kundenId),
        ConnMain);
    if (rows->Eof())
        return {};
    const QString telefon = NullToEmpty(rows->Fields(u"txt_Telefon").Value());
    return telefon.isEmpty() ? NullToEmpty(rows->Fields(u"txt_Natel").Value()) : telefon;
}

QString GetKundeAdresse(qint64 kundenId) {
    OpenRecordset rows(RsMain,
                       QStringLiteral("SELECT * FROM tbl_Verwaltung_Kunden WHERE lng_ID = ") +
                           QString::number(kundenId),
                       ConnMain);
    if (rows->Eof())
        return {};
    const auto text = [&](const char16_t* column) { return NullToEmpty(rows->Fields(column).Value()); };

    QString address = line(text(u"txt_Firma"));
    const QString name = text(u"txt_Name");
    const QString vorname = text(u"txt_Vorname");
    if (!name.isEmpty() || !vorname.isEmpty())
        address += line(name + QLatin1Char(' ') + vorname);
    address += text(u"txt_Strasse") + kLineEnd;
    address += line(text(u"txt_Etage"));
    address += line(text(u"txt_PLZ") + QLatin1Char(' ') + text(u"txt_Ort"));
    const QString telefon = text(u"txt_Telefon");
    const QString number = telefon.isEmpty() ? text(u"txt_Natel") : telefon;
    if (!number.isEmpty())
        address += line(QStringLiteral("Tel: ") + number);
    if (rows->Fields(u"flag_Zusatzinfo").Value().isTrue())
        address += text(u"txt_Zusatzinfo");
    return address;
}

} // namespace modVerwaltungKunden
