#include "masterdata/modVerwaltungKuriere.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"

using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modVerwaltungKuriere {
namespace {

QString rowQuery(qint64 key) {
    return u"SELECT * FROM tbl_Verwaltung_Kuriere WHERE lng_ID = "_s + QString::number(key);
}

std::vector<KurierEintrag> entriesOf(const QString& sql) {
    std::vector<KurierEintrag> entries;
    OpenRecordset rows(RsMain, sql, ConnMain);
    for (; !rows->Eof(); rows->MoveNext())
        entries.push_back({rows->Fields(u"lng_ID").toLong(), rows->Fields(u"txt_Kurzzeichen").text()});
    return entries;
}

} // namespace

QString KuriereListe() {
    return u"SELECT lng_ID, txt_Kurzzeichen, txt_Bezeichnung, lng_Reihenfolge FROM tbl_Verwaltung_Kuriere "
           u"ORDER BY lng_Reihenfolge"_s;
}

std::optional<Kurier> LoadKurier(qint64 key) {
    OpenRecordset row(RsMain, rowQuery(key), ConnMain);
    if (row->Eof())
        return {};
    return Kurier{row->Fields(u"txt_Kurzzeichen").text(), row->Fields(u"txt_Bezeichnung").text(),
                  row->Fields(u"lng_Reihenfolge").toLong()};
}

void SaveKurier(const Kurier& kurier, qint64 key) {
    store::WriteRecordset row(RsMain, rowQuery(key), ConnMain);
    if (row->Eof())
        row->AddNew();
    row->Fields(u"txt_Kurzzeichen") = kurier.txt_Kurzzeichen;
    row->Fields(u"txt_Bezeichnung") = kurier.txt_Bezeichnung;
    row->Fields(u"lng_Reihenfolge") = kurier.lng_Reihenfolge;
    row->Update();
}

qint64 FindKurier(const QString& kurzzeichen, qint64 key) {
    return store::findDuplicate(u"tbl_Verwaltung_Kuriere"_s, u"txt_Kurzzeichen"_s, kurzzeichen, key);
}

bool CanDeleteKurier(qint64 key) {
    const QString id = QString::number(key);
    return !store::rowExists(u"SELECT * FROM tbl_Auftragswesen_Bestellungen_Master WHERE lng_KurierID = "_s +
                             id) &&
           !store::rowExists(
               u"SELECT * FROM tbl_Auftragswesen_Vorbestellungen_Master WHERE lng_KurierID = "_s + id);
}

void DeleteKurier(qint64 key) {
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Kuriere WHERE lng_ID = "_s + QString::number(key));
}

QString CheckKurierKurzzeichen(const QString& kurzzeichen) {
    OpenRecordset rows(
        RsMain,
        QStringLiteral("SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = ") +
            store::sqlText(kurzzeichen) + QStringLiteral(" ;"),
        ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Kurzzeichen").text();
}

qint64 FindKurierByKurzzeichen(const QString& kurzzeichen) {
    OpenRecordset rows(RsMain,
                       QStringLiteral("SELECT lng_ID FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = ") +
                           store::sqlText(kurzzeichen) + QStringLiteral(";"),
                       ConnMain);
    return rows->Eof() ? 0 : rows->Fields(u"lng_ID").toLong();
}

QString GetKurierKurzzeichen(qint64 kurierId) {
    OpenRecordset rows(RsMain,
                       QStringLiteral("SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere WHERE lng_ID = ") +
                           QString::number(kurierId),
                       ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Kurzzeichen").text();
}

QString GetFirstKurier() {
    OpenRecordset rows(
        RsMain,
        QStringLiteral("SELECT TOP 1 txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere ORDER BY lng_ID ASC"),
        ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Kurzzeichen").text();
}

std::vector<KurierEintrag> FillKurierMenu() {
    return entriesOf(
        u"SELECT lng_ID, txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere ORDER BY lng_Reihenfolge ASC"_s);
}

std::vector<KurierEintrag> FillKurierCombo() {
    return entriesOf(u"SELECT lng_ID, txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere "_s);
}

} // namespace modVerwaltungKuriere
