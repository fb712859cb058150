#pragma once
#include "shell/Rights.h"
#include "store/RowMark.h"
#include <QString>
#include <array>
#include <optional>

/// The users of the program, their rights, and the log-in.
namespace modEinstellungenBenutzer {

struct Benutzer {
    QString txt_Username;
    /// Plain, as the stored data are.
    QString txt_Passwort;
    /// In the order of shell::rights().
    std::array<bool, shell::kRights> rights{};
};

/// Query of the list: lng_ID, txt_Username.
QString BenutzerListe();

/// Nothing for a missing row.
std::optional<Benutzer> LoadBenutzer(qint64 key);
/// What LoadBenutzer reads.
store::RowMark MarkBenutzer(qint64 key);
/// Adds a row when the key is not there. A right is stored as -1 or 0.
void SaveBenutzer(const Benutzer& benutzer, qint64 key, const store::RowMark& mark = {});
void DeleteBenutzer(qint64 key, const store::RowMark& mark = {});
/// True when the name is free; case does not count.
bool FindBenutzer(const QString& name);

/// Whether the two belong to a user, whose rights are then those in memory, or exactly to the owner's
/// account, which makes an administrator and leaves the other rights as they were. Otherwise nothing changes.
/// Users are compared as the store compares texts: case does not count.
bool CheckLogin(const QString& name, const QString& password);

/// The rights of the user logged in, as they are stored now.
void RefreshRights();

/// Whether users log in, from the next start on; kept and remembered.
void SaveAnmeldung(bool on);

} // namespace modEinstellungenBenutzer
