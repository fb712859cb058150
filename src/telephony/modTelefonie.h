#pragma once
#include <QString>

/// The caller list's side of a call.
namespace modTelefonie {

/// Records a call, whatever its number is; a suppressed one comes as "". Of the calls before it the latest
/// ones stay, so that the list holds `kept` rows at most; 0 keeps all. A call that rings at several stations
/// is recorded by the first of them.
void RecordCall(const QString& anrufNr, int kept = 0);
/// Marks all calls of the number as taken, earlier ones too; numbers are compared as texts. False when none
/// was left to take.
bool MarkCallTaken(const QString& anrufNr);

/// Tells the other stations who takes the call of that number, for half a minute or until it rings again.
void TellCallTaken(const QString& anrufNr);
void CallRingsAgain(const QString& anrufNr);
/// The other station that has taken the call; "" where none has.
QString CallTakenBy(const QString& anrufNr);

/// Who calls: the customer with the number (by its numeric twin), else the directory's entry; "" for nobody
/// that is known. By indexes alone.
QString CallerName(const QString& anrufNr);

} // namespace modTelefonie
