#pragma once
#include <QString>

/// The caller list's side of a call.
namespace modTelefonie {

/// Records a call, whatever its number is; a suppressed one comes as "". Of the calls before it the latest
/// ones stay, so that the list holds `kept` rows at most; 0 keeps all.
void RecordCall(const QString& anrufNr, int kept = 0);
/// Marks all calls of the number as taken, earlier ones too; numbers are compared as texts.
void MarkCallTaken(const QString& anrufNr);

/// Who calls: the customer with the number (by its numeric twin), else the directory's entry; "" for nobody
/// that is known. By indexes alone.
QString CallerName(const QString& anrufNr);

} // namespace modTelefonie
