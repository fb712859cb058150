#pragma once
#include <QString>

/// The caller list's side of a call.
namespace modTelefonie {

/// Records a call, whatever its number is; a suppressed one comes as "".
void RecordCall(const QString& anrufNr);
/// Marks all calls of the number as taken, earlier ones too; numbers are compared as texts.
void MarkCallTaken(const QString& anrufNr);

} // namespace modTelefonie
