#include "masterdata/modVerwaltungKunden.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/modFunctions.h"
#include "platform/report/PrintTable.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"

using modFunctions::NullToEmpty;
using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modVerwaltungKunden {
namespace {

const QString kTable = u"tbl_Verwaltung_Kunden"_s;

QString numberCondition(double telefon) {
    const QString number = common::numberToText(telefon);
    return QStringLiteral(" FROM tbl_Verwaltung_Kunden WHERE dbl_Telefon = ") + number +
           QStringLiteral(" OR dbl_Natel = ") + number;
}

/// By an index of the table's, so that a page of the list costs a page.
const QString kByName = u"ORDER BY txt_Name ASC, txt_Vorname, lng_ID"_s;
const QString kLineEnd = QStringLiteral("\r\n");

QString line(const QString& text) {
    return text.isEmpty() ? QString() : text + kLineEnd;
}

QString listQuery(const QString& rest) {
    return u"SELECT lng_ID, txt_Firma, txt_Name, txt_Vorname, txt_Strasse, txt_Etage, txt_PLZ, txt_Ort, "
           u"txt_Telefon, txt_Natel, txt_EMail, date_Erfasst, flag_ClientStatus, flag_Newsletter, "
           u"txt_Zusatzinfo FROM tbl_Verwaltung_Kunden "_s +
           rest;
}

/// What stands in the mask as conditions of a search.
class Conditions {
  public:
    void text(const char16_t* column, const char16_t* sign, const QString& value) {
        // Blanks around a text are searched for as they were typed.
        if (!value.trimmed().isEmpty())
            add(column, sign, store::sqlText(value));
    }

    void number(const char16_t* column, const QString& value) {
        if (const auto number = common::parseNumber(value))
            add(column, u" = ", common::numberToText(*number));
    }

    QString joined() const { return m_clauses.join(u"AND "_s); }

  private:
    void add(const char16_t* column, const char16_t* sign, const QString& value) {
        m_clauses << QString::fromUtf16(column) + QString::fromUtf16(sign) + value + u' ';
    }

    QStringList m_clauses;
};

void putNumber(store::WriteRecordset& row, const char16_t* text, const char16_t* twin, const QString& value) {
    row->Fields(text) = value;
    if (const auto number = common::parseNumber(value))
        row->Fields(twin) = *number;
}

} // namespace

qint64 GetTotalKunden() {
    OpenRecordset rows(RsMain, QStringLiteral("SELECT Count(*) AS TotalKunden FROM tbl_Verwaltung_Kunden"),
                       ConnMain);
    return rows->Fields(u"TotalKunden").toLong();
}

bool KundeExistsByTelefon(double telefon) {
    return store::rowExists(u"SELECT *"_s + numberCondition(telefon));
}

qint64 FindKundeByTelefon(double telefon) {
    return store::findKey(u"SELECT lng_ID"_s + numberCondition(telefon) + u" ORDER BY lng_ID"_s);
}

bool KundeExists(qint64 kundenId) {
    return store::rowExists(store::rowQuery(kTable, kundenId));
}

QString GetKundeTelefon(qint64 kundenId) {
    OpenRecordset rows(
        RsMain,
        QStringLiteral("SELECT txt_Telefon, txt_Natel FROM tbl_Verwaltung_Kunden WHERE lng_ID = ") +
            QString::number(kundenId),
        ConnMain);
    if (rows->Eof())
        return {};
    const QString telefon = NullToEmpty(rows->Fields(u"txt_Telefon").Value());
    return telefon.isEmpty() ? NullToEmpty(rows->Fields(u"txt_Natel").Value()) : telefon;
}

QString GetKundeName(qint64 kundenId) {
    OpenRecordset rows(
        RsMain,
        QStringLiteral("SELECT txt_Firma, txt_Name, txt_Vorname FROM tbl_Verwaltung_Kunden WHERE lng_ID = ") +
            QString::number(kundenId),
        ConnMain);
    if (rows->Eof())
        return {};
    const auto text = [&](const char16_t* column) { return NullToEmpty(rows->Fields(column).Value()); };
    QStringList parts{text(u"txt_Firma"),
                      (text(u"txt_Name") + QLatin1Char(' ') + text(u"txt_Vorname")).trimmed()};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QString GetKundeAdresse(qint64 kundenId) {
    OpenRecordset rows(RsMain, store::rowQuery(kTable, kundenId), ConnMain);
    if (rows->Eof())
        return {};
    const auto text = [&](const char16_t* column) { return NullToEmpty(rows->Fields(column).Value()); };

    QString address = line(text(u"txt_Firma"));
    const QString name = text(u"txt_Name");
    const QString vorname = text(u"txt_Vorname");
    if (!name.isEmpty() || !vorname.isEmpty())
        address += line(name + QLatin1Char(' ') + vorname);
    address += text(u"txt_Strasse") + kLineEnd;
    address += line(text(u"txt_Etage"));
    address += line(text(u"txt_PLZ") + QLatin1Char(' ') + text(u"txt_Ort"));
    const QString telefon = text(u"txt_Telefon");
    const QString number = telefon.isEmpty() ? text(u"txt_Natel") : telefon;
    if (!number.isEmpty())
        address += line(QStringLiteral("Tel: ") + number);
    if (rows->Fields(u"flag_Zusatzinfo").Value().isTrue())
        address += text(u"txt_Zusatzinfo");
    return address;
}

QString AlleKunden() {
    return listQuery(kByName);
}

QString EinKunde(qint64 key) {
    return listQuery(u"WHERE lng_ID = "_s + QString::number(key));
}

QString SucheKunden(const Kunde& mask) {
    Conditions conditions;
    conditions.text(u"txt_Firma", u" LIKE ", mask.txt_Firma);
    conditions.text(u"txt_Name", u" LIKE ", mask.txt_Name);
    conditions.text(u"txt_Vorname", u" LIKE ", mask.txt_Vorname);
    conditions.text(u"txt_Strasse", u" LIKE ", mask.txt_Strasse);
    conditions.text(u"txt_PLZ", u" LIKE ", mask.txt_PLZ);
    conditions.text(u"txt_Ort", u" LIKE ", mask.txt_Ort);
    conditions.number(u"dbl_Telefon", mask.txt_Telefon);
    conditions.number(u"dbl_Natel", mask.txt_Natel);
    conditions.text(u"txt_EMail", u" = ", mask.txt_EMail);
    const QString joined = conditions.joined();
    return joined.isEmpty() ? QString() : listQuery(u"WHERE "_s + joined + kByName);
}

std::optional<Kunde> LoadKunde(qint64 key) {
    OpenRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
    if (row->Eof())
        return {};
    const auto text = [&](const char16_t* column) { return NullToEmpty(row->Fields(column).Value()); };
    const auto flag = [&](const char16_t* column) { return row->Fields(column).toLong(); };
    return Kunde{.txt_Firma = text(u"txt_Firma"),
                 .txt_Name = text(u"txt_Name"),
                 .txt_Vorname = text(u"txt_Vorname"),
                 .txt_Strasse = text(u"txt_Strasse"),
                 .txt_Etage = text(u"txt_Etage"),
                 .txt_PLZ = text(u"txt_PLZ"),
                 .txt_Ort = text(u"txt_Ort"),
                 .txt_Telefon = text(u"txt_Telefon"),
                 .txt_Natel = text(u"txt_Natel"),
                 .txt_EMail = text(u"txt_EMail"),
                 .txt_Zusatzinfo = text(u"txt_Zusatzinfo"),
                 .flag_Zusatzinfo = flag(u"flag_Zusatzinfo"),
                 .flag_ClientStatus = flag(u"flag_ClientStatus"),
                 .flag_Newsletter = flag(u"flag_Newsletter"),
                 .date_Erfasst = row->Fields(u"date_Erfasst").Value()};
}

store::RowMark MarkKunde(qint64 key) {
    return store::markRow(kTable, key);
}

qint64 SaveKunde(const Kunde& kunde, qint64 key, const store::RowMark& mark) {
    qint64 saved = -1;
    store::transact(ConnMain, [&] {
        mark.require();
        store::WriteRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
        if (row->Eof())
            row->AddNew();
        saved = row->Fields(u"lng_ID").toLong();
        row->Fields(u"txt_Firma") = kunde.txt_Firma;
        row->Fields(u"txt_Name") = kunde.txt_Name;
        row->Fields(u"txt_Vorname") = kunde.txt_Vorname;
        row->Fields(u"txt_Strasse") = kunde.txt_Strasse;
        row->Fields(u"txt_Etage") = kunde.txt_Etage;
        row->Fields(u"txt_PLZ") = kunde.txt_PLZ;
        row->Fields(u"txt_Ort") = kunde.txt_Ort;
        putNumber(row, u"txt_Telefon", u"dbl_Telefon", kunde.txt_Telefon);
        putNumber(row, u"txt_Natel", u"dbl_Natel", kunde.txt_Natel);
        row->Fields(u"txt_EMail") = kunde.txt_EMail;
        row->Fields(u"txt_Zusatzinfo") = kunde.txt_Zusatzinfo;
        row->Fields(u"date_Erfasst") = common::Serial{common::clock::today()};
        row->Fields(u"flag_ClientStatus") = kunde.flag_ClientStatus;
        row->Fields(u"flag_Newsletter") = kunde.flag_Newsletter;
        row->Fields(u"flag_Zusatzinfo") = kunde.flag_Zusatzinfo;
        row->Update();
    });
    return saved;
}

bool CanDeleteKunde(qint64 key) {
    return !store::isReferredTo(
        key, {u"SELECT * FROM tbl_Auftragswesen_Bestellungen_Master WHERE lng_KundenID = ",
              u"SELECT * FROM tbl_Auftragswesen_Vorbestellungen_Master WHERE lng_KundenID = "});
}

void DeleteKunde(qint64 key, const store::RowMark& mark) {
    store::deleteMarked(kTable, key, mark);
}

void FillKundenStamm(store::Recordset& rows, const platform::Progress& progress) {
    platform::fillPrintTable(
        u"KundenStamm"_s, u"KundenNummer,KundenNr,Anrede,Namen,Vorname,Strasse,Plz,Ort,Telefon,Natel"_s,
        rows.RecordCount(),
        [&](int row) {
            const QString number = platform::sqlNumber(rows.valueAt(row, 0));
            QStringList values{number, number};
            for (const int column : {1, 2, 3, 4, 6, 7, 8, 9})
                values << store::sqlText(rows.valueAt(row, column).toText());
            return values;
        },
        progress);
}

} // namespace modVerwaltungKunden
