#pragma once
#include "common/Value.h"
#include "platform/Progress.h"
#include "store/Recordset.h"
#include "store/RowMark.h"
#include <QString>
#include <optional>

/// Customers: lookups for the whole system, and the rows of their screen.
namespace modVerwaltungKunden {

/// The columns that the screen keeps.
struct Kunde {
    QString txt_Firma, txt_Name, txt_Vorname, txt_Strasse, txt_Etage, txt_PLZ, txt_Ort;
    QString txt_Telefon, txt_Natel, txt_EMail, txt_Zusatzinfo;
    /// 0 or 1.
    qint64 flag_Zusatzinfo = 0, flag_ClientStatus = 0, flag_Newsletter = 0;
    /// Day of the last save; set by SaveKunde itself.
    common::Value date_Erfasst{};
};

/// Queries of the list; columns lng_ID, txt_Firma, txt_Name, txt_Vorname, txt_Strasse, txt_Etage, txt_PLZ,
/// txt_Ort, txt_Telefon, txt_Natel, txt_EMail, date_Erfasst, flag_ClientStatus, flag_Newsletter,
/// txt_Zusatzinfo.
QString AlleKunden();
QString EinKunde(qint64 key);
/// The filled fields as conditions joined by AND, "" when none is filled. Texts may hold the store's
/// wildcards
/// "%" and "_", the e-mail address is compared as it stands, numbers by their numeric twins; a number field
/// that holds no number does not count. Floor, note and flags take no part.
QString SucheKunden(const Kunde& mask);

/// Nothing for a missing row.
std::optional<Kunde> LoadKunde(qint64 key);
/// What LoadKunde reads.
store::RowMark MarkKunde(qint64 key);
/// Adds a row when the key is not there; gives the key of the saved row. Stamps the row with today's date.
/// The numeric twin of an emptied number keeps its value, so that the customer is still found under it.
qint64 SaveKunde(const Kunde& kunde, qint64 key, const store::RowMark& mark = {});
/// False as long as a booking or a pre-order refers to the customer.
bool CanDeleteKunde(qint64 key);
void DeleteKunde(qint64 key, const store::RowMark& mark = {});
/// Puts the rows of a list query into the customer list's table of the print database.
void FillKundenStamm(store::Recordset& rows, const platform::Progress& progress);

qint64 GetTotalKunden();
/// By the numeric twins of telephone and mobile number, so a leading zero does not count.
bool KundeExistsByTelefon(double telefon);
/// Key of the first customer with the number; -1 when nobody has it.
qint64 FindKundeByTelefon(double telefon);
bool KundeExists(qint64 kundenId);
/// The telephone number, or the mobile number where that is empty; "" for a missing customer.
QString GetKundeTelefon(qint64 kundenId);
/// Name and first name, the firm before them; "" for a missing customer.
QString GetKundeName(qint64 kundenId);
/// The address block: lines ended by CR LF, the extra information last when it is to be shown. "" for a
/// missing customer.
QString GetKundeAdresse(qint64 kundenId);

} // namespace modVerwaltungKunden
