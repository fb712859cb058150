#include "shell/modEinstellungenBenutzer.h"
#include "shell/OwnerAccount.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;

using shell::kRights;
using shell::rights;

namespace modEinstellungenBenutzer {
namespace {

constexpr int kYes = -1;

QString rowQuery(qint64 key) {
    return u"SELECT * FROM tbl_Einstellungen_Benutzer WHERE lng_ID = "_s + QString::number(key);
}

} // namespace

QString BenutzerListe() {
    return u"SELECT lng_ID, txt_Username FROM tbl_Einstellungen_Benutzer ORDER BY txt_Username ASC"_s;
}

std::optional<Benutzer> LoadBenutzer(qint64 key) {
    const store::OpenRecordset row(RsMain, rowQuery(key), ConnMain);
    if (row->Eof())
        return {};
    Benutzer benutzer{row->Fields(u"txt_Username").text(), row->Fields(u"txt_Passwort").text(), {}};
    for (size_t i = 0; i < kRights; ++i)
        benutzer.rights[i] = row->Fields(rights()[i].column).toLong() != 0;
    return benutzer;
}

void SaveBenutzer(const Benutzer& benutzer, qint64 BenutzerID) {
    const store::WriteRecordset row(RsMain, rowQuery(BenutzerID), ConnMain);
    if (row->Eof())
        row->AddNew();
    row->Fields(u"txt_Username") = benutzer.txt_Username;
    row->Fields(u"txt_Passwort") = benutzer.txt_Passwort;
    for (size_t i = 0; i < kRights; ++i)
        row->Fields(rights()[i].column) = benutzer.rights[i] ? kYes : 0;
    row->Update();
}

void DeleteBenutzer(qint64 key) {
    ConnMain.Execute(u"DELETE FROM tbl_Einstellungen_Benutzer WHERE lng_ID = "_s + QString::number(key));
}

bool FindBenutzer(const QString& name) {
    return !store::rowExists(u"SELECT * FROM tbl_Einstellungen_Benutzer WHERE txt_Username = "_s +
                             store::sqlText(name) + u';');
}

bool CheckLogin(const QString& name, const QString& password) {
    // Nobody can key one, and the store takes a text with one behind it for the text without.
    if (name.contains(QChar::Null) || password.contains(QChar::Null))
        return false;
    {
        const store::OpenRecordset row(RsMain,
                                       u"SELECT * FROM tbl_Einstellungen_Benutzer WHERE txt_Username = "_s +
                                           store::sqlText(name) + u" AND txt_Passwort = "_s +
                                           store::sqlText(password) + u';',
                                       ConnMain);
        if (!row->Eof()) {
            for (const shell::Right& right : rights())
                right.user = row->Fields(right.column).toLong() != 0 ? kYes : 0;
            return true;
        }
    }
    if (!shell::OwnerAccount::read(store::appPath()).admits(name, password))
        return false;
    UserAdministrator = kYes;
    return true;
}

void SaveAnmeldung(bool on) {
    ConnMain.Execute(on ? u"UPDATE tbl_Einstellungen_System SET lng_AnmeldungBenutzer = 1"_s
                        : u"UPDATE tbl_Einstellungen_System SET lng_AnmeldungBenutzer = 0"_s);
    SysAnmeldungBenutzer = on ? 1 : 0;
    Q_EMIT store::settingsNews().changed();
}

} // namespace modEinstellungenBenutzer
