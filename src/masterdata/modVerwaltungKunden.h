#pragma once
#include <QString>

/// Lookups of customers.
namespace modVerwaltungKunden {

qint64 GetTotalKunden();
/// By the numeric twins of telephone and mobile number, so a leading zero does not count.
bool KundeExistsByTelefon(double telefon);
/// Key of the first customer with the number; -1 when nobody has it.
qint64 FindKundeByTelefon(double telefon);
bool KundeExists(qint64 kundenId);
/// The telephone number, or the mobile number where that is empty; "" for a missing customer.
QString GetKundeTelefon(qint64 kundenId);
/// The address block: lines ended by CR LF, the extra information last when it is to be shown. "" for a
/// missing customer.
QString GetKundeAdresse(qint64 kundenId);

} // namespace modVerwaltungKunden
