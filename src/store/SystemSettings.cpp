#include "store/SystemSettings.h"
#include "common/Convert.h"
#include "common/modFunctions.h"
#include "store/StoreGlobals.h"

qint32 SysEditierungBestellungen, SysAnmeldungBenutzer;
QString SysPrinter1Name, SysPrinter2Name;
qint32 SysPrinter1Copies, SysPrinter2Copies;
qint16 SysPrinter1Status, SysPrinter2Status, SysVorlageBestellung;
QString SysWerbetext;
double SysMWStSatz1, SysMWStSatz2, SysMWStSatz3;
QString SysVATNummer;
qint16 SysNoVATStatus;
double SysFiktiverTag;
qint16 SysStandardLieferzeit;
qint32 SysInitTrxNr;
qint16 SysVorbestellungAutomatischStatus, SysVorbestellungAutomatischZeit;
qint16 SysVorbestellungBuchungStatus, SysVorbestellungBuchungZeit;
QString SysCurrency, SysSprache;
qint16 UserAdministrator, UserEinstellungen, UserKundenStatistik, UserUmsatzStatistik, UserBuchungsjournal,
    UserOnlineShop, UserDatensicherung;

namespace store {

using namespace Qt::StringLiterals;

namespace {

struct Version {
    qint64 major = 0;
    qint64 minor = 0;
    qint64 revision = 0;

    double asNumber() const { return double(major) * 1000 + double(minor) + double(revision) * 0.0001; }
};

constexpr Version kProgram{TAVOLINO_VERSION_MAJOR, TAVOLINO_VERSION_MINOR, TAVOLINO_VERSION_REVISION};

template <typename Number> void read(Number& target, QStringView column) {
    target = Number(RsMain.Fields(column).toLong());
}

/// Only one decimal of a rate survives, the firm's practice.
void readRate(double& target, QStringView column) {
    target = common::formatNumber(RsMain.Fields(column).toDouble(), u"0.0").toDouble();
}

void readText(QString& target, QStringView column) {
    target = modFunctions::NullToEmpty(RsMain.Fields(column).Value());
}

Version readRow() {
    read(SysEditierungBestellungen, u"lng_EditierungBestellungen");
    read(SysAnmeldungBenutzer, u"lng_AnmeldungBenutzer");
    readText(SysPrinter1Name, u"txt_Printer1_Name");
    readText(SysPrinter2Name, u"txt_Printer2_Name");
    read(SysPrinter1Copies, u"lng_Printer1_Copies");
    read(SysPrinter2Copies, u"lng_Printer2_Copies");
    read(SysPrinter1Status, u"lng_Printer1_Status");
    read(SysPrinter2Status, u"lng_Printer2_Status");
    read(SysVorlageBestellung, u"lng_VorlageBestellung");
    readText(SysWerbetext, u"txt_Werbetext");
    readRate(SysMWStSatz1, u"dbl_MWStSatz1");
    readRate(SysMWStSatz3, u"dbl_MWStSatz3");
    readText(SysVATNummer, u"txt_VATNummer");
    read(SysNoVATStatus, u"lng_NoVATStatus");
    SysFiktiverTag = RsMain.Fields(u"lng_FiktiverTag").toDouble();
    read(SysStandardLieferzeit, u"lng_StandardLieferzeit");
    read(SysInitTrxNr, u"lng_InitTrxNr");
    read(SysVorbestellungAutomatischStatus, u"lng_VorbestellungAutomatischStatus");
    read(SysVorbestellungAutomatischZeit, u"lng_VorbestellungAutomatischZeit");
    read(SysVorbestellungBuchungStatus, u"lng_VorbestellungBuchungStatus");
    read(SysVorbestellungBuchungZeit, u"lng_VorbestellungBuchungZeit");
    readText(SysCurrency, u"txt_Currency");
    readText(SysSprache, u"txt_Sprache");
    return {RsMain.Fields(u"lng_SoftwareVersion_Major").toLong(),
            RsMain.Fields(u"lng_SoftwareVersion_Minor").toLong(),
            RsMain.Fields(u"lng_SoftwareVersion_Revision").toLong()};
}

bool IsVersionCurrent(const Version& stored) {
    return stored.asNumber() >= kProgram.asNumber();
}

void SaveSoftwareVersion() {
    ConnMain.Execute(
        u"UPDATE tbl_Einstellungen_System SET lng_SoftwareVersion_Major = %1, lng_SoftwareVersion_Minor = "
        u"%2, lng_SoftwareVersion_Revision = %3"_s.arg(kProgram.major)
            .arg(kProgram.minor)
            .arg(kProgram.revision));
}

} // namespace

void LoadSystemSettings() {
    Version stored = kProgram;
    {
        const OpenRecordset rows(RsMain, u"SELECT * FROM tbl_Einstellungen_System;"_s, ConnMain);
        if (!rows->Eof())
            stored = readRow();
    }
    if (!IsVersionCurrent(stored))
        SaveSoftwareVersion();
}

} // namespace store
