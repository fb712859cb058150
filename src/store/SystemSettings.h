#pragma once
#include <QString>
#include <QtGlobal>

/// The settings row in memory, one global a column (tbl_Einstellungen_System). All code reads these and not
/// the table; LoadSystemSettings fills them.
extern qint32 SysEditierungBestellungen;
extern qint32 SysAnmeldungBenutzer;
extern QString SysPrinter1Name, SysPrinter2Name;
extern qint32 SysPrinter1Copies, SysPrinter2Copies;
extern qint16 SysPrinter1Status, SysPrinter2Status;
/// Number of the order slip's template, 0 to 3.
extern qint16 SysVorlageBestellung;
extern QString SysWerbetext;
/// VAT rates in percent, one decimal. The second exists in memory only and stays 0: it is the tax-free rate.
extern double SysMWStSatz1, SysMWStSatz2, SysMWStSatz3;
extern QString SysVATNummer;
extern qint16 SysNoVATStatus;
/// End of the working day as a fraction of a day.
extern double SysFiktiverTag;
/// Minutes.
extern qint16 SysStandardLieferzeit;
extern qint32 SysInitTrxNr;
extern qint16 SysVorbestellungAutomatischStatus, SysVorbestellungAutomatischZeit;
/// Status 1 asks; the lead time is in hours.
extern qint16 SysVorbestellungBuchungStatus, SysVorbestellungBuchungZeit;
extern QString SysCurrency;
extern QString SysSprache;

/// Rights of the user logged in; 0 means no.
extern qint16 UserAdministrator, UserEinstellungen, UserKundenStatistik, UserUmsatzStatistik,
    UserBuchungsjournal, UserOnlineShop, UserDatensicherung;

namespace store {

/// Reads the row into the globals; an empty table leaves them all at zero. Brings the stored program version
/// up to this program's when the program is the newer one.
void LoadSystemSettings();

} // namespace store
