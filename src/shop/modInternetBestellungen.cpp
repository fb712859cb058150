#include "shop/modInternetBestellungen.h"
#include "common/Convert.h"
#include "common/RunTimeError.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/OrderStorage.h"
#include "shop/TaggedText.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include <QSet>
#include <utility>

using namespace Qt::StringLiterals;

namespace modInternetBestellungen {
namespace {

struct Feld {
    const char16_t* tag;
    const char16_t* column;
};

/// In the order in which they are read; the first is the key, the last a number, the others texts.
constexpr Feld kFelder[] = {
    {u"ID", u"lng_ID"},
    {u"FIRMA", u"txt_Firma"},
    {u"NAME", u"txt_Name"},
    {u"VORNAME", u"txt_Vorname"},
    {u"STRASSE", u"txt_Strasse"},
    {u"ETAGE", u"txt_Etage"},
    {u"PLZORT", u"txt_PLZOrt"},
    {u"TELEFON", u"txt_Telefon"},
    {u"EMAIL", u"txt_EMail"},
    {u"VERSANDART", u"txt_Versandart"},
    {u"VERSANDZEIT", u"txt_Versandzeit"},
    {u"ANMERKUNG", u"txt_Anmerkungen"},
    {u"TOTAL", u"dbl_Total"},
};
const QString kAufgabe = u"Internet Bestellung "_s;
constexpr int kTotal = int(std::size(kFelder)) - 1;

std::vector<QString> tagsOfOrders() {
    std::vector<QString> tags;
    for (const Feld& feld : kFelder)
        tags.push_back(QString::fromUtf16(feld.tag));
    return tags;
}

const QString kListe = u"SELECT lng_ID, txt_Versandzeit, txt_Versandart, dbl_Total, txt_Telefon, txt_Firma, "
                       u"txt_Name, txt_Vorname, txt_Strasse, txt_Etage, txt_PLZOrt, txt_EMail, "
                       u"txt_Anmerkungen FROM tbl_WebShop_Bestellungen_Master"_s;

void putOrder(store::Recordset& rows, shop::TaggedText& answer, QSet<qint64>& seen) {
    const qint64 id = answer.wholeNumber(0);
    if (seen.contains(id))
        throw common::RunTimeError(common::kDuplicateKey,
                                   u"Der Online Shop nennt die Bestellung %1 zweimal."_s.arg(id));
    seen.insert(id);
    rows.Fields(kFelder[0].column) = id;
    for (int i = 1; i < kTotal; ++i)
        rows.Fields(kFelder[i].column) = answer.value(i);
    rows.Fields(kFelder[kTotal].column) = answer.number(kTotal);
}

} // namespace

qint64 ParseWebShopBestellungen(const QString& text) {
    QSet<qint64> seen;
    store::transact(ConnMain, [&] {
        shop::TaggedText answer(text, tagsOfOrders());
        seen.clear();
        ConnMain.Execute(u"DELETE FROM tbl_WebShop_Bestellungen_Master"_s);
        if (answer.enterFrame()) {
            store::WriteRecordset rows(RsMain, u"SELECT * FROM tbl_WebShop_Bestellungen_Master WHERE 1 = 1"_s,
                                       ConnMain);
            for (; answer.nextRecord(); answer.leaveRecord()) {
                rows->AddNew();
                putOrder(*rows, answer, seen);
                rows->Update();
            }
        }
    });
    // Told once and not with each poll.
    static QString told;
    if (std::exchange(told, text) != text)
        store::tellNews(store::Topic::WebOrders);
    return seen.size();
}

platform::Task Aufgabe(qint64 id) {
    constexpr int kInHand = 600;
    return {kAufgabe + QString::number(id), kInHand, store::Topic::WebOrders};
}

qint64 Offene() {
    return store::findText(u"SELECT Count(*) AS Offen FROM tbl_WebShop_Bestellungen_Master"_s).toLongLong();
}

qint64 BeiAnderen() {
    QStringList ids;
    const auto others = store::tasksOfOthers();
    for (auto task = others.cbegin(); task != others.cend(); ++task)
        if (task.key().startsWith(kAufgabe))
            ids << QString::number(task.key().mid(kAufgabe.size()).toLongLong());
    if (ids.isEmpty())
        return 0;
    return store::findText(
               u"SELECT Count(*) AS Offen FROM tbl_WebShop_Bestellungen_Master WHERE lng_ID IN ("_s +
               ids.join(u", "_s) + u')')
        .toLongLong();
}

std::vector<desks::WebLine> ParseWebShopBestellungDetails(const QString& text) {
    enum { IsProdukt, ProduktID, Anzahl, Bezeichnung };

    shop::TaggedText answer(text, {u"ISPRODUKT"_s, u"PRODUKTID"_s, u"ANZAHL"_s, u"BEZEICHNUNG"_s});
    std::vector<desks::WebLine> lines;
    if (!answer.enterFrame())
        return lines;
    for (; answer.nextRecord(); answer.leaveRecord()) {
        desks::WebLine line;
        line.isProdukt = common::parseNumber(answer.value(IsProdukt)) == 1.0;
        line.id = answer.wholeNumber(ProduktID);
        if (!line.isProdukt)
            line.bezeichnung = answer.value(Bezeichnung);
        line.anzahl = answer.value(Anzahl);
        lines.push_back(std::move(line));
    }
    return lines;
}

QString ListeAlle() {
    return kListe + u" ORDER BY lng_ID;"_s;
}

QString ListeAmTag(double datum) {
    return kListe + u" WHERE txt_Versandzeit LIKE "_s +
           store::sqlText(u'%' + common::formatDate(datum, u"D. MMMM YYYY") + u'%') + u" ORDER BY lng_ID ;"_s;
}

std::optional<Vorbestellung> GleicheVorbestellung(qint64 id) {
    const auto head = orders::ReadHead(orders::PreOrders(), id);
    if (!head)
        return std::nullopt;
    return Vorbestellung{modVerwaltungKunden::GetKundeName(head->lng_KundenID), head->txt_LieferDatum};
}

void DeleteBestellung(qint64 id) {
    store::transact(ConnMain, [&] {
        store::deleteRow(u"tbl_WebShop_Bestellungen_Master"_s, id);
        orders::RemoveOrder(orders::PreOrders(), id);
        store::tellNews(store::Topic::WebOrders);
    });
    store::release(Aufgabe(id).name);
}

std::optional<EMailConfo> LoadEMailConfo() {
    store::OpenRecordset row(RsMain, store::rowQuery(u"tbl_OnlineShop_Dokumente"_s, 1), ConnMain);
    if (row->Eof())
        return std::nullopt;
    return EMailConfo{row->Fields(u"txt_EMailConfoBetreff").text(),
                      row->Fields(u"txt_EMailConfoBody").text()};
}

} // namespace modInternetBestellungen
