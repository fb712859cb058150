#include "shell/modEinstellungenSystem.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <algorithm>

using namespace Qt::StringLiterals;
using store::WriteRecordset;

namespace modEinstellungenSystem {
namespace {

void put(QStringView column, qint64 value) {
    RsMain.Fields(column) = value;
}

void putPrinters() {
    RsMain.Fields(u"txt_Printer1_Name") = SysPrinter1Name;
    RsMain.Fields(u"txt_Printer2_Name") = SysPrinter2Name;
    put(u"lng_Printer1_Copies", SysPrinter1Copies);
    put(u"lng_Printer2_Copies", SysPrinter2Copies);
    put(u"lng_Printer1_Status", SysPrinter1Status);
    put(u"lng_Printer2_Status", SysPrinter2Status);
}

void putSlip() {
    put(u"lng_VorlageBestellung", SysVorlageBestellung);
    RsMain.Fields(u"txt_Werbetext") = SysWerbetext;
    RsMain.Fields(u"dbl_MWStSatz1") = SysMWStSatz1;
    RsMain.Fields(u"dbl_MWStSatz3") = SysMWStSatz3;
    RsMain.Fields(u"txt_VATNummer") = SysVATNummer;
    put(u"lng_NoVATStatus", SysNoVATStatus);
}

void putOrders() {
    RsMain.Fields(u"lng_FiktiverTag") = SysFiktiverTag;
    put(u"lng_StandardLieferzeit", SysStandardLieferzeit);
    put(u"lng_InitTrxNr", SysInitTrxNr);
    put(u"lng_VorbestellungAutomatischStatus", SysVorbestellungAutomatischStatus);
    put(u"lng_VorbestellungAutomatischZeit", SysVorbestellungAutomatischZeit);
    put(u"lng_VorbestellungBuchungStatus", SysVorbestellungBuchungStatus);
    put(u"lng_VorbestellungBuchungZeit", SysVorbestellungBuchungZeit);
    put(u"lng_EditierungBestellungen", SysEditierungBestellungen);
}

} // namespace

void SaveSystemSettings() {
    const WriteRecordset row(RsMain, u"SELECT * FROM tbl_Einstellungen_System;"_s, ConnMain);
    if (row->Eof())
        return;
    putPrinters();
    putSlip();
    putOrders();
    put(u"lng_AnmeldungBenutzer", SysAnmeldungBenutzer);
    RsMain.Fields(u"txt_Currency") = SysCurrency;
    RsMain.Fields(u"txt_Sprache") = SysSprache;
    row->Update();
}

int FiktiverTagStunde() {
    // Cut and not rounded, but a stored 0.958333 is 23 and not 22.
    constexpr double kRoundingOfProduct = 1e-3;
    return std::clamp(int(SysFiktiverTag * 24.0 + kRoundingOfProduct), 0, 23);
}

} // namespace modEinstellungenSystem
