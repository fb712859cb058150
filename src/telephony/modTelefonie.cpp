#include "telephony/modTelefonie.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "masterdata/modVerwaltungKunden.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include "telephony/modVerwaltungTelefonbuch.h"

namespace modTelefonie {

namespace {

void addCall(const QString& anrufNr) {
    const double now = common::clock::now();
    store::WriteRecordset rows(RsMain, QStringLiteral("tbl_Verwaltung_AnruferListe"), ConnMain);
    rows->AddNew();
    rows->Fields(u"txt_Telefon") = anrufNr;
    rows->Fields(u"txt_Zeit") = common::formatDate(now, u"HH:MM:SS");
    rows->Fields(u"txt_Datum") = common::formatDate(now, u"DD/MM/YYYY");
    // Cut to eight decimals, since the caller list finds the row again by this number as text.
    rows->Fields(u"lng_Datum") = *common::parseNumber(common::formatNumber(now, u"0.00000000"));
    rows->Fields(u"flag_Kunde") = 0;
    rows->Update();
}

QString takingOf(const QString& anrufNr) {
    return QStringLiteral("Annahme ") + anrufNr;
}

} // namespace

void RecordCall(const QString& anrufNr, int kept) {
    // The lines of the stations do not ring in the same instant.
    constexpr int kSameCall = 20;
    if (!store::claim(QStringLiteral("Anruf ") + anrufNr, kSameCall))
        return;
    store::transact(ConnMain, [&] {
        addCall(anrufNr);
        if (kept > 0)
            ConnMain.Execute(QStringLiteral("DELETE FROM tbl_Verwaltung_AnruferListe WHERE lng_ID <= (SELECT "
                                            "Max(lng_ID) FROM tbl_Verwaltung_AnruferListe) - ") +
                             QString::number(kept));
        store::tellNews(store::Topic::Calls);
    });
}

bool MarkCallTaken(const QString& anrufNr) {
    // Whoever comes first, of all stations, finds it.
    return ConnMain.Execute(
               QStringLiteral("UPDATE tbl_Verwaltung_AnruferListe SET flag_Kunde = 1 WHERE txt_Telefon = ") +
               store::sqlText(anrufNr) + QStringLiteral(" AND flag_Kunde = False")) > 0;
}

void TellCallTaken(const QString& anrufNr) {
    constexpr int kTaken = 30;
    store::claim(takingOf(anrufNr), kTaken);
    store::tellNews(store::Topic::Calls);
}

void CallRingsAgain(const QString& anrufNr) {
    store::release(takingOf(anrufNr));
}

QString CallTakenBy(const QString& anrufNr) {
    return store::holderOf(takingOf(anrufNr));
}

QString CallerName(const QString& anrufNr) {
    const auto value = common::parseNumber(anrufNr);
    if (!value)
        return {};
    const qint64 kunde = modVerwaltungKunden::FindKundeByTelefon(*value);
    const QString name = kunde == -1 ? QString() : modVerwaltungKunden::GetKundeName(kunde);
    return name.isEmpty() ? modVerwaltungTelefonbuch::FindName(anrufNr) : name;
}

} // namespace modTelefonie
