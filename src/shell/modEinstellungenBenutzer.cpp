#include "shell/modEinstellungenBenutzer.h"
#include "shell/OwnerAccount.h"
#include "store/Lookups.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;

using shell::kRights;
using shell::rights;

namespace modEinstellungenBenutzer {
namespace {

constexpr int kYes = -1;

/// Key of the user logged in; none is the owner's, or nobody's.
std::optional<qint64> theUser;

const QString kTable = u"tbl_Einstellungen_Benutzer"_s;

void takeRights(store::Recordset& row) {
    for (const shell::Right& right : rights())
        right.user = row.Fields(right.column).toLong() != 0 ? kYes : 0;
}

} // namespace

QString BenutzerListe() {
    return u"SELECT lng_ID, txt_Username FROM tbl_Einstellungen_Benutzer ORDER BY txt_Username ASC, lng_ID"_s;
}

std::optional<Benutzer> LoadBenutzer(qint64 key) {
    const store::OpenRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
    if (row->Eof())
        return {};
    Benutzer benutzer{row->Fields(u"txt_Username").text(), row->Fields(u"txt_Passwort").text(), {}};
    for (size_t i = 0; i < kRights; ++i)
        benutzer.rights[i] = row->Fields(rights()[i].column).toLong() != 0;
    return benutzer;
}

store::RowMark MarkBenutzer(qint64 key) {
    return store::markRow(kTable, key);
}

void SaveBenutzer(const Benutzer& benutzer, qint64 key, const store::RowMark& mark) {
    store::transact(ConnMain, [&] {
        mark.require();
        const store::WriteRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
        if (row->Eof())
            row->AddNew();
        row->Fields(u"txt_Username") = benutzer.txt_Username;
        row->Fields(u"txt_Passwort") = benutzer.txt_Passwort;
        for (size_t i = 0; i < kRights; ++i)
            row->Fields(rights()[i].column) = benutzer.rights[i] ? kYes : 0;
        row->Update();
        store::tellNews(store::Topic::Users);
    });
}

void DeleteBenutzer(qint64 key, const store::RowMark& mark) {
    store::deleteMarked(kTable, key, mark);
    store::tellNews(store::Topic::Users);
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
                                           store::sqlText(password) + u" ORDER BY lng_ID;"_s,
                                       ConnMain);
        if (!row->Eof()) {
            takeRights(*row);
            theUser = row->Fields(u"lng_ID").toLong();
            return true;
        }
    }
    if (!shell::OwnerAccount::read(store::appPath()).admits(name, password))
        return false;
    theUser.reset();
    UserAdministrator = kYes;
    return true;
}

void RefreshRights() {
    if (!theUser)
        return;
    const store::OpenRecordset row(RsMain, store::rowQuery(kTable, *theUser), ConnMain);
    // One who was deleted works on until the next log-in.
    if (!row->Eof())
        takeRights(*row);
}

void SaveAnmeldung(bool on) {
    store::transact(ConnMain, [on] {
        ConnMain.Execute(on ? u"UPDATE tbl_Einstellungen_System SET lng_AnmeldungBenutzer = 1"_s
                            : u"UPDATE tbl_Einstellungen_System SET lng_AnmeldungBenutzer = 0"_s);
        store::tellNews(store::Topic::Settings);
    });
    SysAnmeldungBenutzer = on ? 1 : 0;
    Q_EMIT store::settingsNews().changed();
}

} // namespace modEinstellungenBenutzer
