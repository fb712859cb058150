#pragma once
#include <QObject>
#include <QString>
#include <QtGlobal>
#include <variant>
#include <vector>

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

/// What a setting is, and so its text on the screen.
enum class SettingKind {
    Text,
    Word,      ///< an entry of a list
    Printer,   ///< an entry of the printers at hand; one that is gone is not kept
    Flag,      ///< "1" or "0"
    Position,  ///< the place of an entry in its list, from 0
    Number,    ///< a number as a list gives it
    TwoDigits, ///< the same, "00"
    Typed,     ///< a whole number
    Rate,      ///< percent, one decimal, "0.0"
    Hour       ///< the hour of the day, stored as a fraction of it
};

/// A setting: its column, the control that shows it, and the global that holds it. Loading, storing and the
/// screen live on this table.
struct Setting {
    const char16_t* column;
    const char16_t* control;
    SettingKind kind;
    std::variant<QString*, qint16*, qint32*, double*> value;

    QString text() const;
    /// Whether the text is one for this setting. A number has to fit its column, a rate lies between 0 and
    /// 100.
    bool accepts(const QString& text) const;
    /// Takes over what it accepts.
    void take(const QString& text) const;
};

/// In the order in which the screen takes them over.
const std::vector<Setting>& settings();

/// End of the working day as the hour of the day, 0 to 23.
int FiktiverTagStunde();

/// Tells those who show settings that they were changed elsewhere.
class SettingsNews : public QObject {
    Q_OBJECT
  Q_SIGNALS:
    void changed();
};

SettingsNews& settingsNews();

/// Reads the row into the globals; an empty table leaves them all at zero. Brings the stored program version
/// up to this program's when the program is the newer one.
void LoadSystemSettings();

} // namespace store
